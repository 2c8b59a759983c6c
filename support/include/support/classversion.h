// The version a module's factory gives in its class rows, for the programs' --version lines.
#pragma once

#include "corvelle/factory.h"

#include <string>

namespace CorvelleSupport {

// The version text of the factory's first class row in its ClassInfo2 form; empty when the
// factory has no such row.
std::string classRowVersion(Halvorn::Quor::IPluginFactory& factory);

} // namespace CorvelleSupport
