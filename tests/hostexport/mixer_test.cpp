// Export of transport, mixer channels, routing, sends and plug-in devices.
#include "exportfixture.h"

#include "common/testfiles.h"
#include "corvelle/mediadevice.h"

#include <cmath>

namespace Halvorn {
namespace ExportTest {

using MixerExportTest = ExportTest;

TEST_F(MixerExportTest, TransportAndIdsOfARun) {
    edit([](nlohmann::json& session) {
        auto& tempo = entry(session["project"]["tracks"], "tempo");
        tempo["bpm"] = 140.0;
        tempo["fixed"] = true;
        entry(session["project"]["tracks"], "signature")["numerator"] = 6;
        entry(session["project"]["tracks"], "signature")["denominator"] = 8;
    });
    IPtr<IMediaProject> model = exportModel();
    ASSERT_TRUE(model);
    EXPECT_EQ(utf8(model->getApplicationName()), "Quor Studio");
    EXPECT_EQ(utf8(model->getApplicationVersion()), "5.2.1");
    IMediaParameter* tempo = model->getTempo();
    EXPECT_DOUBLE_EQ(tempo->getValue(), 140.0);
    EXPECT_DOUBLE_EQ(tempo->getMin(), 10.0);
    EXPECT_DOUBLE_EQ(tempo->getMax(), 300.0);
    EXPECT_EQ(model->getTimeSignature()->getNumerator(), 6);
    EXPECT_EQ(model->getTimeSignature()->getDenominator(), 8);
    // A second exporter starts its ids afresh: the first mixer channel is id0 both times.
    EXPECT_EQ(idOf(model->getChannel(0)), "id0");
    EXPECT_EQ(idOf(exportModel()->getChannel(0)), "id0");
}

TEST_F(MixerExportTest, ChannelsRoutingAndSends) {
    edit([](nlohmann::json& session) {
        auto& channels = session["mixer"]["channels"];
        // The output channel moves behind the group that feeds it.
        nlohmann::json main = entry(channels, "main");
        channels.erase(channels.begin() + 1);
        channels.push_back(main);
        entry(channels, "drum-bus")["speakers"] = 0x3F;
        entry(channels, "plate")["speakers"] = 0x80000;
        // A send from an FX channel to a later one finds nothing yet.
        channels.push_back({{"id", "echo"}, {"kind", "FxChannel"}, {"title", "Echo"}});
        entry(channels, "plate")["sends"] = {{{"to", "echo"}, {"volume", 0.5}}};
    });
    IPtr<IMediaProject> model = exportModel();
    ASSERT_TRUE(model);
    IMediaChannel* main = findChannel(model.get(), "Main");
    IMediaChannel* bus = findChannel(model.get(), "Drum Bus");
    IMediaChannel* plate = findChannel(model.get(), "Plate");
    ASSERT_TRUE(main && bus && plate);
    EXPECT_FALSE(findChannel(model.get(), "Input 1"));
    EXPECT_EQ(main->getRole(), uint32(kChannelRoleMaster));
    EXPECT_EQ(bus->getRole(), uint32(kChannelRoleSubmix));
    EXPECT_EQ(plate->getRole(), uint32(kChannelRoleEffect));
    EXPECT_EQ(utf8(bus->getDestination()), idOf(main));
    EXPECT_EQ(utf8(plate->getDestination()), idOf(main));
    EXPECT_EQ(bus->getAudioChannels(), 6u);
    EXPECT_EQ(plate->getAudioChannels(), 1u);
    EXPECT_EQ(main->getAudioChannels(), 2u);
    ASSERT_EQ(plate->getSendCount(), 1u);
    EXPECT_EQ(utf8(plate->getSend(0)->getDestination()), "");

    // A track's channel: colour, fader in linear gain, pan, mute, and a send resolved against
    // the mixer's channels, which all came before the tracks.
    IMediaChannel* drums = findTrack(model.get(), "Drums")->getChannel();
    ASSERT_TRUE(drums);
    EXPECT_EQ(drums->getRole(), uint32(kChannelRoleRegular));
    IMediaColor* colour = queryInterface<IMediaObject>(drums)->getColor();
    EXPECT_EQ(colour->getRed(), 0xCC);
    EXPECT_EQ(colour->getAlpha(), 0xFF);
    EXPECT_EQ(utf8(drums->getDestination()), idOf(bus));
    // 0.6 on the console curve with a top of 2.0: 2 * 0.6^3.
    EXPECT_NEAR(drums->findParameter(kParamVolume)->getValue(), 2.0 * 0.216, 1e-5);
    EXPECT_DOUBLE_EQ(drums->findParameter(kParamVolume)->getMax(), 2.0);
    EXPECT_NEAR(drums->findParameter(kParamPan)->getValue(), 0.25, 1e-6);
    EXPECT_EQ(drums->findParameter(kParamMute)->getStepCount(), 2u);
    EXPECT_NE(drums->findParameter(kParamPan)->getParameterId(),
              drums->findParameter(kParamVolume)->getParameterId());
    ASSERT_EQ(drums->getSendCount(), 1u);
    IMediaSend* send = drums->getSend(0);
    EXPECT_EQ(utf8(send->getDestination()), idOf(plate));
    EXPECT_EQ(send->getType(), 1u);
    EXPECT_TRUE(send->isEnabled());
    EXPECT_NEAR(send->findParameter(kParamVolume)->getValue(), 2.0 * 0.125, 1e-5);
}

TEST_F(MixerExportTest, PluginDevicesWithClassAndStateFile) {
    edit([](nlohmann::json& session) {
        auto& drums = entry(session["mixer"]["channels"], "drums-channel");
        drums["inserts"].push_back(drums["inserts"][0]);
        drums["inserts"][1]["slot"] = 5;
    });
    IPtr<IMediaProject> model = exportModel();
    ASSERT_TRUE(model);
    IMediaChannel* drums = findTrack(model.get(), "Drums")->getChannel();
    // Two compressors in slots 2 and 5; the module slot without a plug-in adds nothing.
    std::vector<IMediaDevice*> plugins;
    for (uint32 index = 0; index < drums->getDeviceCount(); ++index)
        if (drums->getDevice(index)->getDeviceType() == kDeviceQuor3)
            plugins.push_back(drums->getDevice(index));
    ASSERT_EQ(plugins.size(), 2u);
    EXPECT_STREQ(plugins[0]->getDeviceId(), "5A1D3C2B7E444B1F9C0D2B8E6F4A1C35");
    EXPECT_EQ(nameOf(plugins[0]), "Quor Compressor");
    EXPECT_FALSE(plugins[0]->isEnabled());
    EXPECT_EQ(plugins[0]->getDeviceRole(), uint32(kRoleAudioFX));
    std::string first = utf8(plugins[0]->getStatePath());
    std::string second = utf8(plugins[1]->getStatePath());
    EXPECT_NE(first, second);
    EXPECT_EQ(first.rfind(presetFolder() + "/", 0), 0u);
    EXPECT_EQ(first.size(), presetFolder().size() + 1 + 36 + 11);
    EXPECT_EQ(TestSupport::readFile(first).rfind("QUORPRESET 1\n", 0), 0u);

    IMediaChannel* keys = findTrack(model.get(), "Keys")->getChannel();
    ASSERT_GE(keys->getDeviceCount(), 1u);
    EXPECT_EQ(keys->getDevice(0)->getDeviceRole(), uint32(kRoleInstrument));
}

} // namespace ExportTest
} // namespace Halvorn
