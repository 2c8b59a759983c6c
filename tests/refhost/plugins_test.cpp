// Plug-ins in slots: their class, their parameters and tags, controllers, state and presets.
#include "foundation/memorystream.h"
#include "hostfixture.h"

namespace Halvorn {
namespace RefHostTest {

namespace {
constexpr FUID kCompressor = FUID::make(0x5A1D3C2B, 0x7E44, 0x4B1F, 0x9C0D, 0x2B8E6F4A1C35);
constexpr FUID kPlate = FUID::make(0x0E6B9F14, 0x3C21, 0x4D7A, 0x8B55, 0x71C2A9D0E3F6);
} // namespace

// The plug-in's class, title, tags and values are checked as the export suites read them; here
// the empty slot, the lookup by the channel's path, and the controller's bounds and texts.
TEST_F(HostTest, SlotsTellTheirPluginAndItsTagsCarryTheOffset) {
    IHostParameterOwner* drums = channel(u"Drums");
    IHostParameterOwner* slot = child(child(drums, "Inserts"), "slot2");
    ASSERT_NE(slot, nullptr);
    EXPECT_EQ(child(child(drums, "Inserts"), "slot1")->getChildCount(), 0);
    auto tools = service<IHostProjectTools>();
    FUID cid{};
    auto empty = IPtr<IHostParameter>::adopt(
        child(child(drums, "Inserts"), "slot1")->findParameter("effectType"));
    EXPECT_NE(tools->getPluginClass(empty.get(), cid), kResultOk);
    auto byChannel = IPtr<IHostParameter>::adopt(drums->findParameter("inserts:slot2:effectType"));
    ASSERT_EQ(tools->getPluginClass(byChannel.get(), cid), kResultOk);
    EXPECT_EQ(cid, kCompressor);

    IHostParameterOwner* plugin = slot->getChild(0);
    auto access = queryInterface<IHostPluginAccess>(plugin);
    ASSERT_TRUE(access);
    EXPECT_FALSE(queryInterface<IHostPluginAccess>(slot));
    IQuorController* controller = access->getController();
    ASSERT_NE(controller, nullptr);
    ASSERT_EQ(controller->getParameterCount(), 3);
    QuorParameterInfo info{};
    EXPECT_NE(controller->getParameterInfo(3, &info), kResultOk);

    // Tags carry the plug-in tag offset; the bare id finds nothing.
    auto makeUp = IPtr<IHostParameter>::adopt(plugin->getParameterByTag(7 + 4201));
    ASSERT_TRUE(makeUp);
    EXPECT_EQ(plugin->getParameterByTag(7), nullptr);
    ASSERT_EQ(controller->setNormalized(7, 0.75), kResultOk);
    EXPECT_FLOAT_EQ(makeUp->getNormalized(), 0.75f);
    EXPECT_DOUBLE_EQ(controller->getNormalized(7), 0.75);

    QuorString128 text{};
    ASSERT_EQ(controller->valueToText(0, 0.25, text), kResultOk);
    double parsed = 0.0;
    ASSERT_EQ(controller->valueFromText(0, text, &parsed), kResultOk);
    EXPECT_DOUBLE_EQ(parsed, 0.25);
    EXPECT_NE(controller->valueFromText(0, u"loud", &parsed), kResultOk);
}

TEST_F(HostTest, StateSavesAndLoadsAndClassesLoadIntoSlots) {
    IHostParameterOwner* drums = channel(u"Drums");
    IHostParameterOwner* plugin = child(child(drums, "Inserts"), "slot2")->getChild(0);
    auto state = queryInterface<IHostPluginState>(plugin);
    MemoryStream saved;
    ASSERT_EQ(state->saveState(&saved), kResultOk);
    EXPECT_GT(saved.getSize(), 0u);
    IQuorController* controller = queryInterface<IHostPluginAccess>(plugin)->getController();
    controller->setNormalized(0, 0.9);
    saved.seek(0, IBStream::kSeekFromStart, nullptr);
    ASSERT_EQ(state->loadState(&saved, 0), kResultOk);
    EXPECT_DOUBLE_EQ(controller->getNormalized(0), 0.3);
    EXPECT_EQ(saved.refCount(), 1);

    // A state of another class is refused and changes nothing.
    IHostParameterOwner* platePlugin =
        child(child(channel(u"Plate"), "Inserts"), "slot1")->getChild(0);
    saved.seek(0, IBStream::kSeekFromStart, nullptr);
    EXPECT_NE(queryInterface<IHostPluginState>(platePlugin)->loadState(&saved, 0), kResultOk);

    auto tools = service<IHostProjectTools>();
    auto insert = IPtr<IHostParameter>::adopt(drums->findParameter("inserts:slot3:effectType"));
    EXPECT_NE(tools->setPluginClass(insert.get(), FUID{}), kResultOk);
    ASSERT_EQ(tools->setPluginClass(insert.get(), kPlate), kResultOk);
    IHostParameterOwner* slot3 = child(child(drums, "Inserts"), "slot3");
    ASSERT_EQ(slot3->getChildCount(), 1);
    EXPECT_EQ(utf8(slot3->getChild(0)->getTitle()), "Quor Plate");
    char16 buffer[64];
    int32 size = 64;
    ASSERT_EQ(insert->getValueText(buffer, &size), kResultOk);
    EXPECT_EQ(utf8(buffer), "Quor Plate");

    IHostParameterOwner* keys = channel(u"Keys");
    IHostParameterOwner* instrument = child(keys, "Slot")->getChild(0);
    auto presetParameter =
        IPtr<IHostParameter>::adopt(instrument->findParameter("lumenBinPresetSyncronous"));
    auto presetList = queryInterface<IHostPresetList>(presetParameter.get());
    ASSERT_TRUE(presetList);
    EXPECT_EQ(presetList->refresh(), kResultOk);
    // Choosing a preset by its file is the import suites'; here the list's end.
    IHostPresets* presets = presetList->getPresets();
    ASSERT_EQ(presets->getPresetCount(), 2);
    EXPECT_EQ(presets->getPreset(2), nullptr);
}

} // namespace RefHostTest
} // namespace Halvorn
