// Bounded copies into the fixed text fields of the records that cross to the host.
#pragma once

#include "corvelle/base.h"

#include <cstddef>
#include <cstdint>

namespace Halvorn {

// Copies text into field, one character at a time (widening 8-bit to 16-bit as it goes).
// Reads at most textSize characters, stops one short of the field's end so that the last
// element is always the terminating zero, and zero-fills the rest of the field.
template <class Char, std::size_t N>
void copyFixedText(Char (&field)[N], const char8* text, std::size_t textSize = SIZE_MAX) {
    std::size_t i = 0;
    for (; text && i < textSize && i + 1 < N && text[i] != 0; ++i)
        field[i] = static_cast<Char>(static_cast<uint8>(text[i]));
    for (; i < N; ++i)
        field[i] = 0;
}

// The same from another fixed field, which may lack its terminating zero.
template <class Char, std::size_t N, std::size_t M>
void copyFixedField(Char (&field)[N], const char8 (&text)[M]) {
    copyFixedText(field, text, M);
}

} // namespace Halvorn
