// An outline of a project model as text, one object a line, read through the IMedia faces only.
#pragma once

#include "corvelle/mediaproject.h"

#include <string>

namespace Halvorn {
namespace DocumentTest {

// Tracks with their channels, clips, events and automation, indented by nesting; then the
// ids of the project's channel list, and in full those of its channels that no track holds.
// Numbers are printed with 15 significant digits; a colour only when it is set.
std::string outline(IMediaProject* project);

} // namespace DocumentTest
} // namespace Halvorn
