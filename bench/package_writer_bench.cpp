// Speed of writing packages: writePackage of 200 MB of media against zip, and the document
// writer's growth with the number of events.
//
// First, 50 media files of 4 MiB each go into a package with the library's writePackage (which
// stages them into its tree, writes the documents and deflates the tree), and the same staged
// tree is packed by "zip -r -q", alternating for the given rounds; the ratio is of the medians,
// ours over zip's, in elapsed time (the goal), then in processor time of all threads: the
// writer deflates files on the other cores too, so it waits less than it works.
// Then project.xml is written for a clip of 250 000 notes and of twice that, in processor time;
// linear work gives 2.0. Usage: corvelle_package_writer_bench [ROUNDS] [MEDIA_MIB] (defaults 5
// and 200). Scratch files go to a folder below $TMPDIR (or /tmp) and are removed at the end.
#include "documents/cvxmlwriter.h"
#include "foundation/ffilesystem.h"
#include "model/cvevent.h"
#include "model/cvproject.h"
#include "model/cvtrack.h"
#include "package/cvpackage.h"
#include "package/package_writer.h"
#include "read_bench_support.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>

namespace Halvorn {
namespace {

namespace fs = std::filesystem;

constexpr int kMediaFiles = 50;
constexpr long kNotes = 250000;
constexpr double kGrowthGoal = 2.1;

std::u16string utf16(const std::string& ascii) {
    return std::u16string(ascii.begin(), ascii.end());
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

// The same tree as writePackage stages it, for the peer to pack: the writer copies the media
// in as it writes the document.
bool stageTree(CvProject* project, const std::string& tree) {
    fs::create_directories(tree);
    CvXmlWriter writer(String(tree.c_str()));
    for (const char* name : {"project.xml", "metadata.xml"}) {
        FStream* stream = gFNFileSystem->createStream(
            FUrl(String((tree + "/" + name).c_str()), false), FStream::kWrite);
        const bool written =
            name[0] == 'p' ? writer.writeProject(project, stream) : writer.writeMetaData(stream);
        gFNFileSystem->closeStream(stream);
        if (!written)
            return false;
    }
    return true;
}

// Processor seconds that project.xml of a clip of that many notes takes to write, or -1.
double writeNotes(long notes, const std::string& scratch) {
    auto project = projectWithNotes(notes);
    CvXmlWriter writer(String(scratch.c_str()));
    FStream* stream = gFNFileSystem->createStream(
        FUrl(String((scratch + "/notes.xml").c_str()), false), FStream::kWrite);
    const double start = ReadBench::processorNow();
    const bool written = writer.writeProject(project.get(), stream);
    const double seconds = ReadBench::processorNow() - start;
    gFNFileSystem->closeStream(stream);
    return written ? seconds : -1.0;
}

// The document writer at twice the notes against once, each in a child process of its own.
bool writeNotesGrowth(int rounds, const std::string& scratch) {
    std::vector<double> once, twice;
    for (int round = 0; round < rounds; ++round)
        for (int side = 0; side < 2; ++side) {
            const bool doubled = (side == 0) == (round % 2 == 0);
            const ReadBench::Run run = ReadBench::runInChild(
                [&] { return writeNotes(doubled ? 2 * kNotes : kNotes, scratch); });
            if (!run.ok) {
                std::fprintf(stderr, "writing project.xml failed\n");
                return false;
            }
            (doubled ? twice : once).push_back(run.seconds);
        }
    ReadBench::printFigure("project.xml of 500k notes / 250k", ReadBench::median(twice),
                           ReadBench::median(once), "s", kGrowthGoal);
    std::printf("    runs, twice:%s\n    runs, once:%s\n", ReadBench::listed(twice).c_str(),
                ReadBench::listed(once).c_str());
    return true;
}

int run(int rounds, long mediaMiB, const std::string& scratch) {
    std::mt19937_64 random(42);
    const std::string sources = scratch + "/sources";
    fs::create_directories(sources);
    std::vector<std::string> files;
    const size_t fileBytes = size_t(mediaMiB) * 1024 * 1024 / kMediaFiles;
    for (int i = 0; i < kMediaFiles; ++i) {
        files.push_back(sources + "/take" + std::to_string(i) + ".wav");
        if (!ReadBench::writeNoiseFile(files.back(), fileBytes, random))
            return 1;
    }
    auto project = projectWithMedia(files);
    auto package = newObject<CvPackage>(project.get());
    const std::string tree = scratch + "/tree";
    if (!stageTree(project.get(), tree))
        return 1;

    const std::string ours = scratch + "/ours.corvelle";
    const std::string peer = scratch + "/peer.zip";
    const std::string command = "cd '" + tree + "' && zip -r -q '" + peer + "' .";
    std::vector<double> oursSeconds, peerSeconds, oursProcessor, peerProcessor;
    for (int round = 0; round < rounds; ++round)
        for (int side = 0; side < 2; ++side) {
            // Alternate which side goes first, so that neither always finds the cache warmer.
            if ((side == 0) == (round % 2 == 0)) {
                std::remove(ours.c_str());
                const double start = ReadBench::now();
                const double processorStart = ReadBench::processorNow();
                if (!writeProjectPackage(package.get(), utf16(ours).c_str()).ok()) {
                    std::fprintf(stderr, "writePackage failed\n");
                    return 1;
                }
                oursSeconds.push_back(ReadBench::secondsSince(start));
                oursProcessor.push_back(ReadBench::processorNow() - processorStart);
            } else {
                std::remove(peer.c_str());
                const ReadBench::Run run = ReadBench::runCommand(command);
                if (!run.ok) {
                    std::fprintf(stderr, "zip failed (is it installed?)\n");
                    return 1;
                }
                peerSeconds.push_back(run.seconds);
                peerProcessor.push_back(run.cpuSeconds);
            }
        }
    std::printf("%ld MiB of media in %d files\n", mediaMiB, kMediaFiles);
    ReadBench::printFigure("writePackage / zip -r -q of the staged tree",
                           ReadBench::median(oursSeconds), ReadBench::median(peerSeconds), "s",
                           1.0);
    std::printf("    runs, writePackage:%s\n    runs, zip:%s\n",
                ReadBench::listed(oursSeconds).c_str(), ReadBench::listed(peerSeconds).c_str());
    // The wait is what the goal is on; the work of all threads is shown beside it.
    const double oursWork = ReadBench::median(oursProcessor);
    const double peerWork = ReadBench::median(peerProcessor);
    std::printf("%-46s %9.3f s  vs %9.3f s   ratio %6.2f\n", "  processor time of all threads",
                oursWork, peerWork, oursWork / peerWork);
    std::printf("    runs, writePackage:%s\n    runs, zip:%s\n",
                ReadBench::listed(oursProcessor).c_str(), ReadBench::listed(peerProcessor).c_str());

    return writeNotesGrowth(rounds, scratch) ? 0 : 1;
}

} // namespace
} // namespace Halvorn

int main(int argc, char** argv) {
    const int rounds = argc > 1 && std::atoi(argv[1]) > 0 ? std::atoi(argv[1]) : 5;
    const long mediaMiB = argc > 2 && std::atol(argv[2]) > 0 ? std::atol(argv[2]) : 200;
    return ReadBench::runWithScratchFolder(
        "corvelle-package-writer-bench",
        [&](const std::string& scratch) { return Halvorn::run(rounds, mediaMiB, scratch); });
}
