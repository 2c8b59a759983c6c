// The mixer as export reads it and import drives it: channels, parameters, the fader law,
// routing, sends, modules and buses.
#include "hostfixture.h"

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

// The law itself (2 v^3 at a top of 2, linear at 4) shows in the gains the export suites read
// and the fader values the import suites set; here its ends.
TEST_F(HostTest, TheFaderFollowsTheDocumentedLaw) {
    auto volume = parameter(channel(u"Main"), "volume");
    auto scale = queryInterface<IHostGainScale>(volume.get());
    ASSERT_TRUE(scale);
    EXPECT_FALSE(queryInterface<IHostGainScale>(parameter(channel(u"Main"), "mute").get()));
    EXPECT_LE(scale->valueToDecibel(0.0f), -144.0f);
    EXPECT_DOUBLE_EQ(service<IHostVolumeCurve>()->gainToValue(10.0, 0, true), 1.0);

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
    // A send's settings are read by the export suites and set by the import suites; it never
    // feeds the output channel.
    EXPECT_FALSE(queryInterface<IHostOutputRouting>(sends->getChild(0))->canRouteTo(main));
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
    // Speaker counts read and set are the export and import suites'; an instrument track has
    // no bus of its own to set.
    EXPECT_TRUE(queryInterface<IHostTrackBus>(track(u"Drums")));
    EXPECT_FALSE(queryInterface<IHostTrackBus>(track(u"Keys")));
}

} // namespace RefHostTest
} // namespace Halvorn
