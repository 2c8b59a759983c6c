// Memory and speed of the project model: bytes per note event and per automation point.
//
// Builds a project of one million note events (and, separately, one million automation
// points) the way a filler does, measures the heap in use before and after with mallinfo2,
// and prints the medians against their goals, beside the same data held as plain structs in a
// std::vector, the smallest form the data can take; and the time of a walk of every note
// through the published faces against a walk of that vector. Usage:
// corvelle_model_bench [ROUNDS] (default 3).
#include "model/cvproject.h"
#include "read_bench_support.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <vector>

namespace Halvorn {
namespace {

constexpr int kTracks = 100;
constexpr int kClipsPerTrack = 10;
constexpr int kEventsPerClip = 1000;
constexpr long kNotes = long(kTracks) * kClipsPerTrack * kEventsPerClip;
constexpr int kLanes = 1000;
constexpr int kPointsPerLane = 1000;
constexpr long kPoints = long(kLanes) * kPointsPerLane;

// Heap bytes in use: small blocks plus blocks served by mmap.
long heapInUse() {
    struct mallinfo2 info = mallinfo2();
    return long(info.uordblks + info.hblkhd);
}

double secondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

IPtr<CvProject> buildNotes() {
    auto project = newObject<CvProject>("bench", "1");
    for (int t = 0; t < kTracks; ++t) {
        auto track = newObject<CvTrack>(kContentNotes, "");
        for (int c = 0; c < kClipsPerTrack; ++c) {
            auto clip = newObject<CvClip>(kEventMidi, "");
            for (int e = 0; e < kEventsPerClip; ++e) {
                auto note = newObject<CvMidiNoteEvent>(36 + e % 48, 0.75, 0);
                note->setStart(e * 0.25);
                note->setDuration(0.2);
                clip->addEvent(note.get());
            }
            track->addClip(clip.get());
        }
        project->addTrack(track.get());
    }
    return project;
}

IPtr<CvTrack> buildAutomation() {
    auto track = newObject<CvTrack>(kContentAutomation, "");
    for (int l = 0; l < kLanes; ++l) {
        auto lane = newObject<CvAutomation>(kUnitNormalized, "");
        for (int p = 0; p < kPointsPerLane; ++p) {
            auto point = newObject<CvAutomationPoint>();
            point->setTime(p * 0.01);
            point->setValue((p % 100) * 0.01);
            point->setInterpolation(kInterpolationLinear);
            lane->addPoint(point.get());
        }
        track->addAutomation(lane.get());
    }
    return track;
}

// Reads every note through the published faces, as the writer and the importer do.
double walkNotes(IMediaProject* project) {
    double sum = 0.0;
    for (uint32 t = 0; t < project->getTrackCount(); ++t) {
        IMediaTrack* track = project->getTrack(t);
        for (uint32 c = 0; c < track->getClipCount(); ++c) {
            IMediaClip* clip = track->getClip(c);
            for (uint32 e = 0; e < clip->getEventCount(); ++e)
                sum += clip->getEvent(e)->getTime()->getStart();
        }
    }
    return sum;
}

struct PeerNote {
    double time, duration, velocity, key, channel;
};
struct PeerPoint {
    double time, value, interpolation;
};

template <class Peer> long peerBytes(long count) {
    long before = heapInUse();
    std::vector<Peer> peers;
    for (long i = 0; i < count; ++i) {
        Peer peer{};
        peer.time = double(i);
        peers.push_back(peer);
    }
    long bytes = heapInUse() - before;
    return peers.size() == size_t(count) ? bytes : -1;
}

// Reads every peer note as the walk above reads the model's.
double walkPeers(const std::vector<PeerNote>& peers) {
    double sum = 0.0;
    for (const PeerNote& peer : peers)
        sum += peer.time;
    return sum;
}

struct Sample {
    std::vector<double> noteBytes, pointBytes, walkNs, peerWalkNs, buildSeconds, pointSeconds;
};

void round(Sample& sample) {
    long before = heapInUse();
    auto start = std::chrono::steady_clock::now();
    IPtr<CvProject> project = buildNotes();
    sample.buildSeconds.push_back(secondsSince(start));
    sample.noteBytes.push_back(double(heapInUse() - before) / kNotes);
    start = std::chrono::steady_clock::now();
    volatile double sink = walkNotes(project.get());
    sample.walkNs.push_back(secondsSince(start) * 1e9 / kNotes);
    project = nullptr;

    std::vector<PeerNote> peers(size_t(kNotes), PeerNote{1.0, 0.2, 0.75, 60.0, 0.0});
    start = std::chrono::steady_clock::now();
    sink = walkPeers(peers);
    (void)sink;
    sample.peerWalkNs.push_back(secondsSince(start) * 1e9 / kNotes);

    before = heapInUse();
    start = std::chrono::steady_clock::now();
    IPtr<CvTrack> lanes = buildAutomation();
    sample.pointSeconds.push_back(secondsSince(start));
    sample.pointBytes.push_back(double(heapInUse() - before) / kPoints);
}

// One figure against an absolute goal: the median, the spread of the rounds, met or missed.
void printGoal(const char* what, const std::vector<double>& values, const char* unit,
               double goal) {
    const double middle = ReadBench::median(values);
    std::printf("%-46s %9.1f %-5s goal <= %5.0f  %s\n      runs:%s\n", what, middle, unit, goal,
                middle <= goal ? "met" : "MISSED", ReadBench::listed(values).c_str());
}

} // namespace
} // namespace Halvorn

int main(int argc, char** argv) {
    using namespace Halvorn;
    const int rounds = argc > 1 && std::atoi(argv[1]) > 0 ? std::atoi(argv[1]) : 3;
    std::printf("model memory: %ld note events in %d clips, %ld automation points in %d lanes\n",
                kNotes, kTracks * kClipsPerTrack, kPoints, kLanes);
    std::printf("object sizes: note event %zu + its time %zu, automation point %zu bytes\n",
                sizeof(CvMidiNoteEvent), sizeof(CvTime), sizeof(CvAutomationPoint));
    Sample sample;
    for (int i = 0; i < rounds; ++i)
        round(sample);
    printGoal("model bytes per note (heap in use)", sample.noteBytes, "bytes", 200.0);
    std::printf("    peer: the same notes as a vector of 5 doubles, %.1f bytes each\n",
                double(peerBytes<PeerNote>(kNotes)) / kNotes);
    printGoal("model bytes per automation point", sample.pointBytes, "bytes", 120.0);
    std::printf("    peer: a vector of 3 doubles, %.1f bytes each\n",
                double(peerBytes<PeerPoint>(kPoints)) / kPoints);
    const double walk = ReadBench::median(sample.walkNs);
    const double peerWalk = ReadBench::median(sample.peerWalkNs);
    std::printf("walk of every note through IMedia: %.1f ns per note, a vector walk %.1f ns; "
                "ratio %.1f\n",
                walk, peerWalk, walk / peerWalk);
    std::printf("    runs, ns per note:%s\n    runs, peer:%s\n    build of the notes, s:%s\n"
                "    build of the points, s:%s\n",
                ReadBench::listed(sample.walkNs).c_str(), ReadBench::listed(sample.peerWalkNs).c_str(),
                ReadBench::listed(sample.buildSeconds).c_str(),
                ReadBench::listed(sample.pointSeconds).c_str());
    return 0;
}
