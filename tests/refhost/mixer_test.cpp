// The mixer as export reads it and import drives it: channels, parameters, the fader law,
// routing, sends, modules and buses.
#include "hostfixture.h"

#include <cmath>

namespace Halvorn {
namespace RefHostTest {

namespace {
std::string valueText(IHostParameter* parameter) {
    char16 buffer[256];
    int32 size = 256;
    if (parameter->getValueText(buffer, &size) != kResultOk || size <= 0)
        return "";
    return utf8(buffer);
}

IPtr<IHostParameter> parameter(IHostParameterOwner* owner, const char* id) {
    return IPtr<IHostParameter>::adopt(owner ? owner->findParameter(id) : nullptr);
}
} // namespace

// The channels' values (kinds, colour, pan, fader, destinations) are checked as the export
// suites read them; here the lookups at and past their ends.
TEST_F(HostTest, MixerChannelsAreFoundByKindAndCarryTheirParameters) {
    ASSERT_NE(mixer(), nullptr);
    EXPECT_EQ(service<IHostObjectRegistry>()->findObject("Mixer", 0), nullptr);
    IHostParameterOwner* list = child(mixer(), "Channels");
    EXPECT_EQ(list->getChildCount(), 6);
    EXPECT_EQ(list->getChild(6), nullptr);
    EXPECT_EQ(list->getChild(-1), nullptr);

    IHostParameterOwner* drums = channel(u"Drums");
    auto trackChannel = queryInterface<IHostTrackChannel>(track(u"Drums"));
    EXPECT_EQ(trackChannel->getMixerChannel(), drums);
    EXPECT_EQ(parameter(drums, "nothing").get(), nullptr);

    // Tags and titles agree with the parameters they name.
    for (int32 index = 0; index < drums->getParameterCount(); ++index) {
        uint32 tag = drums->getParameterTag(index);
        auto byTag = IPtr<IHostParameter>::adopt(drums->getParameterByTag(tag));
        ASSERT_TRUE(byTag);
        EXPECT_EQ(uint32(byTag->getTag()), tag);
        EXPECT_NE(drums->getParameterTitle(tag), nullptr);
    }
}

TEST_F(HostTest, TheFaderFollowsTheDocumentedLaw) {
    auto volume = parameter(channel(u"Main"), "volume");
    auto scale = queryInterface<IHostGainScale>(volume.get());
    ASSERT_TRUE(scale);
    EXPECT_FALSE(queryInterface<IHostGainScale>(parameter(channel(u"Main"), "mute").get()));
    // gain = 2 * v^3: unity at the cube root of 1/2, +6.02 dB at the top.
    EXPECT_NEAR(scale->valueToDecibel(std::cbrt(0.5f)), 0.0f, 1e-3);
    EXPECT_NEAR(scale->valueToDecibel(1.0f), 6.0206f, 1e-3);
    EXPECT_NEAR(scale->valueToDecibel(0.5f), 20.0 * std::log10(0.25), 1e-3);
    EXPECT_LE(scale->valueToDecibel(0.0f), -144.0f);
    for (float decibel : {-30.0f, -6.0f, 0.0f, 3.0f})
        EXPECT_NEAR(scale->valueToDecibel(scale->decibelToValue(decibel)), decibel, 1e-3);

    auto curve = service<IHostVolumeCurve>();
    EXPECT_NEAR(curve->valueToGain(0.5, 0), 0.25, 1e-9);
    EXPECT_NEAR(curve->valueToGain(0.5, 1), 1.0, 1e-9);
    EXPECT_NEAR(curve->gainToValue(curve->valueToGain(0.3, 0), 0, true), 0.3, 1e-9);
    EXPECT_DOUBLE_EQ(curve->gainToValue(10.0, 0, true), 1.0);

    ASSERT_EQ(volume->setNormalized(0.5f, true), kResultOk);
    EXPECT_FLOAT_EQ(volume->getNormalized(), 0.5f);
    EXPECT_EQ(volume->setNormalized(3.0f, false), kResultOk);
    EXPECT_FLOAT_EQ(volume->getNormalized(), 1.0f);
}

TEST_F(HostTest, RoutingAndSendsFollowTheMixersRules) {
    IHostParameterOwner* main = channel(u"Main");
    IHostParameterOwner* plate = channel(u"Plate");
    IHostParameterOwner* bus = channel(u"Drum Bus");
    IHostParameterOwner* drums = channel(u"Drums");
    auto routing = queryInterface<IHostOutputRouting>(drums);
    EXPECT_TRUE(routing->canRouteTo(main));
    EXPECT_TRUE(routing->canRouteTo(bus));
    EXPECT_FALSE(routing->canRouteTo(drums));
    EXPECT_FALSE(routing->canRouteTo(plate));
    // The bus feeds main; main may not feed the bus back.
    EXPECT_FALSE(queryInterface<IHostOutputRouting>(main)->canRouteTo(bus));
    ASSERT_EQ(routing->setDestination(main), kResultOk);
    EXPECT_EQ(valueText(parameter(drums, "outputBus").get()), "Main");
    EXPECT_NE(routing->setDestination(plate), kResultOk);
    EXPECT_EQ(valueText(parameter(drums, "outputBus").get()), "Main");

    IHostParameterOwner* sends = child(drums, "Sends");
    ASSERT_EQ(sends->getChildCount(), 1);
    IHostParameterOwner* send = sends->getChild(0);
    EXPECT_EQ(valueText(parameter(send, "outputBus").get()), "Plate");
    EXPECT_EQ(parameter(send, "outputBus")->getIntValue(), 1);
    EXPECT_GT(parameter(send, "on")->getIntValue(), 0);
    EXPECT_LT(parameter(send, "prePost")->getIntValue(), 0);
    EXPECT_TRUE(queryInterface<IHostGainScale>(parameter(send, "volume").get()));
    ASSERT_EQ(parameter(send, "prePost")->setValue(1.0f, false), kResultOk);
    EXPECT_GT(parameter(send, "prePost")->getIntValue(), 0);
    auto sendRouting = queryInterface<IHostOutputRouting>(send);
    EXPECT_FALSE(sendRouting->canRouteTo(main));
    ASSERT_EQ(sendRouting->setDestination(bus), kResultOk);
    EXPECT_EQ(valueText(parameter(send, "outputBus").get()), "Drum Bus");
}

TEST_F(HostTest, ModulesAndBusesOfAChannel) {
    IHostParameterOwner* drums = channel(u"Drums");
    auto modules = queryInterface<IHostChannelModules>(drums);
    ASSERT_TRUE(modules);
    IHostParameterOwner* compressor = modules->findModule("Channel Compressor");
    ASSERT_NE(compressor, nullptr);
    EXPECT_FLOAT_EQ(parameter(compressor, "Comp:AutoMakeUp")->getValue(), 1.0f);
    IHostParameterOwner* eqSlot = modules->findModule("Channel EQ Slot");
    ASSERT_NE(eqSlot, nullptr);
    EXPECT_GT(parameter(eqSlot, "on")->getValue(), 0.0f);
    EXPECT_EQ(modules->findModule("Channel Gate"), nullptr);
    EXPECT_EQ(modules->findModule(nullptr), nullptr);

    auto speakers = service<IHostSpeakerList>();
    auto other = service<IHostSpeakerList>();
    EXPECT_NE(speakers.get(), other.get());
    auto bus = queryInterface<IHostChannelBus>(drums);
    ASSERT_EQ(bus->getArrangement(speakers.get()), kResultOk);
    ASSERT_EQ(speakers->getCount(), 2);
    EXPECT_EQ(speakers->getSpeaker(0), 1u);
    EXPECT_EQ(speakers->getSpeaker(1), 2u);

    ASSERT_EQ(service<IHostProjectTools>()->setBusArrangement(bus.get(), 0x3F), kResultOk);
    ASSERT_EQ(bus->getArrangement(speakers.get()), kResultOk);
    EXPECT_EQ(speakers->getCount(), 6);
    auto trackBus = queryInterface<IHostTrackBus>(track(u"Drums"));
    ASSERT_TRUE(trackBus);
    EXPECT_EQ(trackBus->setArrangement(1), kResultOk);
    ASSERT_EQ(bus->getArrangement(speakers.get()), kResultOk);
    EXPECT_EQ(speakers->getCount(), 1);
    EXPECT_FALSE(queryInterface<IHostTrackBus>(track(u"Keys")));
}

} // namespace RefHostTest
} // namespace Halvorn
