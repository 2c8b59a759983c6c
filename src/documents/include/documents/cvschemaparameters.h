// The labelled parameters of the format: elements that stand for one fixed model parameter.
//
// Channels and sends have Mute, Pan, Volume and Enable; the built-in devices and equalizer bands
// have their settings as elements of their own. Each row pairs the element name with the
// model's logical parameter name. Reader and writer both walk these rows.
#pragma once

#include "corvelle/mediaparameter.h"
#include "documents/cvschemanames.h"

namespace Halvorn {
namespace CvSchema {

struct LabelledParameter {
    const char8* element;   // the element name, as "Threshold"
    const char8* modelName; // the logical name of the model parameter
    bool isSwitch;          // a Boolean "value" instead of a real with unit and bounds
    bool isWritten;         // false for the rows that the format only reads
};

// The fixed parameters of channels and sends.
inline constexpr LabelledParameter kChannelMute = {Element::kMute, kParamMute, true, true};
inline constexpr LabelledParameter kChannelPan = {Element::kPan, kParamPan, false, true};
inline constexpr LabelledParameter kChannelVolume = {Element::kVolume, kParamVolume, false, true};
inline constexpr LabelledParameter kSendVolume = {Element::kVolume, kParamVolume, false, true};
inline constexpr LabelledParameter kSendEnable = {Element::kEnable, kParamEnable, true, true};

// The rows of each built-in device, in the order in which they are read.
inline constexpr LabelledParameter kCompressorParameters[] = {
    {"Threshold", kParamCompressorThreshold, false, true},
    {"Attack", kParamCompressorAttack, false, true},
    {"Release", kParamCompressorRelease, false, true},
    {"InputGain", kParamCompressorInputGain, false, true},
    {"OutputGain", kParamCompressorOutputGain, false, true},
    {"Ratio", kParamCompressorRatio, false, true},
    {"AutoMakeup", kParamCompressorAutoMakeup, true, true},
};

inline constexpr LabelledParameter kLimiterParameters[] = {
    {"Threshold", kParamLimiterThreshold, false, true},
    {"Attack", kParamLimiterAttack, false, true},
    {"Release", kParamLimiterRelease, false, true},
    {"InputGain", kParamLimiterInputGain, false, true},
    {"OutputGain", kParamLimiterOutputGain, false, true},
};

inline constexpr LabelledParameter kNoiseGateParameters[] = {
    {"Threshold", kParamNoiseGateThreshold, false, true},
    {"Ratio", kParamNoiseGateRatio, false, true},
    {"Attack", kParamNoiseGateAttack, false, true},
    {"Release", kParamNoiseGateRelease, false, true},
    {"Range", kParamNoiseGateRange, false, true},
};

inline constexpr LabelledParameter kEqualizerParameters[] = {
    {"InputGain", kParamEqualizerInputGain, false, false},
    {"OutputGain", kParamEqualizerOutputGain, false, false},
};

// The rows of an equalizer band. Enabled alone reads as true when its value is absent.
inline constexpr LabelledParameter kBandParameters[] = {
    {"Freq", kParamEqualizerBandFrequency, false, true},
    {"Gain", kParamEqualizerBandGain, false, true},
    {"Q", kParamEqualizerBandQ, false, true},
    {Element::kEnabled, kParamEqualizerBandEnabled, true, true},
};

} // namespace CvSchema
} // namespace Halvorn
