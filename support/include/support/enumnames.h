// The names of the published model's enumerations, for programs that print or compare a
// model: "audio", "master", "Equalizer", ...; a value out of a table gives "unknown".
#pragma once

#include "corvelle/base.h"

namespace CorvelleSupport {

const char* contentTypeName(Halvorn::uint32 type);
const char* channelRoleName(Halvorn::uint32 role);
const char* deviceTypeName(Halvorn::uint32 type);
const char* deviceRoleName(Halvorn::uint32 role);
const char* unitName(Halvorn::uint32 unit);
const char* eventTypeName(Halvorn::uint32 type);
const char* bandTypeName(Halvorn::uint32 type);
// "linear" for linear, "hold" for everything else.
const char* interpolationName(Halvorn::uint32 interpolation);

} // namespace CorvelleSupport
