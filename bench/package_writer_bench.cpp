// Speed of writing packages: writePackage of 200 MB of media against zip, and the document
// writer's growth with the number of events.
//
// First, 50 media files of 4 MiB each go into a package with the library's writePackage (which
// stages them into its tree, writes the documents and deflates the tree), and the same staged
// tree is packed by "zip -r -q" in the same run; the ratio is ours over zip's. Then project.xml
// is written for notes clips of 125 000, 250 000 and 500 000 events; the time per event should
// stay flat. Usage: corvelle_package_writer_bench [MEDIA_MIB] (default 200). Scratch files go
// to a folder below $TMPDIR (or /tmp) and are removed at the end.
#include "documents/cvxmlwriter.h"
#include "foundation/ffilesystem.h"
#include "model/cvevent.h"
#include "model/cvproject.h"
#include "model/cvtrack.h"
#include "package/cvpackage.h"
#include "package/package_writer.h"
#include "support/scratchfolder.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace Halvorn {
namespace {

namespace fs = std::filesystem;

constexpr int kMediaFiles = 50;

double secondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

std::u16string utf16(const std::string& ascii) {
    return std::u16string(ascii.begin(), ascii.end());
}

// Audio-like bytes: noise, which deflate can hardly shrink, as with real recordings.
void writeNoise(const std::string& path, size_t bytes, std::mt19937_64& random) {
    std::string block(bytes, '\0');
    for (size_t i = 0; i + 8 <= bytes; i += 8) {
        const uint64_t value = random();
        std::memcpy(&block[i], &value, 8);
    }
    std::ofstream(path, std::ios::binary).write(block.data(), static_cast<std::streamsize>(bytes));
}

IPtr<CvProject> projectWithMedia(const std::vector<std::string>& files) {
    auto project = newObject<CvProject>(String("bench"), String("1"));
    auto track = newObject<CvTrack>(kContentAudio, String("t"));
    auto clip = newObject<CvClip>(kEventAudio, String());
    for (const std::string& file : files) {
        auto event = newObject<CvAudioEvent>(String());
        event->setFile(utf16(file).c_str(), false);
        clip->addEvent(event.get());
    }
    track->addClip(clip.get());
    project->addTrack(track.get());
    return project;
}

IPtr<CvProject> projectWithNotes(long notes) {
    auto project = newObject<CvProject>(String("bench"), String("1"));
    auto track = newObject<CvTrack>(kContentNotes, String("t"));
    auto clip = newObject<CvClip>(kEventMidi, String());
    for (long i = 0; i < notes; ++i) {
        auto note = newObject<CvMidiNoteEvent>(uint32(36 + i % 48), 0.75, uint32(i % 16));
        note->setStart(double(i) * 0.125);
        note->setDuration(0.1);
        clip->addEvent(note.get());
    }
    track->addClip(clip.get());
    project->addTrack(track.get());
    return project;
}

int run(long mediaMiB, const std::string& scratch) {
    std::mt19937_64 random(42);
    const std::string sources = scratch + "/sources";
    fs::create_directories(sources);
    std::vector<std::string> files;
    const size_t fileBytes = size_t(mediaMiB) * 1024 * 1024 / kMediaFiles;
    for (int i = 0; i < kMediaFiles; ++i) {
        files.push_back(sources + "/take" + std::to_string(i) + ".wav");
        writeNoise(files.back(), fileBytes, random);
    }
    auto project = projectWithMedia(files);
    auto package = newObject<CvPackage>(project.get());

    auto start = std::chrono::steady_clock::now();
    if (!writeProjectPackage(package.get(), utf16(scratch + "/ours.corvelle").c_str())) {
        std::fprintf(stderr, "writePackage failed\n");
        return 1;
    }
    const double ours = secondsSince(start);

    // The same tree as writePackage stages it, packed by the peer.
    const std::string tree = scratch + "/tree";
    fs::create_directories(tree);
    CvXmlWriter writer(String(tree.c_str()));
    for (const char* name : {"project.xml", "metadata.xml"}) {
        FStream* stream = gFNFileSystem->createStream(
            FUrl(String((tree + "/" + name).c_str()), false), FStream::kWrite);
        const bool written = name[0] == 'p' ? writer.writeProject(project.get(), stream)
                                            : writer.writeMetaData(stream);
        gFNFileSystem->closeStream(stream);
        if (!written)
            return 1;
    }
    const std::string command = "cd '" + tree + "' && zip -r -q '" + scratch + "/peer.zip' .";
    start = std::chrono::steady_clock::now();
    if (std::system(command.c_str()) != 0) {
        std::fprintf(stderr, "zip failed (is it installed?)\n");
        return 1;
    }
    const double peer = secondsSince(start);
    std::printf("writePackage, %ld MiB in %d files: %.2f s; zip -r -q of the staged tree: "
                "%.2f s; ratio %.2f\n",
                mediaMiB, kMediaFiles, ours, peer, ours / peer);

    double previous = 0.0;
    for (long notes : {125000L, 250000L, 500000L}) {
        auto big = projectWithNotes(notes);
        const std::string path = scratch + "/notes.xml";
        FStream* stream =
            gFNFileSystem->createStream(FUrl(String(path.c_str()), false), FStream::kWrite);
        start = std::chrono::steady_clock::now();
        const bool written = writer.writeProject(big.get(), stream);
        const double seconds = secondsSince(start);
        gFNFileSystem->closeStream(stream);
        if (!written)
            return 1;
        std::printf("project.xml of %ld notes: %.3f s, %.2f us per note%s\n", notes, seconds,
                    seconds * 1e6 / double(notes),
                    previous > 0.0 ? (" (x" + std::to_string(seconds / previous).substr(0, 4) +
                                      " for twice the notes)")
                                         .c_str()
                                   : "");
        previous = seconds;
    }
    return 0;
}

} // namespace
} // namespace Halvorn

int main(int argc, char** argv) {
    const long mediaMiB = argc > 1 ? std::atol(argv[1]) : 200;
    try {
        const CorvelleSupport::ScratchFolder scratch;
        return Halvorn::run(mediaMiB > 0 ? mediaMiB : 200, scratch.path());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "corvelle_package_writer_bench: %s\n", error.what());
        return 1;
    }
}
