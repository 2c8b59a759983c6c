// The indexes beside the model's lists: the same answers as a scan, at a constant number of
// comparisons per add or lookup however long the list grows.
#include "model/cvlistindex.h"
#include "model/cvproject.h"
#include "modeltest.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Halvorn {
namespace {

// Comparisons that work made, per operation.
template <class Work> double comparisonsPer(long operations, Work work) {
    const uint64 before = listComparisons();
    work();
    return double(listComparisons() - before) / double(operations);
}

String idText(const char* prefix, long i) { return String((prefix + std::to_string(i)).c_str()); }

// n tracks with a channel each, as the reader adds them; the comparisons per add and per
// lookup of a channel by id, and then the same for adding everything a second time.
struct TrackProject {
    IPtr<CvProject> project = newObject<CvProject>("t", "1");
    std::vector<IPtr<CvTrack>> tracks;
    std::vector<IPtr<CvChannel>> channels;
    double perAdd = 0, perFind = 0, perRepeat = 0;

    explicit TrackProject(long n) {
        for (long i = 0; i < n; ++i) {
            tracks.push_back(newObject<CvTrack>(kContentAudio, idText("t", i)));
            // Every hundredth channel repeats the id of the one before it.
            channels.push_back(newObject<CvChannel>(1, kChannelRoleRegular, idText("c", i - (i % 100 == 99))));
        }
        perAdd = comparisonsPer(2 * n, [&] {
            for (long i = 0; i < n; ++i) {
                project->addTrack(tracks[size_t(i)].get());
                project->addChannel(channels[size_t(i)].get());
            }
        });
        perFind = comparisonsPer(n, [&] {
            for (long i = 0; i < n; ++i) {
                IMediaChannel* found = project->findChannel(idText("c", i).text16());
                const long first = i % 100 == 99 ? -1 : i; // the first of a repeated id
                EXPECT_EQ(found, first < 0 ? nullptr : channels[size_t(first)].get()) << i;
            }
        });
        perRepeat = comparisonsPer(2 * n, [&] {
            for (long i = n - 1; i >= 0; --i) {
                project->addTrack(tracks[size_t(i)].get());
                project->addChannel(channels[size_t(i)].get());
            }
        });
        EXPECT_EQ(project->getTrackCount(), uint32(n));
        EXPECT_EQ(project->getChannelCount(), uint32(n));
        EXPECT_EQ(project->getTrack(uint32(n - 1)), tracks.back().get());
    }
};

TEST(ListIndex, TracksAndChannelsAddAndFindInConstantComparisons) {
    // Short lists are scanned; from the eighth element on the index answers, and it must hold
    // the elements added before it was built.
    for (long n : {5L, 9L}) {
        TrackProject small(n);
        EXPECT_EQ(small.project->findChannel(u"c0"), small.channels[0].get());
        EXPECT_EQ(small.project->findChannel(u"none"), nullptr);
        EXPECT_EQ(small.project->findChannel(nullptr), nullptr);
    }
    TrackProject once(2000);
    TrackProject twice(4000);
    for (const TrackProject* p : {&once, &twice}) {
        EXPECT_LT(p->perAdd, 4.0);
        EXPECT_LT(p->perFind, 4.0);
        EXPECT_LT(p->perRepeat, 4.0);
    }
    EXPECT_LT(twice.perAdd, 1.1 * once.perAdd + 0.5);
    EXPECT_LT(twice.perRepeat, 1.1 * once.perRepeat + 0.5);
}

TEST(ListIndex, PointsAndParametersStayUniqueAtConstantCost) {
    for (long n : {20000L, 40000L}) {
        auto lane = newObject<CvAutomation>(kUnitNormalized, "lane");
        std::vector<IPtr<CvAutomationPoint>> points;
        for (long i = 0; i < n; ++i)
            points.push_back(newObject<CvAutomationPoint>());
        const double perFresh = comparisonsPer(n, [&] {
            for (auto& point : points)
                lane->addPoint(point.get());
        });
        // Points of this lane alone are known to be in it.
        const double perRepeat = comparisonsPer(n, [&] {
            for (auto& point : points)
                lane->addPoint(point.get());
        });
        EXPECT_EQ(lane->getPointCount(), uint32(n));
        EXPECT_LT(perFresh, 0.01);
        EXPECT_LT(perRepeat, 0.01);

        // Points that two lanes hold are searched for: in the short lane one by one, in the
        // long one through the index, built then from all the points that skipped it.
        auto other = newObject<CvAutomation>(kUnitNormalized, "other");
        other->addPoint(points[1].get());
        other->addPoint(points[1].get());
        lane->addPoint(points[1].get());
        EXPECT_EQ(other->getPointCount(), 1u);
        EXPECT_EQ(lane->getPointCount(), uint32(n));
        const double perMoved = comparisonsPer(n, [&] {
            for (auto& point : points)
                other->addPoint(point.get());
        });
        const double perShared = comparisonsPer(2 * n, [&] {
            for (auto& point : points) {
                lane->addPoint(point.get());
                other->addPoint(point.get());
            }
        });
        EXPECT_EQ(lane->getPointCount(), uint32(n));
        EXPECT_EQ(other->getPointCount(), uint32(n));
        EXPECT_EQ(other->getPoint(0), points[1].get());
        EXPECT_EQ(other->getPoint(1), points[0].get());
        EXPECT_EQ(lane->getPoint(uint32(n - 1)), points.back().get());
        EXPECT_LT(perMoved, 0.01);
        EXPECT_LT(perShared, 4.0);
    }

    auto device = newObject<CvDevice>(kDeviceQuor3, kRoleAudioFX, "d");
    std::vector<IPtr<CvParameter>> parameters;
    for (long i = 0; i < 3000; ++i) {
        parameters.push_back(newObject<CvParameter>(kUnitNormalized, idText("p", i / 2)));
        device->addParameter(parameters.back().get());
        device->addParameter(parameters.back().get());
    }
    EXPECT_EQ(device->getParameterCount(), 3000u);
    const double perFind = comparisonsPer(1500, [&] {
        for (long i = 0; i < 1500; ++i)
            EXPECT_EQ(device->findParameterById(idText("p", i).text16()), parameters[size_t(2 * i)].get());
    });
    EXPECT_LT(perFind, 4.0);
}

TEST(ListIndex, IdsHashAlikeWhetherHeldNarrowOrWide) {
    // The reader keeps ids 8-bit; callers ask in UTF-16.
    for (const char16* id : {u"", u"c12", u"Gr\u00fc\u00dfe", u"\U0001F3B5x"}) {
        String wide(id);
        String narrow(id);
        narrow.toMultiByte();
        EXPECT_EQ(hashText(wide), hashText(narrow));
        EXPECT_TRUE(wide.isWide());
        EXPECT_FALSE(narrow.isWide()); // hashing converted neither
    }
    EXPECT_NE(hashText(String("c1")), hashText(String("c2")));
}

} // namespace
} // namespace Halvorn
