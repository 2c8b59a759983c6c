// Automation on import: each lane finds its parameter anywhere in the project, lands on the
// track of the channel that holds it, and starts with a point at 0.
#include "importfixture.h"

#include <cmath>
#include <map>

using namespace Halvorn;
using namespace Halvorn::HostImportTest;

namespace {

const char* kStructure =
    "<Track contentType=\"audio\" id=\"a\" name=\"Vox\"><Channel id=\"ca\">"
    "<Volume id=\"vol\" value=\"1\" unit=\"linear\" min=\"0\" max=\"2\"/>"
    "<Pan id=\"pan\" value=\"0.5\" unit=\"normalized\"/>"
    "<Devices><Quor3Plugin id=\"dA\" deviceRole=\"audioFX\" "
    "deviceID=\"5A1D3C2B7E444B1F9C0D2B8E6F4A1C35\"><Parameters>"
    "<RealParameter id=\"thr\" name=\"Threshold\" value=\"0.5\" parameterID=\"0\" min=\"-1\" "
    "max=\"1\"/>"
    "<RealParameter id=\"flat\" name=\"Make-Up\" value=\"1\" parameterID=\"7\" min=\"1\" "
    "max=\"1\"/>"
    "</Parameters></Quor3Plugin></Devices>"
    "<Sends><Send id=\"s1\" type=\"post\" destination=\"fx\">"
    "<Volume id=\"level\" value=\"1\" unit=\"linear\" min=\"0\" max=\"2\"/></Send></Sends>"
    "</Channel></Track>"
    "<Track contentType=\"automation\" id=\"holder\" name=\"Holder\"/>"
    "<Channel id=\"fx\" name=\"Verb\" role=\"effect\"><Volume id=\"fxvol\" value=\"1\" "
    "unit=\"linear\"/></Channel>";

const char* kArrangement =
    "<Lanes timeUnit=\"seconds\">"
    "<Lanes track=\"a\">"
    "<Points><Target parameter=\"vol\"/><RealPoint time=\"2\" value=\"1\"/>"
    "<RealPoint time=\"4\" value=\"0.5\"/></Points>"
    "<Points><Target parameter=\"pan\"/><RealPoint time=\"3\" value=\"0.75\"/>"
    "<RealPoint time=\"1\" value=\"0.25\"/><RealPoint time=\"1\" value=\"0.5\"/></Points>"
    "<Points><Target parameter=\"unknown\"/><RealPoint time=\"1\" value=\"1\"/></Points>"
    "<Points><Target parameter=\"fxvol\"/><RealPoint time=\"1\" value=\"1\"/></Points>"
    "</Lanes>"
    "<Lanes track=\"holder\">"
    "<Points><Target parameter=\"thr\"/><RealPoint time=\"0\" value=\"0.5\"/>"
    "<RealPoint time=\"1\" value=\"-1\"/></Points>"
    "<Points><Target parameter=\"level\"/><RealPoint time=\"1\" value=\"2\"/></Points>"
    "<Points><Target parameter=\"flat\"/><RealPoint time=\"1\" value=\"1\"/></Points>"
    "</Lanes>"
    "</Lanes>";

using Points = std::vector<std::pair<double, float>>;

// Every lane of the track by its path and tag, with its points in the order they were added.
std::map<std::pair<std::string, uint32>, Points> lanesOf(RefHost::Track* track) {
    std::map<std::pair<std::string, uint32>, Points> lanes;
    for (auto& lane : track->folder->lanes) {
        Points& points = lanes[{lane->path, lane->tag}];
        for (auto& child : lane->children())
            if (auto* point = dynamic_cast<RefHost::AutomationPoint*>(child.get()))
                points.emplace_back(point->start, float(point->value));
    }
    return lanes;
}

TEST_F(ImportTest, LanesFindTheirParameterAnywhereAndStartAtZero) {
    ASSERT_TRUE(importPackage(document(kStructure, kArrangement)));

    RefHost::Track* vox = hostTrack(u"Vox");
    ASSERT_TRUE(vox);
    EXPECT_TRUE(vox->folder->open);
    auto lanes = lanesOf(vox);
    uint32 volumeTag = vox->channel->param("volume")->tag;
    uint32 panTag = vox->channel->panner()->param("panX")->tag;
    uint32 levelTag = vox->channel->sends()->children[0]->param("volume")->tag;
    auto near = [](const Points& got, const Points& want) {
        if (got.size() != want.size())
            return false;
        for (size_t i = 0; i < got.size(); ++i)
            if (got[i].first != want[i].first || std::fabs(got[i].second - want[i].second) > 1e-5)
                return false;
        return true;
    };

    // A fader lane goes through the host's curve, and gains a point at 0 from its earliest.
    EXPECT_TRUE(near(lanes[{"", volumeTag}],
                     {{0.0, faderFor(1.0)}, {2.0, faderFor(1.0)}, {4.0, faderFor(0.5)}}));
    // Points stay in list order; the first of the earliest decides the point at 0.
    EXPECT_TRUE(
        near(lanes[{"Panner", panTag}], {{0.0, 0.25f}, {3.0, 0.75f}, {1.0, 0.25f}, {1.0, 0.5f}}));
    // Lanes held by another track land on the track whose channel has the parameter. A
    // plug-in's parameter is addressed by its own id; its bounds scale the values.
    EXPECT_TRUE(near(lanes[{"Inserts/slot1/Plugin", 4201u}], {{0.0, 0.75f}, {1.0, 0.0f}}));
    EXPECT_TRUE(
        near(lanes[{"Sends/send1", levelTag}], {{0.0, faderFor(2.0)}, {1.0, faderFor(2.0)}}));
    // Equal bounds: the lane lies at the bottom.
    EXPECT_TRUE(near(lanes[{"Inserts/slot1/Plugin", 4208u}], {{0.0, 0.0f}, {1.0, 0.0f}}));
    // The unknown target and the FX channel's own lane (no track holds it) are left out.
    EXPECT_EQ(lanes.size(), 5u);
    EXPECT_TRUE(hostTrack(u"Holder") == nullptr);
}

} // namespace
