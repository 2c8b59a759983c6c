// UTF-8 <-> UTF-16 for the programs around the library (tool, reference host, tests, benches),
// which see none of the library's own string classes.
#pragma once

#include <string>
#include <string_view>

namespace CorvelleSupport {

// An ill-formed sequence becomes U+FFFD, one per byte or lone surrogate; null gives "".
std::string toUtf8(std::u16string_view text);
std::string toUtf8(const char16_t* text);
std::u16string toUtf16(std::string_view text);

} // namespace CorvelleSupport
