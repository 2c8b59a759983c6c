// Speed, memory and growth of reading project.xml into a model, against a bare expat parse.
//
// The program builds an orchestral project in code (80 tracks of 53 clips of 100 notes, each
// track with a channel, an insert and an automation lane) and writes it with the system's own
// writer, so the document has exactly the written form: many small elements with all their
// attributes. A second document has half the tracks, so half the events. Then, alternating
// and each time in a child process of its own, it reads the documents with
// CvXmlReader::readProject and parses them with expat and empty handlers, in blocks of 32 KiB
// as the reader does. It prints the medians' ratio, the reader's peak resident memory against
// the file's size, and how the reading time grows from half to all of the events.
// Usage: corvelle_read_document_bench [ROUNDS] [TRACKS] (defaults 7 and 80). The documents
// live in a scratch folder below $TMPDIR (or /tmp) that is removed at the end.
#include "documents/cvxmlreader.h"
#include "model/cvproject.h"
#include "read_bench_support.h"
#include "written_document.h"

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

constexpr double kSpeedGoal = 2.5;
constexpr double kMemoryGoal = 6.0;
constexpr double kGrowthGoal = 2.1;
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

int run(const std::string& scratch, int rounds, int tracks) {
    WrittenShape full;
    full.tracks = tracks;
    WrittenShape half = full;
    half.tracks = std::max(1, full.tracks / 2);
    const std::string fullPath = scratch + "/project.xml";
    const std::string halfPath = scratch + "/half.xml";
    if (!writeWrittenDocument(fullPath, full) || !writeWrittenDocument(halfPath, half)) {
        std::fprintf(stderr, "could not write the documents\n");
        return 1;
    }
    const double fullMB = double(fileSize(fullPath)) / 1e6;
    const Run idle = runInChild([] { return 0.0; });
    std::printf("project.xml as the writer writes it: %.1f MB, %d tracks of %d clips, %ld notes; "
                "half: %.1f MB, %ld notes; an idle child peaks at %.1f MB\n",
                fullMB, full.tracks, full.clipsPerTrack, full.notes(),
                double(fileSize(halfPath)) / 1e6, half.notes(), double(idle.peakKiB) / 1024.0);

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
    const int tracks = argc > 2 && std::atoi(argv[2]) > 0 ? std::atoi(argv[2]) : 80;
    return runWithScratchFolder("corvelle-read-document-bench", [&](const std::string& scratch) {
        return run(scratch, rounds, tracks);
    });
}
