// Text for XML: conversion to UTF-8 with every character that XML 1.0 refuses replaced.
#include "documents/xml/xmltext.h"

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

// Decodes one UTF-8 sequence at text[i], moving i past it; an ill-formed sequence (overlong,
// surrogate, past U+10FFFF, cut short) consumes its first byte and gives U+FFFD.
char32_t decodeUtf8(const unsigned char* text, size_t& i) {
    const unsigned char lead = text[i++];
    if (lead < 0x80)
        return lead;
    int extra;
    char32_t c;
    char32_t minimum;
    if ((lead & 0xE0) == 0xC0) {
        extra = 1, c = lead & 0x1F, minimum = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        extra = 2, c = lead & 0x0F, minimum = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        extra = 3, c = lead & 0x07, minimum = 0x10000;
    } else {
        return kReplacement;
    }
    size_t j = i;
    for (int k = 0; k < extra; ++k, ++j) {
        if ((text[j] & 0xC0) != 0x80) // the terminator ends a cut sequence here too
            return kReplacement;
        c = (c << 6) | (text[j] & 0x3F);
    }
    if (c < minimum || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))
        return kReplacement;
    i = j;
    return c;
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
    for (size_t i = 0; bytes[i];)
        appendUtf8(out, decodeUtf8(bytes, i));
    return out;
}

} // namespace Xml
} // namespace Halvorn
