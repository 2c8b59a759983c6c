// An outline of a project model as text, one object a line, read through the IMedia faces only.
#pragma once

#include "corvelle/mediaproject.h"

#include <string>

namespace Halvorn {
namespace DocumentTest {

// Every node of the model walk with all its fields, indented by nesting; a track's channel
// stands under its track, and the project's list names it by id only. Numbers are printed with
// 15 significant digits, texts quoted, enumerations by number; a media file outside the
// package is marked "external".
std::string outline(IMediaProject* project);

} // namespace DocumentTest
} // namespace Halvorn
