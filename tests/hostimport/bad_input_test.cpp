// Bad input on import: references to nothing and ids used twice leave out what depends on them,
// and the import still ends with its one closing step.
#include "importfixture.h"

#include <algorithm>

using namespace Halvorn;
using namespace Halvorn::HostImportTest;

namespace {

TEST_F(ImportTest, ReferencesToNothingAndRepeatedIdsLeaveOutOnlyTheirItem) {
    std::string structure =
        "<Track contentType=\"audio\" id=\"t\" name=\"One\"><Channel id=\"c\" destination=\"gone\">"
        "<Volume id=\"v\" value=\"1\" unit=\"linear\" min=\"0\" max=\"2\"/>"
        "<Sends><Send id=\"s\" destination=\"gone\"/></Sends></Channel></Track>"
        "<Track contentType=\"audio\" id=\"t\" name=\"Two\"><Channel id=\"c\">"
        "<Volume id=\"v\" value=\"0.5\" unit=\"linear\" min=\"0\" max=\"2\"/></Channel></Track>";
    std::string arrangement =
        "<Lanes timeUnit=\"seconds\"><Lanes track=\"t\"><Clips><Clip time=\"0\" duration=\"1\">"
        "<Clips><Clip><Audio><File path=\"audio/never.wav\"/></Audio></Clip></Clips></Clip>"
        "</Clips>"
        "<Points><Target parameter=\"\"/><RealPoint time=\"1\"/></Points>"
        "<Points><Target parameter=\"nothing\"/><RealPoint time=\"1\"/></Points>"
        "<Points><Target parameter=\"v\"/><RealPoint time=\"1\" value=\"2\"/></Points>"
        "</Lanes></Lanes>";
    ASSERT_TRUE(importPackage(document(structure, arrangement)));

    std::vector<std::string> steps = stepNames();
    EXPECT_EQ(std::count(steps.begin(), steps.end(), "Import Corvelle"), 1);
    EXPECT_EQ(steps.back(), "Import Corvelle");
    RefHost::Track* one = hostTrack(u"One");
    RefHost::Track* two = hostTrack(u"Two");
    ASSERT_TRUE(one && two);
    // The clip whose file is missing is lost, not the track; nothing is routed to nowhere.
    EXPECT_TRUE(one->children().empty());
    EXPECT_EQ(one->channel->destination, station->mixer->channel("main"));
    EXPECT_EQ(dynamic_cast<RefHost::Send*>(one->channel->sends()->children[0].get())->destination,
              nullptr);
    // Of two channels with one id the first takes the lane; the other gets none.
    EXPECT_EQ(one->folder->lanes.size(), 1u);
    EXPECT_TRUE(two->folder->lanes.empty());
}

} // namespace
