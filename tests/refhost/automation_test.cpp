// Automation lanes: how import makes them by path below a channel.
#include "hostfixture.h"

namespace Halvorn {
namespace RefHostTest {

// Reading lanes, their bindings and points is checked through the export suite's lanes.
TEST_F(HostTest, LanesAreMadeByPathBelowTheChannel) {
    EXPECT_EQ(static_cast<IHostObjectType*>(track(u"Tempo"))->getAutomationFolder(), nullptr);
    auto type = static_cast<IHostObjectType*>(track(u"Drums"));
    auto owner = queryInterface<IHostAutomationOwner>(type->getAutomationFolder());
    ASSERT_TRUE(owner);
    IHostParameterOwner* drums = channel(u"Drums");
    IHostParameterOwner* panner = child(drums, "Panner");
    auto channelTarget = queryInterface<IHostAutomationTarget>(drums);
    auto pannerTarget = queryInterface<IHostAutomationTarget>(panner);
    std::string base = channelTarget->getPath();
    std::string full = pannerTarget->getPath();
    ASSERT_EQ(full.rfind(base, 0), 0u) << full;
    std::string relative = full.substr(base.size() + 1);
    EXPECT_EQ(relative, "Panner");

    uint32 tag = panner->getParameterTag(0);
    EXPECT_EQ(owner->getLane(relative.c_str(), tag, false), nullptr);
    EXPECT_EQ(owner->getLane(relative.c_str(), 999, true), nullptr);
    EXPECT_EQ(owner->getLane("Nowhere", tag, true), nullptr);
    FUnknown* lane = owner->getLane(relative.c_str(), tag, true);
    ASSERT_NE(lane, nullptr);
    EXPECT_EQ(owner->getLane(relative.c_str(), tag, true), lane);
    EXPECT_EQ(queryInterface<IHostTrackChannel>(lane)->getMixerChannel(), panner);

    // A point goes in through an edit session, in the lane's context.
    auto top = IPtr<IHostEditContext>::adopt(project()->getEditContext(0));
    auto laneContext = IPtr<IHostEditContext>::adopt(top->contextFor(lane));
    ASSERT_TRUE(laneContext);
    auto session = service<IHostEditSession>();
    auto point = service<IHostAutomationPoint>();
    ASSERT_TRUE(point);
    point->setValue(laneContext.get(), 0.3f, session.get());
    queryInterface<IHostTimelineObject>(point.get())->setStart(laneContext.get(), 1.5, nullptr);
    ASSERT_EQ(session->add(laneContext.get(), IPtr<IHostAutomationPoint>(point).release()),
              kResultOk);
    std::vector<FUnknown*> points = children(lane);
    ASSERT_EQ(points.size(), 1u);
    EXPECT_FLOAT_EQ(queryInterface<IHostAutomationPoint>(points[0])->getValue(), 0.3f);
    type->getAutomationFolder()->setOpen(true);
    auto walk = IPtr<IHostIterator>::adopt(type->getAutomationFolder()->getLanes());
    int count = 0;
    while (!walk->isDone())
        count += walk->next() ? 1 : 0;
    EXPECT_EQ(count, 3);
}

} // namespace RefHostTest
} // namespace Halvorn
