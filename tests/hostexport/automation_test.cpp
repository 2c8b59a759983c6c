// Export of automation lanes and the plug-in parameters they move.
#include "exportfixture.h"

#include "corvelle/mediaautomation.h"
#include "corvelle/mediadevice.h"

namespace Halvorn {
namespace ExportTest {

using AutomationExportTest = ExportTest;

namespace {
nlohmann::json lane(const std::string& path, const std::string& parameter,
                    std::vector<std::pair<double, double>> points) {
    nlohmann::json made = {
        {"path", path}, {"parameter", parameter}, {"points", nlohmann::json::array()}};
    for (auto [start, value] : points)
        made["points"].push_back({{"start", start}, {"value", value}});
    return made;
}

IMediaAutomation* laneOf(IMediaTrack* track, IMediaParameter* target) {
    for (uint32 index = 0; index < track->getAutomationCount(); ++index)
        if (utf8(track->getAutomation(index)->getTarget()) == idOf(target))
            return track->getAutomation(index);
    return nullptr;
}
} // namespace

TEST_F(AutomationExportTest, LanesFindTheirParametersAndFadersReadAsGain) {
    for (double top : {2.0, 4.0}) {
        edit([top](nlohmann::json& session) {
            session["mixer"]["maximumGain"] = top;
            auto& lanes = entry(session["project"]["tracks"], "drums")["automation"];
            lanes.push_back(lane("Panner", "panX", {{1.0, 0.2}}));
            lanes.push_back(lane("", "mute", {{2.0, 1.0}}));
            lanes.push_back(lane("", "solo", {{2.0, 1.0}}));
            lanes.push_back(lane("Sends/send1", "volume", {{3.0, 0.5}}));
            lanes.push_back(lane("", "colorspec", {}));
        });
        IPtr<IMediaProject> model = exportModel();
        IMediaTrack* drums = findTrack(model.get(), "Drums");
        ASSERT_TRUE(drums);
        IMediaChannel* channel = drums->getChannel();
        // Volume, plug-in, pan, mute and send lanes; solo has no parameter in the model and
        // the empty lane leaves nothing.
        EXPECT_EQ(drums->getAutomationCount(), 5u);

        IMediaParameter* volume = channel->findParameter(kParamVolume);
        IMediaAutomation* fader = laneOf(drums, volume);
        ASSERT_TRUE(fader);
        EXPECT_EQ(fader->getUnit(), uint32(kUnitLinear));
        ASSERT_EQ(fader->getPointCount(), 2u);
        // 0.6 and 0.8 through the curve the top puts in force: cubic at 2.0, linear at 4.0.
        double expected = top == 2.0 ? 2.0 * 0.6 * 0.6 * 0.6 : 4.0 * 0.6;
        EXPECT_NEAR(fader->getPoint(0)->getValue(), expected, 1e-5);
        EXPECT_NEAR(volume->getValue(), expected, 1e-5);
        EXPECT_DOUBLE_EQ(fader->getPoint(1)->getTime(), 4.0);
        EXPECT_EQ(fader->getPoint(0)->getInterpolation(), uint32(kInterpolationLinear));

        IMediaAutomation* pan = laneOf(drums, channel->findParameter(kParamPan));
        ASSERT_TRUE(pan);
        EXPECT_NEAR(pan->getPoint(0)->getValue(), 0.2, 1e-6);
        EXPECT_EQ(pan->getPoint(0)->getInterpolation(), uint32(kInterpolationLinear));
        IMediaAutomation* mute = laneOf(drums, channel->findParameter(kParamMute));
        ASSERT_TRUE(mute);
        EXPECT_EQ(mute->getPoint(0)->getInterpolation(), uint32(kInterpolationHold));
        IMediaAutomation* send = laneOf(drums, channel->getSend(0)->findParameter(kParamVolume));
        ASSERT_TRUE(send);
        EXPECT_NEAR(send->getPoint(0)->getValue(), top == 2.0 ? 2.0 * 0.125 : 2.0, 1e-5);

        // The plug-in lane gets a plain parameter of its own, by host tag and title, whose
        // value stays as it came.
        IMediaDevice* compressor = channel->getDevice(0);
        IMediaParameter* makeUp = compressor->getParameters()->findParameterByNumber(7 + 4201);
        ASSERT_TRUE(makeUp);
        EXPECT_EQ(nameOf(makeUp), "Make-Up");
        EXPECT_NEAR(makeUp->getValue(), 0.1, 1e-6);
        IMediaAutomation* plugin = laneOf(drums, makeUp);
        ASSERT_TRUE(plugin);
        EXPECT_NEAR(plugin->getPoint(0)->getValue(), 0.25, 1e-6);
    }
}

TEST_F(AutomationExportTest, EmptyLanesStillUseAnId) {
    IPtr<IMediaProject> plain = exportModel();
    edit([](nlohmann::json& session) {
        entry(session["project"]["tracks"], "drums")["automation"].push_back(lane("", "mute", {}));
    });
    IPtr<IMediaProject> withEmpty = exportModel();
    IMediaTrack* before = findTrack(plain.get(), "Drums");
    IMediaTrack* after = findTrack(withEmpty.get(), "Drums");
    EXPECT_EQ(before->getAutomationCount(), after->getAutomationCount());
    // Everything made after the drums' lanes is one id further on.
    EXPECT_EQ(idNumber(findTrack(withEmpty.get(), "Keys")),
              idNumber(findTrack(plain.get(), "Keys")) + 1);
}

} // namespace ExportTest
} // namespace Halvorn
