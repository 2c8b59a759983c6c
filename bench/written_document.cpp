// Builds a large notes project in code and writes it with the system's own writer.
#include "written_document.h"

#include "documents/cvxmlwriter.h"
#include "foundation/ffilesystem.h"
#include "model/cvproject.h"
#include "read_bench_support.h"

#include <string>

namespace ReadBench {
namespace {

using namespace Halvorn;

String text(const std::string& value) { return String(value.c_str()); }

IPtr<CvParameter> parameter(const std::string& id, const char8* name, double value, double max) {
    auto result = newObject<CvParameter>(kUnitNormalized, text(id));
    result->setName(String(name));
    result->setMax(max);
    result->setValue(value);
    return result;
}

IPtr<CvChannel> channelFor(int track) {
    const std::string id = "c" + std::to_string(track);
    auto channel = newObject<CvChannel>(1, kChannelRoleRegular, text(id));
    channel->setName(text("Track " + std::to_string(track)));
    channel->setDestination(String("master"));
    channel->addParameter(parameter(id + "v", kParamVolume, 0.8, 2.0).get());
    channel->addParameter(parameter(id + "p", kParamPan, 0.5, 1.0).get());
    channel->addParameter(parameter(id + "m", kParamMute, 0.0, 1.0).get());
    auto insert = newObject<CvDevice>(kDeviceQuor3, kRoleAudioFX, text(id + "d"));
    insert->setName(String("Echo & Space"));
    insert->setDeviceId(String("5A0C41E2B7D94F0C8E63A1F2D4B5C6E7"));
    for (int p = 0; p < 8; ++p) {
        auto knob = parameter(id + "d" + std::to_string(p), "Knob", 0.1 * (p + 1), 1.0);
        knob->setParameterId(uint32(p));
        insert->addParameter(knob.get());
    }
    channel->addDevice(insert.get());
    return channel;
}

IPtr<CvClip> notesClip(const WrittenShape& shape, int clipIndex, long& serial) {
    constexpr double kClipSeconds = 7.5;
    auto clip = newObject<CvClip>(kEventMidi, String());
    clip->setStart(clipIndex * kClipSeconds);
    clip->setDuration(kClipSeconds);
    clip->setName(text("Phrase " + std::to_string(clipIndex)));
    const double step = kClipSeconds / shape.notesPerClip;
    for (int n = 0; n < shape.notesPerClip; ++n, ++serial) {
        auto note = newObject<CvMidiNoteEvent>(uint32(36 + serial * 7 % 48),
                                          double(1 + serial * 37 % 127) / 127.0,
                                          uint32(serial % 16));
        note->setStart(n * step + double(serial % 7) / 480.0);
        note->setDuration(step * 0.75);
        clip->addEvent(note.get());
    }
    return clip;
}

IPtr<CvProject> buildProject(const WrittenShape& shape) {
    auto project = newObject<CvProject>(String("Bench Studio"), String("3.2"));
    auto master = newObject<CvChannel>(1, kChannelRoleMaster, String("master"));
    long serial = 0;
    for (int t = 0; t < shape.tracks; ++t) {
        auto track = newObject<CvTrack>(kContentNotes, text("t" + std::to_string(t)));
        track->setName(text("Track " + std::to_string(t)));
        track->setColor(CvColor(uint8(t * 37), uint8(t * 91), uint8(t * 53), 255));
        auto channel = channelFor(t);
        track->setChannel(channel.get());
        project->addChannel(channel.get());
        for (int c = 0; c < shape.clipsPerTrack; ++c)
            track->addClip(notesClip(shape, c, serial).get());
        auto lane = newObject<CvAutomation>(kUnitNormalized, text("a" + std::to_string(t)));
        lane->setTarget(text("c" + std::to_string(t) + "v"));
        for (int p = 0; p < shape.pointsPerLane; ++p) {
            auto point = newObject<CvAutomationPoint>();
            point->setTime(p * 0.37);
            point->setValue(0.5 + 0.25 * double(p % 3));
            point->setInterpolation(kInterpolationLinear);
            lane->addPoint(point.get());
        }
        track->addAutomation(lane.get());
        project->addTrack(track.get());
    }
    project->addChannel(master.get());
    return project;
}

} // namespace

bool writeWrittenDocument(const std::string& path, const WrittenShape& shape) {
    const Run run = runInChild([&] {
        const auto project = buildProject(shape);
        const std::string folder = path.substr(0, path.rfind('/'));
        CvXmlWriter writer(text(folder));
        FStream* stream = gFNFileSystem->createStream(FUrl(text(path), false), FStream::kWrite);
        const bool written = stream && writer.writeProject(project.get(), stream);
        if (stream)
            gFNFileSystem->closeStream(stream);
        return written ? 0.0 : -1.0;
    });
    return run.ok;
}

} // namespace ReadBench
