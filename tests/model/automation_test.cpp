// Automation lanes and points.
#include "corvelle/mediaclip.h"
#include "model/cvautomation.h"
#include "modeltest.h"

#include <gtest/gtest.h>

namespace Halvorn {
namespace {

IPtr<CvAutomationPoint> point(double time, double value, uint32 interpolation) {
    auto result = newObject<CvAutomationPoint>();
    result->setTime(time);
    result->setValue(value);
    result->setInterpolation(interpolation);
    return result;
}

TEST(Automation, LaneKeepsPointsInOrderOfAddingAndEachOnce) {
    auto lane = newObject<CvAutomation>(kUnitDecibel, "lane");
    IMediaAutomation* face = lane.get();
    EXPECT_EQ(face->getPointCount(), 0u);
    EXPECT_EQ(face->getPoint(0), nullptr);

    auto late = point(2.0, -6.0, kInterpolationLinear);
    auto early = point(1.0, 0.5, kInterpolationHold);
    auto same = point(1.0, 0.75, kInterpolationHold);
    lane->addPoint(late.get());
    lane->addPoint(early.get());
    lane->addPoint(same.get());
    lane->addPoint(late.get());  // unique
    lane->addPoint(early.get()); // unique, also away from the end
    lane->addPoint(nullptr);

    ASSERT_EQ(face->getPointCount(), 3u);
    EXPECT_EQ(face->getPoint(3), nullptr);
    EXPECT_EQ(face->getPoint(0)->getTime(), 2.0); // nothing sorts
    EXPECT_EQ(face->getPoint(0)->getValue(), -6.0);
    EXPECT_EQ(face->getPoint(1)->getTime(), face->getPoint(2)->getTime());
    EXPECT_EQ(face->getPoint(2)->getValue(), 0.75);
    EXPECT_EQ(late->refCount(), 2);
    // A point in two lanes: the list index tests.
}

TEST(Automation, PointDefaultsAndFaces) {
    auto p = newObject<CvAutomationPoint>("pt7");
    IMediaAutomationPoint* face = p.get();
    EXPECT_EQ(face->getValue(), 0.0);
    EXPECT_EQ(face->getTime(), 0.0);
    EXPECT_EQ(face->getInterpolation(), kInterpolationHold);
    auto object = queryInterface<IMediaObject>(face);
    ASSERT_TRUE(object);
    EXPECT_EQ(utf8(object->getName()), "pt7");
    EXPECT_EQ(utf8(object->getId()), "");
    EXPECT_FALSE(queryInterface<IMediaAutomation>(face));

    auto lane = newObject<CvAutomation>(kUnitLinear, "l");
    EXPECT_TRUE(queryInterface<IMediaObject>(static_cast<IMediaAutomation*>(lane.get())));
    EXPECT_FALSE(queryInterface<IMediaEvent>(static_cast<IMediaAutomation*>(lane.get())));
}

} // namespace
} // namespace Halvorn
