// Checks the session loader makes on hostile values: media that aren't plain files, parameter
// references that aren't numbers, nesting without end.
#pragma once

#include "corvelle/base.h"

#include <string>

namespace Halvorn {
namespace RefHost {

// Audio parts nest, as folders do, but not without end.
constexpr int kDeepestPart = 64;

// A FIFO or a device would make the host wait forever or read without end; only a regular
// file (a link to one included) serves as media.
[[nodiscard]] bool isRegularFile(const std::string& path);

// The number behind the "#" of a plug-in parameter reference: decimal digits only, no sign, no
// space, within 32 bits.
[[nodiscard]] bool parseParameterNumber(const std::string& reference, uint32& number);

} // namespace RefHost
} // namespace Halvorn
