// IMediaParameter and IMediaParameterContainer: named values with unit and bounds.
//
// Channels, sends, devices and equalizer bands hold their settings as parameters and answer
// for IMediaParameterContainer. A parameter's IMediaObject name is its logical name: one of
// the "MPParam" names below for fixed parameters, the display title for a plug-in's own.
// IMediaParameter is the one writable face of a model; its setters apply no checks.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {

// The unit of a parameter's value and bounds.
enum CvParameterUnit : uint32 {
    kUnitUnknown = 0,
    kUnitLinear = 1,
    kUnitNormalized = 2,
    kUnitPercent = 3,
    kUnitDecibel = 4,
    kUnitHertz = 5,
    kUnitSemitones = 6,
    kUnitSeconds = 7,
    kUnitBeats = 8,
    kUnitBpm = 9,
};

// How a value moves from one point (automation, tempo event) to the next.
enum CvInterpolation : uint32 {
    kInterpolationHold = 0,
    kInterpolationLinear = 1,
};

// Logical parameter names. Channels and sends.
constexpr const char8* kParamVolume = "MPParamVolume";
constexpr const char8* kParamPan = "MPParamPan";
constexpr const char8* kParamMute = "MPParamMute";
constexpr const char8* kParamSolo = "MPParamSolo";
constexpr const char8* kParamEnable = "MPEnable";
// The built-in compressor.
constexpr const char8* kParamCompressorThreshold = "MPParamCompressorThreshold";
constexpr const char8* kParamCompressorAttack = "MPParamCompressorAttack";
constexpr const char8* kParamCompressorRelease = "MPParamCompressorRelease";
constexpr const char8* kParamCompressorInputGain = "MPParamCompressorInputGain";
constexpr const char8* kParamCompressorOutputGain = "MPParamCompressorOutputGain";
constexpr const char8* kParamCompressorRatio = "MPParamCompressorRatio";
constexpr const char8* kParamCompressorAutoMakeup = "MPParamCompressorAutoMakeup";
// The built-in limiter.
constexpr const char8* kParamLimiterThreshold = "MPParamLimiterThreshold";
constexpr const char8* kParamLimiterAttack = "MPParamLimiterAttack";
constexpr const char8* kParamLimiterRelease = "MPParamLimiterRelease";
constexpr const char8* kParamLimiterInputGain = "MPParamLimiterInputGain";
constexpr const char8* kParamLimiterOutputGain = "MPParamLimiterOutputGain";
// The built-in noise gate.
constexpr const char8* kParamNoiseGateThreshold = "MPParamNoiseGateThreshold";
constexpr const char8* kParamNoiseGateRatio = "MPParamNoiseGateRatio";
constexpr const char8* kParamNoiseGateAttack = "MPParamNoiseGateAttack";
constexpr const char8* kParamNoiseGateRelease = "MPParamNoiseGateRelease";
constexpr const char8* kParamNoiseGateRange = "MPParamNoiseGateRange";
// The built-in equalizer: gains on the device, the rest on each band.
constexpr const char8* kParamEqualizerInputGain = "MPParamEqualizerInputGain";
constexpr const char8* kParamEqualizerOutputGain = "MPParamEqualizerOutputGain";
constexpr const char8* kParamEqualizerBandFrequency = "MPParamEqualizerBandFrequency";
constexpr const char8* kParamEqualizerBandGain = "MPParamEqualizerBandGain";
constexpr const char8* kParamEqualizerBandQ = "MPParamEqualizerBandQ";
constexpr const char8* kParamEqualizerBandEnabled = "MPParamEqualizerBandEnabled";

struct IMediaParameter : FUnknown {
    virtual uint32 getUnit() = 0; // a CvParameterUnit
    virtual double getValue() = 0;
    virtual double getMin() = 0;
    virtual double getMax() = 0;
    // The host's or plug-in's own number for the parameter.
    virtual uint32 getParameterId() = 0;
    // (value - min) / (max - min), not clamped; 0.0 when max equals min.
    virtual double getNormalizedValue() = 0;
    // True when the step count is 0.
    virtual bool isContinuous() = 0;
    // 0 for continuous; 2 marks a switch.
    virtual uint32 getStepCount() = 0;
    virtual void setValue(double value) = 0;
    virtual void setMin(double min) = 0;
    virtual void setMax(double max) = 0;
    virtual void setParameterId(uint32 parameterId) = 0;
    virtual void setStepCount(uint32 stepCount) = 0;

    static constexpr FUID iid = FUID::make(0x1B7F9CBB, 0x033E, 0x4A17, 0xA9C9, 0x0D26308BBFAD);
};

// Every finder gives the first match, or null; a null text finds nothing.
struct IMediaParameterContainer : FUnknown {
    virtual uint32 getParameterCount() = 0;
    // Borrowed, valid while the project lives; null at or beyond the count.
    virtual IMediaParameter* getParameter(uint32 index) = 0;
    // Borrowed; by the parameter's object id.
    virtual IMediaParameter* findParameterById(const char16* id) = 0;
    // Borrowed; by the host's or plug-in's number.
    virtual IMediaParameter* findParameterByNumber(uint32 parameterId) = 0;
    // Borrowed; by logical name, UTF-8, case-sensitive.
    virtual IMediaParameter* findParameterByName(const char8* name) = 0;
    virtual bool hasParameterNumber(uint32 parameterId) = 0;
    virtual bool hasParameterName(const char8* name) = 0;

    static constexpr FUID iid = FUID::make(0x2E96755A, 0x05F2, 0x404C, 0x86C3, 0x77398A886E0C);
};

} // namespace Halvorn
