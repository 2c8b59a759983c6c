// FUID operations beyond comparing: printing, parsing the registry form, making new ones.
#pragma once

#include "corvelle/base.h"
#include "foundation/fstring.h"

namespace Halvorn {

enum class FuidForm {
    kPlain,    // 32 hexadecimal digits, no separators: "C99757FF07E64C38AFC8FFDA50EC2041"
    kRegistry, // with braces and dashes: "{C99757FF-07E6-4C38-AFC8-FFDA50EC2041}"
};

// Upper-case hexadecimal text of the id in the given form; empty only when memory runs out.
String printFuid(const FUID& id, FuidForm form = FuidForm::kPlain);

// Reads "8-4-4-4-12" hexadecimal groups, with or without surrounding braces, in either case.
// Anything else (null, other lengths, stray characters, one brace alone) gives false and
// leaves id as it was.
[[nodiscard]] bool parseFuid(const char8* text, FUID& id);

// A new random version-4 id. All zero (not valid) when the system gives no randomness.
FUID generateFuid();

} // namespace Halvorn
