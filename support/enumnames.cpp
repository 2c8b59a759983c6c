// The enumeration names, one table per enumeration in the order of its values.
#include "support/enumnames.h"

#include "corvelle/mediaparameter.h"

#include <initializer_list>

namespace CorvelleSupport {

using namespace Halvorn;

namespace {

const char* nameOf(uint32 value, std::initializer_list<const char*> names) {
    return value < names.size() ? names.begin()[value] : "unknown";
}

} // namespace

const char* contentTypeName(uint32 type) {
    return nameOf(type, {"unknown", "tracks", "audio", "notes", "tempo", "unknown", "signature",
                         "automation", "video", "markers", "audio notes"});
}
const char* channelRoleName(uint32 role) {
    return nameOf(role, {"unknown", "regular", "master", "effect", "submix", "vca"});
}
const char* deviceTypeName(uint32 type) {
    return nameOf(type, {"unknown", "Quor2Plugin", "Quor3Plugin", "AuPlugin", "ClapPlugin",
                         "BuiltinDevice", "BuiltinInstrument", "Compressor", "Limiter", "NoiseGate",
                         "Equalizer"});
}
const char* deviceRoleName(uint32 role) {
    return nameOf(role, {"unknown", "instrument", "noteFX", "audioFX", "analyzer"});
}
const char* unitName(uint32 unit) {
    return nameOf(unit, {"unknown", "linear", "normalized", "percent", "decibel", "hertz",
                         "semitones", "seconds", "beats", "bpm"});
}
const char* eventTypeName(uint32 type) {
    return nameOf(type,
                  {"unknown", "audio", "midi", "video", "marker", "tempo", "signature", "none"});
}
const char* bandTypeName(uint32 type) {
    return nameOf(type, {"unknown", "highPass", "lowPass", "bandPass", "highShelf", "lowShelf",
                         "bell", "notch"});
}
const char* interpolationName(uint32 interpolation) {
    return interpolation == kInterpolationLinear ? "linear" : "hold";
}

} // namespace CorvelleSupport
