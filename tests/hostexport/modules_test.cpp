// Export of the channel strip modules: neutral parameters read from the module's controller.
#include "exportfixture.h"

#include "corvelle/mediadevice.h"

namespace Halvorn {
namespace ExportTest {

using ModuleExportTest = ExportTest;

TEST_F(ModuleExportTest, CompressorSettingsInNeutralUnits) {
    IPtr<IMediaProject> model = exportModel();
    IMediaChannel* drums = findTrack(model.get(), "Drums")->getChannel();
    IMediaDevice* compressor = deviceOfType(drums, kDeviceCompressor);
    ASSERT_TRUE(compressor);
    EXPECT_EQ(nameOf(compressor), "Channel Compressor");
    EXPECT_STREQ(compressor->getDeviceId(), "7D2E4A101C3B4F5E8A9B0C1D2E3F4A50");
    IMediaParameterContainer* settings = compressor->getParameters();
    // "-24.0 dB" at 0.6 of -60..0; the bottom reads "-oo", minus infinity.
    IMediaParameter* threshold = settings->findParameterByName(kParamCompressorThreshold);
    ASSERT_TRUE(threshold);
    EXPECT_DOUBLE_EQ(threshold->getValue(), -24.0);
    EXPECT_DOUBLE_EQ(threshold->getMin(), -144.0);
    EXPECT_DOUBLE_EQ(threshold->getMax(), 0.0);
    EXPECT_EQ(threshold->getParameterId(), 0u);
    // Milliseconds on the display, seconds in the model.
    IMediaParameter* attack = settings->findParameterByName(kParamCompressorAttack);
    EXPECT_DOUBLE_EQ(attack->getValue(), 0.025);
    EXPECT_DOUBLE_EQ(attack->getMax(), 0.1);
    // A ratio is a percentage of the normalized value, whatever the display says ("4.8:1").
    IMediaParameter* ratio = settings->findParameterByName(kParamCompressorRatio);
    EXPECT_DOUBLE_EQ(ratio->getValue(), 20.0);
    EXPECT_DOUBLE_EQ(ratio->getMax(), 100.0);
    IMediaParameter* makeUp = settings->findParameterByName(kParamCompressorAutoMakeup);
    ASSERT_TRUE(makeUp);
    EXPECT_DOUBLE_EQ(makeUp->getValue(), 1.0);
    EXPECT_EQ(makeUp->getStepCount(), 2u);
    EXPECT_GT(makeUp->getParameterId(), 0u);
    // The module has no "Attack Time", yet that row took an id: Release follows two later.
    IMediaParameter* release = settings->findParameterByName(kParamCompressorRelease);
    EXPECT_EQ(idNumber(release), idNumber(attack) + 2);
    EXPECT_EQ(idNumber(threshold), idNumber(compressor) + 1);
}

TEST_F(ModuleExportTest, EqualizerBandsByTheirTypeTexts) {
    IPtr<IMediaProject> model = exportModel();
    IMediaChannel* drums = findTrack(model.get(), "Drums")->getChannel();
    auto equalizer = queryInterface<IMediaEqualizer>(deviceOfType(drums, kDeviceEqualizer));
    ASSERT_TRUE(equalizer);
    // Low Shelf, Parametric, Notch (left out, no ids), High Pass.
    ASSERT_EQ(equalizer->getBandCount(), 3u);
    EXPECT_EQ(equalizer->getBand(0)->getBandType(), uint32(kBandLowShelf));
    EXPECT_EQ(equalizer->getBand(1)->getBandType(), uint32(kBandBell));
    EXPECT_EQ(equalizer->getBand(2)->getBandType(), uint32(kBandHighPass));
    EXPECT_EQ(equalizer->getBand(2)->getOrder(), 4u);
    EXPECT_EQ(idNumber(equalizer->getBand(2)), idNumber(equalizer->getBand(1)) + 5);
    IMediaParameterContainer* band = equalizer->getBand(0)->getParameters();
    IMediaParameter* frequency = band->findParameterByName(kParamEqualizerBandFrequency);
    ASSERT_TRUE(frequency);
    EXPECT_DOUBLE_EQ(frequency->getMin(), 20.0);
    EXPECT_DOUBLE_EQ(frequency->getMax(), 20000.0);
    EXPECT_DOUBLE_EQ(frequency->getValue(), 10010.0);
    EXPECT_EQ(band->findParameterByName(kParamEqualizerBandEnabled)->getStepCount(), 2u);
    EXPECT_FALSE(equalizer->getInputGain());
}

} // namespace ExportTest
} // namespace Halvorn
