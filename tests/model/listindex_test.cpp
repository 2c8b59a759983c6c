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

// Adds n tracks with a channel each as the reader does, finds each channel by id, then adds
// everything again; the comparisons each step made per operation. Every hundredth channel
// repeats the id of the one before it, and a lookup gives the first.
std::vector<double> addAndFind(long n) {
    auto project = newObject<CvProject>("t", "1");
    std::vector<IPtr<CvTrack>> tracks;
    std::vector<IPtr<CvChannel>> channels;
    for (long i = 0; i < n; ++i) {
        tracks.push_back(newObject<CvTrack>(kContentAudio, idText("t", i)));
        channels.push_back(
            newObject<CvChannel>(1, kChannelRoleRegular, idText("c", i - (i % 100 == 99))));
    }
    auto addAll = [&] {
        for (long i = 0; i < n; ++i) {
            project->addTrack(tracks[size_t(i)].get());
            project->addChannel(channels[size_t(i)].get());
        }
    };
    std::vector<double> per = {comparisonsPer(2 * n, addAll), comparisonsPer(n, [&] {
        for (long i = 0; i < n; ++i)
            EXPECT_EQ(project->findChannel(idText("c", i).text16()),
                      i % 100 == 99 ? nullptr : channels[size_t(i)].get()) << i;
    }), comparisonsPer(2 * n, addAll)};
    EXPECT_EQ(project->getTrackCount(), uint32(n));
    EXPECT_EQ(project->getChannelCount(), uint32(n));
    EXPECT_EQ(project->getTrack(uint32(n - 1)), tracks.back().get());
    EXPECT_EQ(project->findChannel(u"none"), nullptr);
    EXPECT_EQ(project->findChannel(nullptr), nullptr);
    return per;
}

TEST(ListIndex, TracksAndChannelsAddAndFindInConstantComparisons) {
    // Short lists are scanned; from the eighth element on the index answers, and it must hold
    // the elements added before it was built.
    for (long n : {5L, 9L})
        addAndFind(n);
    const std::vector<double> once = addAndFind(2000);
    const std::vector<double> twice = addAndFind(4000);
    for (size_t step = 0; step < once.size(); ++step) {
        EXPECT_LT(once[step], 4.0) << step;
        EXPECT_LT(twice[step], 1.1 * once[step] + 0.5) << step;
    }
}

TEST(ListIndex, PointsAndParametersStayUniqueAtConstantCost) {
    for (long n : {20000L, 40000L}) {
        auto lane = newObject<CvAutomation>(kUnitNormalized, "lane");
        auto other = newObject<CvAutomation>(kUnitNormalized, "other");
        std::vector<IPtr<CvAutomationPoint>> points;
        for (long i = 0; i < n; ++i)
            points.push_back(newObject<CvAutomationPoint>());
        auto addAll = [&](CvAutomation* to) {
            return comparisonsPer(n, [&] {
                for (auto& point : points)
                    to->addPoint(point.get());
            });
        };
        // Fresh points, then points of this lane alone, are known by their tag.
        EXPECT_LT(addAll(lane.get()), 0.01);
        EXPECT_LT(addAll(lane.get()), 0.01);
        // Points that two lanes hold are searched for: in the short lane one by one, in the
        // long one through the index, built then from all the points that skipped it.
        other->addPoint(points[1].get());
        other->addPoint(points[1].get());
        lane->addPoint(points[1].get());
        EXPECT_LT(addAll(other.get()), 0.01); // the others are new to it
        EXPECT_LT(addAll(lane.get()), 4.0);
        EXPECT_LT(addAll(other.get()), 4.0);
        EXPECT_EQ(lane->getPointCount(), uint32(n));
        EXPECT_EQ(other->getPointCount(), uint32(n));
        EXPECT_EQ(other->getPoint(0), points[1].get());
        EXPECT_EQ(other->getPoint(1), points[0].get());
        EXPECT_EQ(lane->getPoint(uint32(n - 1)), points.back().get());
    }

    // Two adds of each parameter, two parameters of each id: the first of each is found.
    auto device = newObject<CvDevice>(kDeviceQuor3, kRoleAudioFX, "d");
    std::vector<IPtr<CvParameter>> parameters;
    for (long i = 0; i < 3000; ++i) {
        parameters.push_back(newObject<CvParameter>(kUnitNormalized, idText("p", i / 2)));
        device->addParameter(parameters.back().get());
        device->addParameter(parameters.back().get());
    }
    EXPECT_EQ(device->getParameterCount(), 3000u);
    EXPECT_LT(comparisonsPer(1500, [&] {
        for (long i = 0; i < 1500; ++i)
            EXPECT_EQ(device->findParameterById(idText("p", i).text16()),
                      parameters[size_t(2 * i)].get());
    }), 4.0);
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
}

} // namespace
} // namespace Halvorn
