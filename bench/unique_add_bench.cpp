// Growth of the model's unique adds: twice the elements against once, in one run.
//
// Each figure fills a list with n and with 2n elements, in child processes of their own and
// alternating, and prints the medians' ratio of the processor time that the filling took;
// linear work gives 2.0. The lists: automation points into one lane, fresh and taken over
// from another lane; tracks with a channel each into a project. Beside them, the time to find
// every channel by its id, per lookup, against std::unordered_map finding the same ids: a lookup
// makes a constant number of comparisons (the model's unit test counts them), but its random
// read lands in a table twice as large, so any hash table's time steps where its table leaves
// a cache level; the peer shows this machine's step.
// Usage: corvelle_unique_add_bench [ROUNDS] (default 9).
#include "model/cvproject.h"
#include "read_bench_support.h"

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

using namespace Halvorn;
using namespace ReadBench;

constexpr double kGrowthGoal = 2.2;
constexpr long kPoints = 1000000;
constexpr long kTracks = 100000;

std::vector<IPtr<CvAutomationPoint>> makePoints(long count) {
    std::vector<IPtr<CvAutomationPoint>> points;
    points.reserve(size_t(count));
    for (long i = 0; i < count; ++i) {
        points.push_back(newObject<CvAutomationPoint>());
        points.back()->setTime(double(i) * 0.01);
    }
    return points;
}

// Seconds to add the points to a lane; taken: they were in another lane first.
double addPoints(long count, bool taken) {
    const auto points = makePoints(count);
    if (taken) {
        auto first = newObject<CvAutomation>(kUnitNormalized, String("first"));
        for (const auto& point : points)
            first->addPoint(point.get());
    }
    auto lane = newObject<CvAutomation>(kUnitNormalized, String("lane"));
    const double start = processorNow();
    for (const auto& point : points)
        lane->addPoint(point.get());
    const double seconds = processorNow() - start;
    return lane->getPointCount() == uint32(count) ? seconds : -1.0;
}

enum class TrackJob { kAdd, kFind, kFindInPeer };

// Seconds to add the tracks and their channels as the reader does; or then seconds to find each
// channel by its id, as the importer does for destinations, in the project or in the peer.
double addTracks(long count, TrackJob job) {
    std::vector<IPtr<CvTrack>> tracks;
    std::vector<IPtr<CvChannel>> channels;
    std::vector<std::u16string> ids;
    for (long i = 0; i < count; ++i) {
        const std::string id = "c" + std::to_string(i);
        ids.emplace_back(id.begin(), id.end());
        tracks.push_back(newObject<CvTrack>(kContentAudio, String(("t" + id).c_str())));
        channels.push_back(newObject<CvChannel>(1, kChannelRoleRegular, String(id.c_str())));
    }
    auto project = newObject<CvProject>(String("bench"), String("1"));
    double start = processorNow();
    for (long i = 0; i < count; ++i) {
        tracks[size_t(i)]->setChannel(channels[size_t(i)].get());
        project->addTrack(tracks[size_t(i)].get());
        project->addChannel(channels[size_t(i)].get());
    }
    if (project->getTrackCount() != uint32(count) || project->getChannelCount() != uint32(count))
        return -1.0;
    if (job == TrackJob::kAdd)
        return processorNow() - start;
    std::unordered_map<std::u16string, CvChannel*> peer;
    if (job == TrackJob::kFindInPeer)
        for (long i = 0; i < count; ++i)
            peer.emplace(ids[size_t(i)], channels[size_t(i)].get());
    start = processorNow();
    long found = 0;
    for (const std::u16string& id : ids)
        found += job == TrackJob::kFind ? project->findChannel(id.c_str()) != nullptr
                                        : peer.find(id) != peer.end();
    const double seconds = processorNow() - start;
    return found == count ? seconds : -1.0;
}

struct Figure {
    const char* what;
    std::function<double(long)> job;
    long count;
    std::vector<double> once, twice;

    double growth() const { return median(twice) / median(once); }
    double nanosecondsEach(bool doubled) const {
        return (doubled ? median(twice) / 2 : median(once)) / double(count) * 1e9;
    }
};

} // namespace

int main(int argc, char** argv) {
    const int rounds = argc > 1 && std::atoi(argv[1]) > 0 ? std::atoi(argv[1]) : 9;
    std::vector<Figure> figures = {
        {"1M fresh points into a lane, 2M / 1M", [](long n) { return addPoints(n, false); },
         kPoints, {}, {}},
        {"1M points of another lane, 2M / 1M", [](long n) { return addPoints(n, true); }, kPoints,
         {}, {}},
        {"100k tracks with a channel each, 200k / 100k",
         [](long n) { return addTracks(n, TrackJob::kAdd); }, kTracks, {}, {}},
        {"100k channels found by id, 200k / 100k",
         [](long n) { return addTracks(n, TrackJob::kFind); }, kTracks, {}, {}},
        {"the same ids found in std::unordered_map",
         [](long n) { return addTracks(n, TrackJob::kFindInPeer); }, kTracks, {}, {}},
    };
    for (int round = 0; round < rounds; ++round)
        for (Figure& figure : figures)
            for (int side = 0; side < 2; ++side) {
                const bool doubled = (side == 0) == (round % 2 == 0);
                const long count = doubled ? 2 * figure.count : figure.count;
                const Run run = runInChild([&] { return figure.job(count); });
                if (!run.ok) {
                    std::fprintf(stderr, "a run of \"%s\" failed\n", figure.what);
                    return 1;
                }
                (doubled ? figure.twice : figure.once).push_back(run.seconds);
            }
    const size_t goals = figures.size() - 2; // the last two are the lookups and their peer
    for (size_t i = 0; i < figures.size(); ++i) {
        const Figure& figure = figures[i];
        if (i < goals)
            printFigure(figure.what, median(figure.twice), median(figure.once), "s", kGrowthGoal);
        else
            std::printf("%-46s %6.0f ns each at 200k, %6.0f at 100k  ratio %6.2f\n", figure.what,
                        figure.nanosecondsEach(true), figure.nanosecondsEach(false),
                        figure.growth());
        std::printf("    runs, twice:%s\n    runs, once:%s\n", listed(figure.twice).c_str(),
                    listed(figure.once).c_str());
    }
    const Figure& ours = figures[goals];
    const Figure& peer = figures[goals + 1];
    std::printf("%-46s %9.2f x the peer's growth; a lookup %.2f x the peer's at 200k\n",
                "lookups by id", ours.growth() / peer.growth(),
                ours.nanosecondsEach(true) / peer.nanosecondsEach(true));
    return 0;
}
