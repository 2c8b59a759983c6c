// UTF-8 <-> UTF-16 for the programs around the library (tool, reference host, tests, benches):
// the published helper, under the name these programs have always used.
#pragma once

#include "corvelle/utf8.h"

namespace CorvelleSupport {

using Halvorn::toUtf16;
using Halvorn::toUtf8;

} // namespace CorvelleSupport
