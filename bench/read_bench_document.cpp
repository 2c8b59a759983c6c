// Writes benchmark project documents line by line, as the system's writer lays them out.
#include "read_bench_document.h"

#include <cstdarg>
#include <cstdio>

namespace ReadBench {
namespace {

// One element a line, indented by tabs; the file is streamed, never held whole.
class DocumentText {
public:
    explicit DocumentText(const std::string& path) : file_(std::fopen(path.c_str(), "wb")) {
        if (file_)
            std::setvbuf(file_, nullptr, _IOFBF, 1 << 20);
    }
    ~DocumentText() {
        if (file_)
            std::fclose(file_);
    }
    DocumentText(const DocumentText&) = delete;
    DocumentText& operator=(const DocumentText&) = delete;

    bool isOpen() const { return file_ != nullptr; }

    // A line at the given depth; the format is printf's.
    __attribute__((format(printf, 3, 4))) void line(int depth, const char* format, ...) {
        for (int i = 0; i < depth; ++i)
            std::fputc('\t', file_);
        va_list arguments;
        va_start(arguments, format);
        std::vfprintf(file_, format, arguments);
        va_end(arguments);
        std::fputc('\n', file_);
    }

    bool close() {
        const bool good = std::ferror(file_) == 0;
        const bool closed = std::fclose(file_) == 0;
        file_ = nullptr;
        return good && closed;
    }

private:
    std::FILE* file_;
};

constexpr double kClipSeconds = 8.0;

bool isAudioTrack(const DocumentShape& shape, int track) {
    return shape.audioEvery > 0 && track % shape.audioEvery == 0 && !shape.audioFiles.empty();
}

void writeChannel(DocumentText& out, int track) {
    out.line(3,
             "<Channel role=\"regular\" audioChannels=\"2\" id=\"c%d\" name=\"Track %d\" "
             "destination=\"master\">",
             track, track);
    out.line(4, "<Mute value=\"false\" name=\"Mute\" id=\"c%dm\" />", track);
    out.line(
        4, "<Pan value=\"%g\" unit=\"normalized\" min=\"0\" max=\"1\" name=\"Pan\" id=\"c%dp\" />",
        0.25 + (track % 3) * 0.25, track);
    out.line(4,
             "<Volume value=\"0.8\" unit=\"linear\" min=\"0\" max=\"2\" name=\"Volume\" "
             "id=\"c%dv\" />",
             track);
    out.line(4, "<Devices>");
    out.line(5,
             "<Quor3Plugin id=\"d%da\" deviceRole=\"audioFX\" deviceName=\"Echo &amp; Space\" "
             "deviceID=\"5A0C41E2B7D94F0C8E63A1F2D4B5C6E7\">",
             track);
    out.line(6, "<Parameters>");
    for (int p = 0; p < 4; ++p)
        out.line(7,
                 "<RealParameter min=\"0\" max=\"1\" value=\"%g\" unit=\"normalized\" "
                 "parameterID=\"%d\" id=\"d%dp%d\" name=\"Knob %d\" />",
                 0.1 * (p + 1), p, track, p, p);
    out.line(6, "</Parameters>");
    out.line(6, "<Enabled value=\"true\" />");
    out.line(6, "<State path=\"plugins/\" external=\"false\" />");
    out.line(5, "</Quor3Plugin>");
    out.line(5, "<Compressor id=\"d%db\" deviceRole=\"audioFX\" deviceName=\"Comp\">", track);
    out.line(6,
             "<Threshold value=\"-18\" unit=\"decibel\" min=\"-60\" max=\"0\" name=\"Threshold\" "
             "id=\"d%dt\" />",
             track);
    out.line(
        6, "<Ratio value=\"4\" unit=\"linear\" min=\"1\" max=\"20\" name=\"Ratio\" id=\"d%dr\" />",
        track);
    out.line(6, "<AutoMakeup value=\"true\" name=\"AutoMakeup\" id=\"d%dm\" />", track);
    out.line(6, "<Enabled value=\"true\" />");
    out.line(6, "<State path=\"plugins/\" external=\"false\" />");
    out.line(5, "</Compressor>");
    out.line(4, "</Devices>");
    out.line(4, "<Sends>");
    out.line(5, "<Send type=\"post\" destination=\"fx\" id=\"s%d\">", track);
    out.line(6, "<Enable value=\"true\" id=\"s%de\" />", track);
    out.line(6,
             "<Volume value=\"0.5\" unit=\"linear\" min=\"0\" max=\"2\" name=\"Volume\" "
             "id=\"s%dv\" />",
             track);
    out.line(5, "</Send>");
    out.line(4, "</Sends>");
    out.line(3, "</Channel>");
}

void writeStructure(DocumentText& out, const DocumentShape& shape) {
    out.line(1, "<Structure>");
    for (int track = 0; track < shape.tracks; ++track) {
        out.line(2,
                 "<Track contentType=\"%s\" loaded=\"true\" id=\"t%d\" name=\"Track %d\" "
                 "color=\"#%02x%02x%02xff\">",
                 isAudioTrack(shape, track) ? "audio" : "notes", track, track, track * 37 % 256,
                 track * 91 % 256, track * 53 % 256);
        writeChannel(out, track);
        out.line(2, "</Track>");
    }
    out.line(2, "<Channel role=\"master\" audioChannels=\"2\" id=\"master\" name=\"Main\">");
    out.line(3, "<Volume value=\"1\" unit=\"linear\" min=\"0\" max=\"2\" name=\"Volume\" "
                "id=\"masterv\" />");
    out.line(2, "</Channel>");
    out.line(2, "<Channel role=\"effect\" audioChannels=\"2\" id=\"fx\" name=\"Hall\" "
                "destination=\"master\">");
    out.line(3, "<Devices>");
    out.line(4, "<Equalizer id=\"eq\" deviceRole=\"audioFX\" deviceName=\"EQ\">");
    out.line(5, "<Band type=\"bell\" order=\"1\">");
    out.line(6, "<Freq value=\"1000\" unit=\"hertz\" min=\"20\" max=\"20000\" name=\"Freq\" "
                "id=\"eqf\" />");
    out.line(
        6, "<Gain value=\"3\" unit=\"decibel\" min=\"-24\" max=\"24\" name=\"Gain\" id=\"eqg\" />");
    out.line(5, "</Band>");
    out.line(5, "<Enabled value=\"true\" />");
    out.line(5, "<State path=\"plugins/\" external=\"false\" />");
    out.line(4, "</Equalizer>");
    out.line(3, "</Devices>");
    out.line(2, "</Channel>");
    out.line(1, "</Structure>");
}

void writeNotesClip(DocumentText& out, const DocumentShape& shape, int clip, long& serial) {
    out.line(5, "<Clip time=\"%g\" duration=\"%g\" name=\"Phrase %d\" enable=\"true\">",
             clip * kClipSeconds, kClipSeconds, clip);
    out.line(6, "<Notes>");
    const double step = kClipSeconds / shape.eventsPerClip;
    for (int e = 0; e < shape.eventsPerClip; ++e, ++serial)
        out.line(7,
                 "<Note time=\"%.10g\" duration=\"%.10g\" channel=\"%ld\" key=\"%ld\" "
                 "vel=\"%.6g\" rel=\"0\" />",
                 e * step, step * 0.75, serial % 16, 36 + serial * 7 % 48,
                 double(1 + serial * 37 % 127) / 127.0);
    out.line(6, "</Notes>");
    out.line(5, "</Clip>");
}

void writeAudioClip(DocumentText& out, const DocumentShape& shape, int clip, long& serial) {
    out.line(5,
             "<Clip time=\"%g\" duration=\"%g\" fadeTimeUnit=\"seconds\" fadeInTime=\"0.01\" "
             "name=\"Take %d\" enable=\"true\">",
             clip * kClipSeconds, kClipSeconds, clip);
    out.line(6, "<Clips>");
    const double step = kClipSeconds / shape.eventsPerClip;
    for (int e = 0; e < shape.eventsPerClip; ++e, ++serial) {
        out.line(7,
                 "<Clip contentTimeUnit=\"seconds\" time=\"%.10g\" duration=\"%.10g\" "
                 "playStart=\"%g\">",
                 e * step, step, 0.5 * double(serial % 4));
        out.line(8, "<Audio sampleRate=\"48000\" channels=\"2\" duration=\"4\">");
        out.line(9, "<File path=\"audio/%s\" external=\"false\" />",
                 shape.audioFiles[std::size_t(serial) % shape.audioFiles.size()].c_str());
        out.line(8, "</Audio>");
        out.line(7, "</Clip>");
    }
    out.line(6, "</Clips>");
    out.line(5, "</Clip>");
}

void writeArrangement(DocumentText& out, const DocumentShape& shape) {
    out.line(1, "<Arrangement>");
    out.line(2, "<Lanes timeUnit=\"seconds\">");
    long serial = 0;
    for (int track = 0; track < shape.tracks; ++track) {
        out.line(3, "<Lanes track=\"t%d\">", track);
        out.line(4, "<Clips>");
        for (int clip = 0; clip < shape.clipsPerTrack; ++clip) {
            if (isAudioTrack(shape, track))
                writeAudioClip(out, shape, clip, serial);
            else
                writeNotesClip(out, shape, clip, serial);
        }
        out.line(4, "</Clips>");
        out.line(4, "<Points unit=\"linear\" id=\"a%d\">", track);
        out.line(5, "<Target parameter=\"c%dv\" />", track);
        for (int p = 0; p < shape.pointsPerLane; ++p)
            out.line(5, "<RealPoint time=\"%g\" value=\"%g\" interpolation=\"linear\" />", p * 0.5,
                     0.5 + 0.5 * double(p % 3) / 2.0);
        out.line(4, "</Points>");
        out.line(3, "</Lanes>");
    }
    out.line(2, "</Lanes>");
    out.line(2, "<TempoAutomation unit=\"seconds\">");
    out.line(3, "<RealPoint time=\"0\" value=\"120\" interpolation=\"hold\" />");
    out.line(3, "<RealPoint time=\"64\" value=\"132\" interpolation=\"linear\" />");
    out.line(2, "</TempoAutomation>");
    out.line(2, "<TimeSignatureAutomation timeUnit=\"seconds\">");
    out.line(3, "<TimeSignaturePoint time=\"0\" numerator=\"4\" denominator=\"4\" />");
    out.line(2, "</TimeSignatureAutomation>");
    out.line(2, "<Markers timeUnit=\"seconds\">");
    for (int m = 0; m < 8; ++m)
        out.line(3, "<Marker time=\"%g\" name=\"Part %d\" />", m * 32.0, m + 1);
    out.line(2, "</Markers>");
    out.line(1, "</Arrangement>");
}

} // namespace

std::vector<std::string> takeNames(int count) {
    std::vector<std::string> names;
    for (int i = 0; i < count; ++i)
        names.push_back("take" + std::to_string(i) + ".wav");
    return names;
}

bool writeProjectDocument(const std::string& path, const DocumentShape& shape) {
    DocumentText out(path);
    if (!out.isOpen())
        return false;
    out.line(0, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
    out.line(0, "<Project version=\"1.0\">");
    out.line(1, "<Application name=\"Bench Studio\" version=\"3.2\" />");
    out.line(1, "<Transport>");
    out.line(2, "<Tempo unit=\"bpm\" value=\"120\" />");
    out.line(2, "<TimeSignature numerator=\"4\" denominator=\"4\" />");
    out.line(1, "</Transport>");
    writeStructure(out, shape);
    writeArrangement(out, shape);
    out.line(0, "</Project>");
    return out.close();
}

} // namespace ReadBench
