// The host's mixer: parameter owners (channels, panners, sends, slots, plug-ins), parameters,
// the fader law, channel strip modules, buses, routing and the project tools.
//
// Declarations only, shared by export, import and our reference host. Where the host's table
// holds operations between these, only the ones used are declared, in their order.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {
namespace Quor {

// A parameter of a host object. Tags of a plug-in's parameters are the plug-in's own parameter
// id plus kPluginTagOffset. No identifier.
struct IHostParameter : FUnknown {
    enum { kPluginTagOffset = 4201 };
    virtual int32 getMinimum() = 0;
    virtual int32 getMaximum() = 0;
    virtual int32 getIntValue() = 0;
    virtual int32 getTag() = 0;
    // *size holds the buffer's size in units on entry, and a value above 0 on return when there
    // is text.
    virtual tresult getValueText(char16* buffer, int32* size) = 0;
    virtual tresult setValueText(const char16* text, bool notify) = 0;
    virtual tresult setIntValue(int32 value, bool notify) = 0;
    virtual float getValue() = 0;
    virtual tresult setValue(float value, bool notify) = 0;
    virtual float getNormalized() = 0;
    virtual tresult setNormalized(float value, bool notify) = 0;
    // No identifier: this face is never asked for through queryInterface, and naming
    // I::iid for it doesn't compile.
    struct iid;
};

// The common face of a mixer channel, a panner, a send, a group of slots, a slot and a plug-in:
// parameters and named children. No identifier.
struct IHostParameterOwner : FUnknown {
    // Borrowed, valid while the object lives: the name among its parent's children.
    virtual const char8* getName() = 0;
    // Borrowed, valid until the title changes: the name shown to the user.
    virtual const char16* getTitle() = 0;
    virtual int32 getParameterCount() = 0;
    virtual uint32 getParameterTag(int32 index) = 0;
    // Borrowed, valid while the object lives; null for an unknown tag.
    virtual const char16* getParameterTitle(uint32 tag) = 0;
    // One reference, the caller releases; null when there is none.
    virtual IHostParameter* findParameter(const char8* id) = 0;
    // One reference, the caller releases; null when there is none.
    virtual IHostParameter* getParameterByTag(uint32 tag) = 0;
    virtual int32 getChildCount() = 0;
    // Borrowed, valid while the object holds it; null outside the range.
    virtual IHostParameterOwner* getChild(int32 index) = 0;
    // No identifier: this face is never asked for through queryInterface, and naming
    // I::iid for it doesn't compile.
    struct iid;
};

// On a volume parameter: its level in decibels.
struct IHostGainScale : FUnknown {
    virtual float valueToDecibel(float value) = 0;
    virtual float decibelToValue(float decibel) = 0;

    static constexpr FUID iid = FUID::make(0x2F0E2EE3, 0x01CB, 0x4B5E, 0x9548, 0xEDEAC4200FE0);
};

// On "QUOR Mixer".
struct IHostMixerSettings : FUnknown {
    // The linear gain of the fader's top end.
    virtual tresult getMaximumGain(double* gain) = 0;

    static constexpr FUID iid = FUID::make(0x4DDDCB1A, 0x6737, 0x4DA2, 0xB93E, 0xAB59C2787AF8);
};

// The fader law for automation values between 0 and 1.
struct IHostVolumeCurve : FUnknown {
    virtual double gainToValue(double gain, int32 curve, bool flag) = 0;
    virtual double valueToGain(double value, int32 curve) = 0;

    static constexpr FUID iid = FUID::make(0x237CD8A3, 0xD422, 0x43E4, 0x8418, 0x7A034660FF4E);
};

// On tracks and automation lanes.
struct IHostTrackChannel : FUnknown {
    // Borrowed, valid while the track or lane lives. On a track its mixer channel, on a lane
    // the owner of the lane's parameter; null when there is none.
    virtual IHostParameterOwner* getMixerChannel() = 0;

    static constexpr FUID iid = FUID::make(0x7849F17E, 0x1212, 0x49B2, 0x82F6, 0x2425BACC5E5A);
};

// On a mixer channel: its channel strip modules by name.
struct IHostChannelModules : FUnknown {
    // Borrowed, valid while the channel lives; null for a module the channel lacks.
    virtual IHostParameterOwner* findModule(const char8* name) = 0;

    static constexpr FUID iid = FUID::make(0x8306CC9B, 0xE9A0, 0x4A0D, 0xAA52, 0x4621A703FEBF);
};

// Speakers of a bus; new at each getInterface.
struct IHostSpeakerList : FUnknown {
    virtual int32 getCount() = 0;
    // The bit of this speaker in a speaker mask.
    virtual uint64 getSpeaker(int32 index) = 0;

    static constexpr FUID iid = FUID::make(0xE934BAB8, 0xBE4E, 0x457C, 0x9C0F, 0x1910BF641ADC);
};

// On a mixer channel: its bus.
struct IHostChannelBus : FUnknown {
    // Fills list with the speakers of the channel's bus.
    virtual tresult getArrangement(IHostSpeakerList* list) = 0;

    static constexpr FUID iid = FUID::make(0xD9BA7E8F, 0xE85C, 0x4629, 0xAF19, 0x8D5FF2DCD64E);
};

// On an audio track: the width of its channel.
struct IHostTrackBus : FUnknown {
    virtual tresult setArrangement(uint32 speakerMask) = 0;

    static constexpr FUID iid = FUID::make(0x07DB8138, 0x037A, 0x4E1A, 0xA5CD, 0x5FDA8C3F32E5);
};

// On a mixer channel or a send slot: where its signal goes.
struct IHostOutputRouting : FUnknown {
    virtual bool canRouteTo(IHostParameterOwner* destination) = 0;
    virtual tresult setDestination(IHostParameterOwner* destination) = 0;

    static constexpr FUID iid = FUID::make(0x52F474D9, 0xA728, 0x4CA5, 0xA9CC, 0x0C307B17127A);
};

// An entry of a built-in instrument's preset list. No identifier.
struct IHostPresetEntry : FUnknown {
    // Borrowed, valid while the list lives.
    virtual const char16* getFileName() = 0;
    // The value to give to IHostParameter::setIntValue.
    virtual int32 getIndex() = 0;
    // No identifier: this face is never asked for through queryInterface, and naming
    // I::iid for it doesn't compile.
    struct iid;
};

// A built-in instrument's presets. No identifier.
struct IHostPresets : FUnknown {
    virtual int32 getPresetCount() = 0;
    // Borrowed, valid while the list lives; null outside the range.
    virtual IHostPresetEntry* getPreset(int32 index) = 0;
    // No identifier: this face is never asked for through queryInterface, and naming
    // I::iid for it doesn't compile.
    struct iid;
};

// On the preset parameter of a built-in instrument.
struct IHostPresetList : FUnknown {
    // Borrowed, valid while the parameter lives; may be null.
    virtual IHostPresets* getPresets() = 0;
    virtual tresult refresh() = 0;

    static constexpr FUID iid = FUID::make(0x26288B25, 0x9C39, 0x43DA, 0x9C4C, 0xA12DB682160E);
};

// Helpers over host objects.
struct IHostProjectTools : FUnknown {
    virtual tresult setBusArrangement(IHostChannelBus* bus, uint32 speakerMask) = 0;
    // The playback ratio of an audio event.
    virtual tresult getEventStretch(FUnknown* event, double* ratio) = 0;
    virtual tresult setEventStretch(FUnknown* event, double ratio) = 0;
    // Whether the track is active in the project.
    virtual bool isTrackLoaded(FUnknown* track) = 0;
    virtual tresult setTrackLoaded(FUnknown* track, bool loaded) = 0;
    // The class of the plug-in in the slot that this parameter stands for.
    virtual tresult getPluginClass(IHostParameter* slotParameter, FUID& classId) = 0;
    // Loads this class into the slot; fails if the class isn't installed.
    virtual tresult setPluginClass(IHostParameter* slotParameter, const FUID& classId) = 0;
    // The event's audio is time-warped, whatever its ratio.
    virtual bool isEventWarped(FUnknown* event) = 0;

    static constexpr FUID iid = FUID::make(0xF60C1ECE, 0x52B5, 0x4461, 0x85DB, 0x1206491EFE72);
};

} // namespace Quor
} // namespace Halvorn
