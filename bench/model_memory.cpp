// Memory and speed of the project model: bytes per note event and per automation point.
//
// Builds a project of one million note events (and, separately, one million automation
// points) the way a filler does, measures the heap in use before and after with mallinfo2,
// and prints the figures beside the same data held as plain structs in a std::vector, the
// smallest form the data can take. Usage: corvelle_model_bench [ROUNDS] (default 3).
#include "model/cvproject.h"

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

void round(int index) {
    long before = heapInUse();
    auto start = std::chrono::steady_clock::now();
    IPtr<CvProject> project = buildNotes();
    double buildTime = secondsSince(start);
    long noteBytes = heapInUse() - before;
    start = std::chrono::steady_clock::now();
    volatile double sink = walkNotes(project.get());
    (void)sink;
    double walkTime = secondsSince(start);
    start = std::chrono::steady_clock::now();
    project = nullptr;
    double releaseTime = secondsSince(start);
    long leftNotes = heapInUse() - before;

    before = heapInUse();
    start = std::chrono::steady_clock::now();
    IPtr<CvTrack> lanes = buildAutomation();
    double pointTime = secondsSince(start);
    long pointBytes = heapInUse() - before;
    lanes = nullptr;
    long leftPoints = heapInUse() - before;

    long peerNote = peerBytes<PeerNote>(kNotes);
    long peerPoint = peerBytes<PeerPoint>(kPoints);

    std::printf("round %d\n", index);
    std::printf("  notes   %ld: %.1f MB, %.1f bytes each; peer vector<5 doubles> %.1f bytes each;"
                " ratio %.2f\n",
                kNotes, noteBytes / 1e6, double(noteBytes) / kNotes, double(peerNote) / kNotes,
                double(noteBytes) / double(peerNote));
    std::printf("          build %.3f s, walk through IMedia %.1f ns/note, release %.3f s,"
                " left after release %ld bytes\n",
                buildTime, walkTime * 1e9 / kNotes, releaseTime, leftNotes);
    std::printf("  points  %ld: %.1f MB, %.1f bytes each; peer vector<3 doubles> %.1f bytes each;"
                " ratio %.2f\n",
                kPoints, pointBytes / 1e6, double(pointBytes) / kPoints,
                double(peerPoint) / kPoints, double(pointBytes) / double(peerPoint));
    std::printf("          build %.3f s, left after release %ld bytes\n", pointTime, leftPoints);
}

} // namespace
} // namespace Halvorn

int main(int argc, char** argv) {
    int rounds = argc > 1 ? std::atoi(argv[1]) : 3;
    std::printf("model memory: %ld note events in %d clips, %ld automation points in %d lanes\n",
                Halvorn::kNotes, Halvorn::kTracks * Halvorn::kClipsPerTrack, Halvorn::kPoints,
                Halvorn::kLanes);
    std::printf("object sizes: note event %zu + its time %zu, automation point %zu bytes\n",
                sizeof(Halvorn::CvMidiNoteEvent), sizeof(Halvorn::CvTime),
                sizeof(Halvorn::CvAutomationPoint));
    for (int i = 1; i <= rounds; ++i)
        Halvorn::round(i);
    return 0;
}
