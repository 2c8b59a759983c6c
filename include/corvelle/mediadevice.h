// IMediaDevice and its kinds: the inserts on a channel, plug-ins and built-in devices.
//
// A plug-in keeps its state in a file (getStatePath); a built-in device keeps its settings in
// parameters with the logical names of corvelle/mediaparameter.h, so that any application can
// read them. Every device also answers for IMediaParameterContainer and IMediaObject. An
// equalizer answers for IMediaEqualizer, a built-in instrument for IMediaBuiltinInstrument.
#pragma once

#include "corvelle/mediaobject.h"
#include "corvelle/mediaparameter.h"

namespace Halvorn {

enum CvDeviceType : uint32 {
    kDeviceUnknown = 0,
    kDeviceQuor2 = 1,
    kDeviceQuor3 = 2,
    kDeviceAu = 3,
    kDeviceClap = 4,
    kDeviceBuiltin = 5,
    kDeviceBuiltinInstrument = 6,
    kDeviceCompressor = 7,
    kDeviceLimiter = 8,
    kDeviceNoiseGate = 9,
    kDeviceEqualizer = 10,
};

enum CvDeviceRole : uint32 {
    kRoleUnknown = 0,
    kRoleInstrument = 1,
    kRoleNoteFX = 2,
    kRoleAudioFX = 3,
    kRoleAnalyzer = 4,
};

enum CvEqualizerBandType : uint32 {
    kBandUnknown = 0,
    kBandHighPass = 1,
    kBandLowPass = 2,
    kBandBandPass = 3,
    kBandHighShelf = 4,
    kBandLowShelf = 5,
    kBandBell = 6,
    kBandNotch = 7,
};

struct IMediaDevice : FUnknown {
    virtual uint32 getDeviceType() = 0; // a CvDeviceType
    virtual uint32 getDeviceRole() = 0; // a CvDeviceRole
    // Borrowed, UTF-8: the plug-in's class identifier as text; empty for most built-ins.
    virtual const char8* getDeviceId() = 0;
    // Borrowed: the state file's path; empty for a device without state.
    virtual const char16* getStatePath() = 0;
    virtual bool isEnabled() = 0;
    // Borrowed, valid while the project lives: this device's own parameters.
    virtual IMediaParameterContainer* getParameters() = 0;

    static constexpr FUID iid = FUID::make(0x3EEDDDC1, 0xF4B5, 0x4E3D, 0xAB6A, 0xE93873D79F6F);
};

struct IMediaEqualizerBand : FUnknown {
    virtual uint32 getBandType() = 0; // a CvEqualizerBandType
    virtual uint32 getOrder() = 0;
    // Borrowed, valid while the project lives: frequency, gain, Q and enabled.
    virtual IMediaParameterContainer* getParameters() = 0;

    static constexpr FUID iid = FUID::make(0x1FAC4294, 0x5704, 0x4C32, 0xA783, 0xAB0F97A45E86);
};

struct IMediaEqualizer : FUnknown {
    virtual uint32 getBandCount() = 0;
    // Borrowed, valid while the project lives; null at or beyond the count.
    virtual IMediaEqualizerBand* getBand(uint32 index) = 0;
    // Borrowed; the "MPParamEqualizerInputGain" parameter, null when absent.
    virtual IMediaParameter* getInputGain() = 0;
    // Borrowed; the "MPParamEqualizerOutputGain" parameter, null when absent.
    virtual IMediaParameter* getOutputGain() = 0;

    static constexpr FUID iid = FUID::make(0xD14744C0, 0x9AD2, 0x4D64, 0xA49A, 0x39AE770EA2B7);
};

struct IMediaBuiltinInstrument : FUnknown {
    // Borrowed, valid while the object lives; empty when no preset is named.
    virtual const char16* getPresetName() = 0;

    static constexpr FUID iid = FUID::make(0x2CF2B774, 0xDDE5, 0x4D54, 0x9232, 0x091948FB5864);
};

} // namespace Halvorn
