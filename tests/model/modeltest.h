// Shared helpers of the model tests: creating objects and reading UTF-16 texts.
#pragma once

#include "corvelle/ptr.h"
#include "foundation/fstring.h"

#include <string>
#include <utility>

namespace Halvorn {

// A new object held by its creator's one reference.
template <class T, class... Args> IPtr<T> make(Args&&... args) {
    return IPtr<T>::adopt(new T(std::forward<Args>(args)...));
}

// A UTF-16 text from the model as UTF-8, for readable comparisons; null reads as "<null>".
inline std::string utf8(const char16* text) {
    if (!text)
        return "<null>";
    String copy(text);
    return copy.text8();
}

} // namespace Halvorn
