// The session of a workstation as an indented tree, for "corvelle-host show".
#pragma once

#include "workstation.h"

#include <ostream>

namespace Halvorn {
namespace RefHost {

void printTree(Workstation& station, std::ostream& out);

} // namespace RefHost
} // namespace Halvorn
