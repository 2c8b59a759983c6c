// The enumeration texts of the project document.
#include "documents/cvtables.h"

#include <cstddef>

#include "corvelle/mediadevice.h"
#include "corvelle/mediaparameter.h"
#include "corvelle/mediatrack.h"

namespace Halvorn {

namespace {

struct Entry {
    uint32 value;
    const char8* text;
};

const Entry kContentTypes[] = {
    {kContentUnknown, "unknown"}, {kContentTracks, "tracks"},          {kContentAudio, "audio"},
    {kContentNotes, "notes"},     {kContentAutomation, "automation"},  {kContentVideo, "video"},
    {kContentMarkers, "markers"}, {kContentAudioNotes, "audio notes"},
};

const Entry kChannelRoles[] = {
    {kChannelRoleRegular, "regular"}, {kChannelRoleMaster, "master"},
    {kChannelRoleEffect, "effect"},   {kChannelRoleSubmix, "submix"},
    {kChannelRoleVca, "vca"},
};

const Entry kSendTypes[] = {{kSendPre, "pre"}, {kSendPost, "post"}};

const Entry kUnits[] = {
    {kUnitLinear, "linear"},   {kUnitNormalized, "normalized"}, {kUnitPercent, "percent"},
    {kUnitDecibel, "decibel"}, {kUnitHertz, "hertz"},           {kUnitSemitones, "semitones"},
    {kUnitSeconds, "seconds"}, {kUnitBeats, "beats"},           {kUnitBpm, "bpm"},
};

const Entry kDeviceTypes[] = {
    {kDeviceQuor2, "Quor2Plugin"},     {kDeviceQuor3, "Quor3Plugin"},
    {kDeviceAu, "AuPlugin"},           {kDeviceClap, "ClapPlugin"},
    {kDeviceBuiltin, "BuiltinDevice"}, {kDeviceBuiltinInstrument, "BuiltinInstrument"},
    {kDeviceCompressor, "Compressor"}, {kDeviceLimiter, "Limiter"},
    {kDeviceNoiseGate, "NoiseGate"},   {kDeviceEqualizer, "Equalizer"},
};

const Entry kDeviceRoles[] = {
    {kRoleInstrument, "instrument"},
    {kRoleNoteFX, "noteFX"},
    {kRoleAudioFX, "audioFX"},
    {kRoleAnalyzer, "analyzer"},
};

const Entry kBandTypes[] = {
    {kBandUnknown, "unknown"},   {kBandHighPass, "highPass"},   {kBandLowPass, "lowPass"},
    {kBandBandPass, "bandPass"}, {kBandHighShelf, "highShelf"}, {kBandLowShelf, "lowShelf"},
    {kBandBell, "bell"},         {kBandNotch, "notch"},
};

const Entry kInterpolations[] = {
    {kInterpolationHold, "hold"},
    {kInterpolationLinear, "linear"},
};

template <size_t N> uint32 valueOf(const Entry (&table)[N], const String& text, uint32 fallback) {
    for (const Entry& entry : table)
        if (text == String(entry.text))
            return entry.value;
    return fallback;
}

template <size_t N>
const char8* textOf(const Entry (&table)[N], uint32 value, const char8* fallback) {
    for (const Entry& entry : table)
        if (entry.value == value)
            return entry.text;
    return fallback;
}

} // namespace

uint32 contentTypeFromString(const String& text) {
    return valueOf(kContentTypes, text, kContentUnknown);
}
const char8* contentTypeToString(uint32 contentType) {
    return textOf(kContentTypes, contentType, "unknown");
}

uint32 channelRoleFromString(const String& text) {
    return valueOf(kChannelRoles, text, kChannelRoleUnknown);
}
const char8* channelRoleToString(uint32 role) { return textOf(kChannelRoles, role, ""); }

uint32 sendTypeFromString(const String& text) { return valueOf(kSendTypes, text, kSendPre); }
const char8* sendTypeToString(uint32 type) { return textOf(kSendTypes, type, "pre"); }

uint32 unitFromString(const String& text) { return valueOf(kUnits, text, kUnitUnknown); }
const char8* unitToString(uint32 unit) { return textOf(kUnits, unit, ""); }

uint32 deviceTypeFromString(const String& text) {
    return valueOf(kDeviceTypes, text, kDeviceUnknown);
}

uint32 deviceRoleFromString(const String& text) {
    return valueOf(kDeviceRoles, text, kRoleUnknown);
}
const char8* deviceRoleToString(uint32 role) { return textOf(kDeviceRoles, role, ""); }

uint32 bandTypeFromString(const String& text) { return valueOf(kBandTypes, text, kBandUnknown); }
const char8* bandTypeToString(uint32 bandType) { return textOf(kBandTypes, bandType, "unknown"); }

uint32 interpolationFromString(const String& text) {
    return valueOf(kInterpolations, text, kInterpolationHold);
}
const char8* interpolationToString(uint32 interpolation) {
    return textOf(kInterpolations, interpolation, "hold");
}

} // namespace Halvorn
