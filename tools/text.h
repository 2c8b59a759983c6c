// Text at the library's edge: its UTF-16 out to UTF-8 for printing, and paths in as UTF-16.
#pragma once

#include "corvelle/base.h"

#include <string>

namespace CorvelleTool {

// An ill-formed sequence becomes U+FFFD; null gives an empty text.
std::string toUtf8(const Halvorn::char16* text);
std::u16string toUtf16(const std::string& text);

} // namespace CorvelleTool
