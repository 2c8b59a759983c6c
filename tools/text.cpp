// UTF-16 <-> UTF-8 for the tool, which sees none of the library's string classes.
#include "text.h"

namespace CorvelleTool {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void appendUtf8(std::string& out, char32_t cp) {
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

void appendUtf16(std::u16string& out, char32_t cp) {
    if (cp < 0x10000) {
        out += char16_t(cp);
    } else {
        cp -= 0x10000;
        out += char16_t(0xD800 + (cp >> 10));
        out += char16_t(0xDC00 + (cp & 0x3FF));
    }
}

// Decodes one code point of UTF-8 at text[i]; an ill-formed sequence consumes one byte.
char32_t decodeUtf8(const std::string& text, size_t& i) {
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
    static const char32_t kMinimum[] = {0, 0x80, 0x800, 0x10000};
    if (cp < kMinimum[extra] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF))
        return kReplacement;
    i += extra;
    return cp;
}

} // namespace

std::string toUtf8(const Halvorn::char16* text) {
    std::string out;
    if (!text)
        return out;
    for (size_t i = 0; text[i]; ++i) {
        char32_t cp = text[i];
        if (cp >= 0xD800 && cp <= 0xDBFF && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF)
            cp = 0x10000 + ((cp - 0xD800) << 10) + (text[++i] - 0xDC00);
        else if (cp >= 0xD800 && cp <= 0xDFFF)
            cp = kReplacement;
        appendUtf8(out, cp);
    }
    return out;
}

std::u16string toUtf16(const std::string& text) {
    std::u16string out;
    for (size_t i = 0; i < text.size();)
        appendUtf16(out, decodeUtf8(text, i));
    return out;
}

} // namespace CorvelleTool
