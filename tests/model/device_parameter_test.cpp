// Parameters, parameter containers and the device kinds, with their texts.
#include "model/cvdevice.h"
#include "modeltest.h"

#include <gtest/gtest.h>

namespace Halvorn {
namespace {

TEST(DeviceParameter, NewParameterDefaultsAndNormalizing) {
    auto p = newObject<CvParameter>(kUnitHertz, "p");
    IMediaParameter* face = p.get();
    EXPECT_EQ(face->getValue(), 0.0);
    EXPECT_EQ(face->getMin(), 0.0);
    EXPECT_EQ(face->getMax(), 1.0);
    EXPECT_TRUE(face->isContinuous());
    EXPECT_EQ(face->getNormalizedValue(), 0.0);

    face->setMax(10.0);
    face->setValue(15.0); // no check: the value may stand outside the bounds
    EXPECT_DOUBLE_EQ(face->getNormalizedValue(), 1.5);
    face->setMin(-10.0);
    face->setValue(0.0);
    EXPECT_DOUBLE_EQ(face->getNormalizedValue(), 0.5);
    face->setMin(10.0);
    EXPECT_EQ(face->getNormalizedValue(), 0.0); // min equal to max: no division by zero
    face->setStepCount(2);
    EXPECT_FALSE(face->isContinuous());
}

TEST(DeviceParameter, ContainerFindsTheFirstMatchAndNothingForNull) {
    auto device = newObject<CvDevice>(kDeviceQuor3, kRoleInstrument, "dev");
    auto first = namedParameter("Cutoff", "p1", 7);
    auto second = namedParameter("Cutoff", "p2", 7);
    device->addParameter(first.get());
    device->addParameter(second.get());
    device->addParameter(first.get()); // unique
    device->addParameter(nullptr);
    device->addParameter(namedParameter("Résonance", "p3", 8).get());

    IMediaParameterContainer* container = static_cast<IMediaDevice*>(device.get())->getParameters();
    ASSERT_NE(container, nullptr);
    EXPECT_EQ(container->getParameterCount(), 3u);
    EXPECT_EQ(container->getParameter(3), nullptr);
    IMediaParameter* a = first.get();
    IMediaParameter* b = second.get();
    EXPECT_EQ(container->findParameterByName("Cutoff"), a);
    EXPECT_EQ(container->findParameterByName("cutoff"), nullptr);
    EXPECT_NE(container->findParameterByName("Résonance"), nullptr);
    EXPECT_EQ(container->findParameterByName(nullptr), nullptr);
    EXPECT_EQ(container->findParameterById(u"p2"), b);
    EXPECT_EQ(container->findParameterById(u"p4"), nullptr);
    EXPECT_EQ(container->findParameterById(nullptr), nullptr);
    EXPECT_EQ(container->findParameterByNumber(7), a);
    EXPECT_EQ(container->findParameterByNumber(9), nullptr);
    EXPECT_TRUE(container->hasParameterNumber(8));
    EXPECT_FALSE(container->hasParameterName("Drive"));
    EXPECT_FALSE(container->hasParameterName(nullptr));

    // Reading a name through IMediaObject must not spoil a later search by that name.
    auto object = queryInterface<IMediaObject>(container->getParameter(2));
    EXPECT_EQ(utf8(object->getName()), "Résonance");
    EXPECT_TRUE(container->hasParameterName("Résonance"));
}

TEST(DeviceParameter, DeviceDefaultsStateFileAndFaces) {
    auto device = newObject<CvDevice>(kDeviceCompressor, kRoleAudioFX, "comp");
    IMediaDevice* face = device.get();
    EXPECT_STREQ(face->getDeviceId(), "");
    ASSERT_NE(face->getStatePath(), nullptr);
    EXPECT_EQ(utf8(face->getStatePath()), "");
    EXPECT_TRUE(face->isEnabled());

    CvFile* file = device->getFile();
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->getType(), kCvFilePreset);
    EXPECT_FALSE(file->isExternal());

    auto accessor = queryInterface<ICvFileAccessor>(face);
    ASSERT_TRUE(accessor);
    // A path set is in the document outlines; the file stays a preset, and null empties it.
    accessor->setFile(u"/abs/b.quorpreset", true);
    EXPECT_EQ(accessor->getFile()->getType(), kCvFilePreset);
    accessor->setFile(nullptr, false);
    EXPECT_EQ(utf8(face->getStatePath()), "");

    EXPECT_TRUE(queryInterface<IMediaParameterContainer>(face));
    EXPECT_TRUE(queryInterface<IMediaObject>(face));
    EXPECT_FALSE(queryInterface<IMediaEqualizer>(face));
    EXPECT_FALSE(queryInterface<IMediaBuiltinInstrument>(face));

    // An instrument answers for the device and its file as well.
    auto instrument = newObject<CvInstrument>(kDeviceBuiltinInstrument, kRoleInstrument, "inst");
    IMediaBuiltinInstrument* instrumentFace = instrument.get();
    EXPECT_EQ(utf8(instrumentFace->getPresetName()), "");
    auto asDevice = queryInterface<IMediaDevice>(instrumentFace);
    ASSERT_TRUE(asDevice);
    EXPECT_TRUE(queryInterface<ICvFileAccessor>(instrumentFace));
    EXPECT_EQ(queryInterface<IMediaBuiltinInstrument>(asDevice.get()).get(), instrumentFace);
    EXPECT_FALSE(queryInterface<IMediaEqualizer>(instrumentFace));
}

TEST(DeviceParameter, EqualizerBandsAndGains) {
    auto eq = newObject<CvEqualizer>(kRoleAudioFX, "eq");
    IMediaEqualizer* face = eq.get();
    EXPECT_EQ(static_cast<IMediaDevice*>(eq.get())->getDeviceType(), kDeviceEqualizer);
    EXPECT_EQ(face->getInputGain(), nullptr);
    EXPECT_EQ(face->getOutputGain(), nullptr);
    EXPECT_EQ(face->getBand(0), nullptr);

    eq->addParameter(namedParameter(kParamEqualizerOutputGain, "out", 1).get());
    auto band = newObject<CvEqualizerBand>(kBandBell, 2, "band");
    band->addParameter(namedParameter(kParamEqualizerBandFrequency, "f", 0).get());
    eq->addBand(band.get());
    eq->addBand(band.get());
    eq->addBand(nullptr);
    EXPECT_EQ(face->getInputGain(), nullptr);
    ASSERT_NE(face->getOutputGain(), nullptr);
    EXPECT_EQ(face->getOutputGain()->getParameterId(), 1u);
    ASSERT_EQ(face->getBandCount(), 1u);
    EXPECT_TRUE(face->getBand(0)->getParameters()->hasParameterName(kParamEqualizerBandFrequency));

    // The exporter's way from a device face to the class behind it.
    IMediaDevice* asDevice = eq.get();
    EXPECT_EQ(fobjectCast<CvEqualizer>(asDevice), eq.get());
    EXPECT_EQ(fobjectCast<CvInstrument>(asDevice), nullptr);
    EXPECT_TRUE(eq->isTypeOf("CvDevice"));
    EXPECT_TRUE(eq->isTypeOf("CvParameterContainer"));
    EXPECT_FALSE(eq->isTypeOf("CvDevice", false));
    EXPECT_FALSE(eq->isTypeOf("CvObject"));
}

} // namespace
} // namespace Halvorn
