// Speed, memory and growth of reading project.xml into a model, against a bare expat parse.
//
// The program writes a project document of about 50 MB (tracks with channels, devices, sends,
// note and audio clips, automation) and one with half its tracks, so half the events. Then,
// alternating and each time in a child process of its own, it reads the documents with
// CvXmlReader::readProject and parses them with expat and empty handlers, in blocks of 32 KiB
// as the reader does. It prints the medians' ratio, the reader's peak resident memory against
// the file's size, and how the reading time grows from half to all of the events.
// Usage: corvelle_read_document_bench [ROUNDS] [MEGABYTES] (defaults 7 and 50). The documents
// live in a scratch folder below $TMPDIR (or /tmp) that is removed at the end.
#include "documents/cvxmlreader.h"
#include "model/cvproject.h"
#include "read_bench_document.h"
#include "read_bench_support.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <expat.h>
#include <fcntl.h>
#include <functional>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using namespace Halvorn;
using namespace ReadBench;

constexpr double kSpeedGoal = 4.0;
constexpr double kMemoryGoal = 12.0;
constexpr double kGrowthGoal = 2.2;
constexpr int kBlockBytes = 32768;

void XMLCALL onStart(void*, const XML_Char*, const XML_Char**) {}
void XMLCALL onEnd(void*, const XML_Char*) {}
void XMLCALL onText(void*, const XML_Char*, int) {}
void XMLCALL onComment(void*, const XML_Char*) {}

// The peer: expat over the file with handlers that do nothing.
double parseWithExpat(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return -1.0;
    const double start = now();
    XML_Parser parser = XML_ParserCreate("UTF-8");
    XML_SetStartElementHandler(parser, onStart);
    XML_SetEndElementHandler(parser, onEnd);
    XML_SetCharacterDataHandler(parser, onText);
    XML_SetCommentHandler(parser, onComment);
    bool good = true;
    for (;;) {
        void* buffer = XML_GetBuffer(parser, kBlockBytes);
        const ssize_t count = buffer ? read(file, buffer, kBlockBytes) : -1;
        if (count < 0 || XML_ParseBuffer(parser, int(count), count == 0) != XML_STATUS_OK) {
            good = false;
            break;
        }
        if (count == 0)
            break;
    }
    XML_ParserFree(parser);
    const double seconds = secondsSince(start);
    close(file);
    return good ? seconds : -1.0;
}

// Ours: the document into a model; the reader and its node tree are gone before the clock stops.
double readWithCorvelle(const std::string& path, int tracks) {
    const double start = now();
    auto reader = newObject<CvXmlReader>();
    const auto project = IPtr<CvProject>::adopt(reader->readProject(String(path.c_str())));
    reader = nullptr;
    const double seconds = secondsSince(start);
    return project && project->getTrackCount() >= uint32(tracks) ? seconds : -1.0;
}

struct Sample {
    std::vector<double> seconds;
    std::vector<double> cpuSeconds;
    std::vector<double> peakMB;

    void add(const Run& run) {
        seconds.push_back(run.seconds);
        cpuSeconds.push_back(run.cpuSeconds);
        peakMB.push_back(double(run.peakKiB) / 1024.0);
    }
};

// A document of about the wanted size: tracks in blocks of twice the audio pattern, so that the
// half document has the same mix, and clips per track from the bytes that a clip costs.
bool shapeForSize(const std::string& scratch, double megabytes, DocumentShape& shape) {
    shape.audioFiles = takeNames(50);
    const int block = 2 * shape.audioEvery;
    DocumentShape probe = shape;
    probe.tracks = block;
    const std::string path = scratch + "/probe.xml";
    probe.clipsPerTrack = 1;
    const bool small = writeProjectDocument(path, probe);
    const long smallBytes = fileSize(path);
    probe.clipsPerTrack = 2;
    const bool large = writeProjectDocument(path, probe);
    const double perClip = double(fileSize(path) - smallBytes) / block;
    std::remove(path.c_str());
    if (!small || !large || perClip <= 0.0)
        return false;
    const double bytes = megabytes * 1e6;
    // About 50 clips a track, as the project grows.
    shape.tracks = block * std::max(1, int(bytes / (perClip * 50.0 * block) + 0.5));
    shape.clipsPerTrack = std::max(1, int(bytes / (perClip * shape.tracks) + 0.5));
    return true;
}

int run(const std::string& scratch, int rounds, double megabytes) {
    DocumentShape full;
    const bool shaped = shapeForSize(scratch, megabytes, full);
    DocumentShape half = full;
    half.tracks = full.tracks / 2;
    const std::string fullPath = scratch + "/project.xml";
    const std::string halfPath = scratch + "/half.xml";
    if (!shaped || !writeProjectDocument(fullPath, full) || !writeProjectDocument(halfPath, half)) {
        std::fprintf(stderr, "could not write the documents\n");
        return 1;
    }
    const double fullMB = double(fileSize(fullPath)) / 1e6;
    const Run idle = runInChild([] { return 0.0; });
    std::printf("project.xml: %.1f MB, %d tracks of %d clips, %ld events; half: %.1f MB, %ld "
                "events; an idle child peaks at %.1f MB\n",
                fullMB, full.tracks, full.clipsPerTrack, full.events(),
                double(fileSize(halfPath)) / 1e6, half.events(), double(idle.peakKiB) / 1024.0);

    Sample ours, oursHalf, expat, expatHalf;
    struct Job {
        Sample* sample;
        std::function<double()> job;
    };
    std::vector<Job> jobs = {
        {&expat, [&] { return parseWithExpat(fullPath); }},
        {&ours, [&] { return readWithCorvelle(fullPath, full.tracks); }},
        {&expatHalf, [&] { return parseWithExpat(halfPath); }},
        {&oursHalf, [&] { return readWithCorvelle(halfPath, half.tracks); }},
    };
    for (int round = 0; round < rounds; ++round) {
        // Every other round runs the jobs backwards, so no side always follows the same one.
        for (std::size_t i = 0; i < jobs.size(); ++i) {
            Job& next = jobs[round % 2 ? jobs.size() - 1 - i : i];
            const Run run = runInChild(next.job);
            if (!run.ok) {
                std::fprintf(stderr, "a read of the document failed\n");
                return 1;
            }
            next.sample->add(run);
        }
    }
    printFigure("readProject / expat with empty handlers", median(ours.seconds),
                median(expat.seconds), "s", kSpeedGoal);
    std::printf("    the same in processor time of the whole child: x%.2f (%.3f s vs %.3f s)\n",
                median(ours.cpuSeconds) / median(expat.cpuSeconds), median(ours.cpuSeconds),
                median(expat.cpuSeconds));
    const double peak = *std::max_element(ours.peakMB.begin(), ours.peakMB.end());
    printFigure("peak memory of readProject / file size", peak, fullMB, "MB", kMemoryGoal);
    printFigure("readProject, twice the events / half", median(ours.seconds),
                median(oursHalf.seconds), "s", kGrowthGoal);
    std::printf("    for reference, expat's growth from half to all of the events: x%.2f\n",
                median(expat.seconds) / median(expatHalf.seconds));
    std::printf("    runs, readProject:%s\n    runs, expat:%s\n    runs, readProject half:%s\n"
                "    runs, expat half:%s\n    peak MB, readProject:%s\n    peak MB, expat:%s\n",
                listed(ours.seconds).c_str(), listed(expat.seconds).c_str(),
                listed(oursHalf.seconds).c_str(), listed(expatHalf.seconds).c_str(),
                listed(ours.peakMB).c_str(), listed(expat.peakMB).c_str());
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const int rounds = argc > 1 && std::atoi(argv[1]) > 0 ? std::atoi(argv[1]) : 7;
    const double megabytes = argc > 2 && std::atof(argv[2]) > 0.0 ? std::atof(argv[2]) : 50.0;
    return runWithScratchFolder("corvelle-read-document-bench", [&](const std::string& scratch) {
        return run(scratch, rounds, megabytes);
    });
}
