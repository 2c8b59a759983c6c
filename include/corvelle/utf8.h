// UTF-8 <-> UTF-16 for callers: the interfaces take and give zero-terminated UTF-16 text, while
// paths and text in a program on Linux are UTF-8.
//
// Header-only, so a caller needs nothing beyond the module. Pass toUtf16(path).c_str() where an
// operation wants a path, and toUtf8(...) on any text the model gives. An ill-formed sequence
// becomes U+FFFD, one per byte or lone surrogate, so no input is ever refused; null gives "".
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Halvorn {
namespace Utf8Detail {

constexpr char32_t kReplacement = 0xFFFD;

inline void appendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += char(cp);
    } else if (cp < 0x800) {
        out += char(0xC0 | (cp >> 6));
        out += char(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += char(0xE0 | (cp >> 12));
        out += char(0x80 | ((cp >> 6) & 0x3F));
        out += char(0x80 | (cp & 0x3F));
    } else {
        out += char(0xF0 | (cp >> 18));
        out += char(0x80 | ((cp >> 12) & 0x3F));
        out += char(0x80 | ((cp >> 6) & 0x3F));
        out += char(0x80 | (cp & 0x3F));
    }
}

inline void appendUtf16(std::u16string& out, char32_t cp) {
    if (cp < 0x10000) {
        out += char16_t(cp);
    } else {
        cp -= 0x10000;
        out += char16_t(0xD800 + (cp >> 10));
        out += char16_t(0xDC00 + (cp & 0x3FF));
    }
}

// Decodes one code point at text[i]; an ill-formed sequence consumes one byte. Overlong forms
// and encoded surrogates are ill-formed too, so every path has exactly one spelling.
inline char32_t decodeUtf8(std::string_view text, std::size_t& i) {
    const auto lead = static_cast<unsigned char>(text[i++]);
    if (lead < 0x80)
        return lead;
    const int extra = lead >= 0xF8   ? -1
                      : lead >= 0xF0 ? 3
                      : lead >= 0xE0 ? 2
                      : lead >= 0xC0 ? 1
                                     : -1;
    if (extra < 0 || i + extra > text.size())
        return kReplacement;
    char32_t cp = lead & (0x3F >> extra);
    for (int k = 0; k < extra; ++k) {
        const auto next = static_cast<unsigned char>(text[i + k]);
        if ((next & 0xC0) != 0x80)
            return kReplacement;
        cp = (cp << 6) | (next & 0x3F);
    }
    constexpr char32_t kMinimum[] = {0, 0x80, 0x800, 0x10000};
    if (cp < kMinimum[extra] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF))
        return kReplacement;
    i += extra;
    return cp;
}

inline bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
inline bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

} // namespace Utf8Detail

inline std::u16string toUtf16(std::string_view text) {
    std::u16string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();)
        Utf8Detail::appendUtf16(out, Utf8Detail::decodeUtf8(text, i));
    return out;
}

inline std::string toUtf8(std::u16string_view text) {
    using namespace Utf8Detail;
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t cp = text[i];
        if (isHighSurrogate(cp) && i + 1 < text.size() && isLowSurrogate(text[i + 1]))
            cp = 0x10000 + ((cp - 0xD800) << 10) + (text[++i] - 0xDC00);
        else if (isHighSurrogate(cp) || isLowSurrogate(cp))
            cp = kReplacement;
        appendUtf8(out, cp);
    }
    return out;
}

inline std::string toUtf8(const char16_t* text) {
    return text ? toUtf8(std::u16string_view(text)) : std::string();
}

} // namespace Halvorn
