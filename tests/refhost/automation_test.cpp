// Automation lanes: how import makes them by path below a channel.
#include "hostfixture.h"

namespace Halvorn {
namespace RefHostTest {

// Reading lanes, their bindings and points is checked through the export suite's lanes, and
// points added to made lanes through the import suite's.
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

    // The new lane is one more in the folder's walk.
    auto walk = IPtr<IHostIterator>::adopt(type->getAutomationFolder()->getLanes());
    int count = 0;
    while (!walk->isDone())
        count += walk->next() ? 1 : 0;
    EXPECT_EQ(count, 3);
}

} // namespace RefHostTest
} // namespace Halvorn
