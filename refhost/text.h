// Text helpers of the reference host: UTF-8 and UTF-16 conversion and filling callers' buffers.
#pragma once

#include "corvelle/base.h"
#include "support/utf.h"

#include <string>

namespace Halvorn {
namespace RefHost {

using CorvelleSupport::toUtf16;
using CorvelleSupport::toUtf8;
// The zero-terminated text at text, empty for null.
std::u16string fromBuffer(const char16* text);
// Copies text into buffer of size units, cut to leave room for the terminating zero.
void toBuffer(const std::u16string& text, char16* buffer, int32 size);
// An identifier in registry form, e.g. C99757FF-07E6-4C38-AFC8-FFDA50EC2041.
std::string fuidText(const FUID& id);
[[nodiscard]] bool parseFuid(const std::string& text, FUID& id);
// Colours as "#AARRGGBB".
std::string colorText(uint32 argb);

// The name of a result code ("kResultOk"), or its number.
std::string resultText(tresult result);
[[nodiscard]] bool parseColor(const std::string& text, uint32& argb);

} // namespace RefHost
} // namespace Halvorn
