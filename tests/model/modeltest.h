// Shared helpers of the model tests: creating objects and reading UTF-16 texts.
#pragma once

#include "foundation/fobject.h"
#include "foundation/fstring.h"

#include <string>
#include <utility>

namespace Halvorn {

// A UTF-16 text from the model as UTF-8, for readable comparisons; null reads as "<null>".
inline std::string utf8(const char16* text) {
    if (!text)
        return "<null>";
    String copy(text);
    return copy.text8();
}

} // namespace Halvorn
