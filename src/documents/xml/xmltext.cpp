// Text for XML: conversion to UTF-8 with every character that XML 1.0 refuses replaced.
#include "documents/xml/xmltext.h"

#include "foundation/fstring.h"

#include <cstring>

namespace Halvorn {
namespace Xml {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isXmlChar(char32_t c) {
    if (c < 0x20)
        return c == 0x09 || c == 0x0A || c == 0x0D;
    if (c >= 0xD800 && c <= 0xDFFF)
        return false;
    return c != 0xFFFE && c != 0xFFFF && c <= 0x10FFFF;
}

void appendUtf8(std::string& out, char32_t c) {
    if (!isXmlChar(c))
        c = kReplacement;
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

} // namespace

std::string toXmlUtf8(const char16* text) {
    std::string out;
    if (!text)
        return out;
    for (size_t i = 0; text[i]; ++i) {
        char32_t c = text[i];
        if (c >= 0xD800 && c <= 0xDBFF && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            c = 0x10000 + ((c - 0xD800) << 10) + (text[i + 1] - 0xDC00);
            ++i;
        }
        appendUtf8(out, c); // a lone surrogate is no XML character and becomes U+FFFD
    }
    return out;
}

std::string toXmlUtf8(const char8* text) {
    std::string out;
    if (!text)
        return out;
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    const auto length = static_cast<uint32>(std::strlen(text));
    for (uint32 i = 0; i < length;)
        appendUtf8(out, decodeUtf8(bytes, length, i));
    return out;
}

} // namespace Xml
} // namespace Halvorn
