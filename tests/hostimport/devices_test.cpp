// Devices on import: plug-ins into insert slots with parameters and state, the instrument with
// its preset, built-in devices onto channel strip modules, and the texts plug-ins parse.
#include "importfixture.h"

#include "hostimport/devicetranslation.h"
#include "model/cvparameter.h"

using namespace Halvorn;
using namespace Halvorn::HostImportTest;

namespace {

const char* kStructure =
    "<Track contentType=\"audio\" id=\"a\" name=\"Drums\"><Channel id=\"ca\"><Devices>"
    "<Quor3Plugin id=\"dA\" deviceRole=\"audioFX\" deviceID=\"5A1D3C2B7E444B1F9C0D2B8E6F4A1C35\">"
    "<Parameters><RealParameter id=\"pA\" name=\"Ratio\" value=\"0.75\" parameterID=\"1\"/>"
    "</Parameters><Enabled value=\"false\"/></Quor3Plugin>"
    "<Quor3Plugin id=\"dB\" deviceRole=\"audioFX\" deviceID=\"00000000000000000000000000000001\"/>"
    "<Quor3Plugin id=\"dN\" deviceRole=\"noteFX\" deviceID=\"5A1D3C2B7E444B1F9C0D2B8E6F4A1C35\"/>"
    "<Quor3Plugin id=\"dC\" deviceRole=\"audioFX\" deviceID=\"0E6B9F143C214D7A8B5571C2A9D0E3F6\">"
    "<Parameters><RealParameter id=\"pC\" value=\"0.9\" parameterID=\"0\"/></Parameters>"
    "<State path=\"plugins/plate.quorpreset\"/></Quor3Plugin>"
    "<Compressor id=\"c1\" deviceRole=\"audioFX\"><AutoMakeup value=\"true\"/></Compressor>"
    "<Compressor id=\"c2\" deviceRole=\"audioFX\"><AutoMakeup value=\"false\"/></Compressor>"
    "</Devices></Channel></Track>"
    "<Track contentType=\"notes\" id=\"n\" name=\"Keys\"><Channel id=\"cn\"><Devices>"
    "<BuiltinInstrument id=\"i\" deviceRole=\"instrument\" "
    "deviceID=\"9C3F27D85B104E62A4F30D8B1E7C6A29\"><Preset name=\"Electric\"/>"
    "</BuiltinInstrument></Devices></Channel></Track>";

const char* kPlateState = "QUORPRESET 1\n0E6B9F14-3C21-4D7A-8B55-71C2A9D0E3F6\n0=0.125\n1=0.5\n";

TEST_F(ImportTest, PluginsTakeTheNextFreeSlotWithTheirStateAndBuiltinsTheirModules) {
    ASSERT_TRUE(importPackage(document(kStructure), {{"plugins/plate.quorpreset", kPlateState}}));

    RefHost::Channel* drums = hostTrack(u"Drums")->channel.get();
    // The plug-in that isn't installed leaves no gap; the note effect isn't an insert.
    RefHost::Plugin* first = drums->insert(0)->plugin();
    RefHost::Plugin* second = drums->insert(1)->plugin();
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->type.name, "Quor Compressor");
    EXPECT_EQ(first->own(1)->normalized, 0.75);
    EXPECT_EQ(first->param("on")->normalized, 0.0);
    EXPECT_EQ(second->type.name, "Quor Plate");
    // The state file has the last word over the parameters.
    EXPECT_EQ(second->own(0)->normalized, 0.125);
    EXPECT_EQ(second->param("on")->normalized, 1.0);
    EXPECT_EQ(drums->insert(2)->plugin(), nullptr);
    // The first compressor goes to the strip's built-in module, and stops the second.
    auto* module = RefHost::hostCast<RefHost::ParamOwner>(drums->findModule("Channel Compressor"));
    ASSERT_TRUE(module);
    EXPECT_EQ(module->param("Comp:AutoMakeUp")->normalized, 1.0);

    RefHost::Plugin* instrument = hostTrack(u"Keys")->channel->instrumentSlot()->plugin();
    ASSERT_TRUE(instrument);
    EXPECT_EQ(instrument->type.name, "Quor Keys");
    EXPECT_EQ(instrument->param("lumenBinPresetSyncronous")->getIntValue(), 1);
}

TEST(DeviceTexts, ValuesBecomeTheTextsAPluginParses) {
    auto text = [](uint32 unit, double value, bool titleWay) {
        auto parameter = IPtr<CvParameter>::adopt(new CvParameter(unit));
        parameter->setValue(value);
        String shown = CvHostUtilities::parameterText(parameter.get(), titleWay);
        return std::string(shown.text8());
    };
    EXPECT_EQ(text(kUnitSeconds, 0.01, false), "10");
    EXPECT_EQ(text(kUnitDecibel, -20.0, false), "-20");
    EXPECT_EQ(text(kUnitLinear, 1.5, false), "1.5");
    EXPECT_EQ(text(kUnitLinear, 1.0 / 3.0, false), "0.333333");
    EXPECT_EQ(text(kUnitSemitones, 69.0, true), "440");
    EXPECT_EQ(text(kUnitSemitones, 60.0, true), "261.625565");
    EXPECT_EQ(text(kUnitSemitones, 60.0, false), "60");
    EXPECT_EQ(text(kUnitLinear, 1e-300, false), "0");

    FUID parsed{};
    EXPECT_TRUE(CvHostUtilities::parseClassId(parsed, "0E6B9F143C214D7A8B5571C2A9D0E3F6"));
    EXPECT_EQ(parsed, FUID::make(0x0E6B9F14, 0x3C21, 0x4D7A, 0x8B55, 0x71C2A9D0E3F6));
    FUID untouched{};
    EXPECT_FALSE(CvHostUtilities::parseClassId(untouched, "0E6B9F143C214D7A8B5571C2A9D0E3F"));
    EXPECT_FALSE(CvHostUtilities::parseClassId(untouched, "0E6B9F143C214D7A8B5571C2A9D0E3FZ"));
    EXPECT_FALSE(untouched.isValid());
}

} // namespace
