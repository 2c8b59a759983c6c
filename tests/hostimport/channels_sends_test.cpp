// Channels on import: fader, pan, mute, the project's FX and group channels, output routing,
// and sends matched slot by slot to their destinations.
#include "importfixture.h"

using namespace Halvorn;
using namespace Halvorn::HostImportTest;

namespace {

const char* kStructure =
    "<Track contentType=\"audio\" id=\"a\" name=\"Vox\">"
    "<Channel id=\"ca\" role=\"regular\" audioChannels=\"2\" destination=\"bus\">"
    "<Volume value=\"0.5\" unit=\"linear\" min=\"0\" max=\"2\"/>"
    "<Pan value=\"0.25\" unit=\"normalized\"/><Mute value=\"true\"/>"
    "<Sends><Send id=\"s1\" type=\"post\" destination=\"dup\">"
    "<Volume value=\"1\" unit=\"linear\" min=\"0\" max=\"2\"/><Enable value=\"false\"/></Send>"
    "<Send id=\"s2\" type=\"pre\" destination=\"nowhere\"><Enable value=\"true\"/></Send>"
    "</Sends></Channel></Track>"
    "<Track contentType=\"audio\" id=\"b\" name=\"Bass\">"
    "<Channel id=\"cb\" role=\"regular\" destination=\"master\">"
    "<Pan value=\"0.1\" unit=\"linear\"/></Channel></Track>"
    "<Channel id=\"master\" name=\"Master\" role=\"master\">"
    "<Volume value=\"0.1\" unit=\"linear\"/></Channel>"
    "<Channel id=\"bus\" name=\"Bus\" role=\"submix\" audioChannels=\"6\"/>"
    "<Channel id=\"dup\" name=\"Verb A\" role=\"effect\"/>"
    "<Channel id=\"dup\" name=\"Verb B\" role=\"effect\"/>";

TEST_F(ImportTest, ChannelsRouteAndSendByIdTheFirstEntryWinning) {
    double mainVolume = station->mixer->channel("main")->param("volume")->normalized;
    ASSERT_TRUE(importPackage(document(kStructure)));

    RefHost::Channel* vox = hostTrack(u"Vox")->channel.get();
    EXPECT_NEAR(vox->param("volume")->normalized, faderFor(0.5), 1e-4);
    EXPECT_EQ(vox->panner()->param("panX")->normalized, 0.25);
    EXPECT_EQ(vox->param("mute")->normalized, 1.0);
    // A pan in any unit but normalized leaves the panner alone.
    EXPECT_EQ(hostTrack(u"Bass")->channel->panner()->param("panX")->normalized, 0.5);

    RefHost::Track* bus = hostTrack(u"Bus");
    RefHost::Track* verbA = hostTrack(u"Verb A");
    RefHost::Track* verbB = hostTrack(u"Verb B");
    ASSERT_TRUE(bus && verbA && verbB);
    EXPECT_EQ(bus->type, "Group Channel");
    EXPECT_EQ(bus->channel->speakers, 63u);
    EXPECT_EQ(verbA->channel->title, u"Verb A");
    EXPECT_EQ(vox->destination, bus->channel.get());
    // Feeding the master keeps the host's default output; the master itself stays untouched.
    EXPECT_EQ(hostTrack(u"Bass")->channel->destination, station->mixer->channel("main"));
    EXPECT_FALSE(hostTrack(u"Master"));
    EXPECT_EQ(station->mixer->channel("main")->param("volume")->normalized, mainVolume);

    auto* sendA = dynamic_cast<RefHost::Send*>(vox->sends()->children[0].get());
    auto* sendB = dynamic_cast<RefHost::Send*>(vox->sends()->children[1].get());
    ASSERT_TRUE(sendA && sendB);
    EXPECT_EQ(sendA->destination, verbA->channel.get());
    EXPECT_EQ(sendA->param("on")->normalized, 0.0);
    EXPECT_EQ(sendA->param("prePost")->getValue(), 0.0f);
    EXPECT_NEAR(sendA->param("volume")->normalized, faderFor(1.0), 1e-4);
    // A send to an unknown channel keeps its settings and goes nowhere.
    EXPECT_EQ(sendB->destination, nullptr);
    EXPECT_EQ(sendB->param("prePost")->getValue(), 1.0f);
    EXPECT_EQ(sendB->param("on")->normalized, 1.0);

    std::vector<std::string> steps = stepNames();
    EXPECT_EQ(std::count(steps.begin(), steps.end(), "Import Track"), 5);
}

} // namespace
