// The texts of the model's enumerations in the project document, one table for each, shared by
// the reader and the writer. Texts compare case-sensitively.
#pragma once

#include "foundation/fstring.h"

namespace Halvorn {

// CvContentType: "tracks", "audio", ...; any other text reads as 0. Writing gives "unknown" for
// 0, 4, 6 and values out of the table, since tempo and signature tracks have elements of their own.
uint32 contentTypeFromString(const String& text);
const char8* contentTypeToString(uint32 contentType);

// CvChannelRole: "regular", "master", ...; any other text reads as 0, written as empty text.
uint32 channelRoleFromString(const String& text);
const char8* channelRoleToString(uint32 role);

// CvSendType: "post" is 1, every other text 0 ("pre").
uint32 sendTypeFromString(const String& text);
const char8* sendTypeToString(uint32 type);

// CvParameterUnit: "linear", "decibel", ...; any other text reads as 0, written as empty text.
uint32 unitFromString(const String& text);
const char8* unitToString(uint32 unit);

// CvDeviceType: the format's device kinds, which are also the typed element names, so the
// writer picks its own text for each; any other text reads as kDeviceUnknown.
uint32 deviceTypeFromString(const String& text);

// CvDeviceRole: "instrument", "noteFX", ...; any other text reads as 0, written as empty text.
uint32 deviceRoleFromString(const String& text);
const char8* deviceRoleToString(uint32 role);

// CvEqualizerBandType: "highPass", "bell", ...; any other text reads as 0, written "unknown".
uint32 bandTypeFromString(const String& text);
const char8* bandTypeToString(uint32 bandType);

// CvInterpolation: "hold" and "linear"; any other text reads as hold, written as "hold".
uint32 interpolationFromString(const String& text);
const char8* interpolationToString(uint32 interpolation);

} // namespace Halvorn
