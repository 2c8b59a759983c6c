// UTF conversion, buffers, identifiers and colours as text.
#include "text.h"

#include <algorithm>
#include <cstdio>

namespace Halvorn {
namespace RefHost {

std::u16string toUtf16(const std::string& text) {
    std::u16string out;
    for (size_t i = 0; i < text.size();) {
        auto byte = static_cast<unsigned char>(text[i]);
        int extra = byte < 0x80 ? 0 : byte >= 0xF0 ? 3 : byte >= 0xE0 ? 2 : byte >= 0xC0 ? 1 : -1;
        char32_t code = extra == 0   ? byte
                        : extra == 1 ? byte & 0x1F
                        : extra == 2 ? byte & 0x0F
                                     : byte & 0x07;
        bool valid = extra >= 0 && i + size_t(extra) < text.size();
        for (int k = 1; valid && k <= extra; ++k) {
            auto next = static_cast<unsigned char>(text[i + size_t(k)]);
            valid = (next & 0xC0) == 0x80;
            code = (code << 6) | (next & 0x3F);
        }
        static const char32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
        if (!valid || byte > 0xF4 || code < kLeast[extra] || code > 0x10FFFF ||
            (code >= 0xD800 && code < 0xE000)) {
            out += char16(0xFFFD);
            ++i;
            continue;
        }
        i += size_t(extra) + 1;
        if (code >= 0x10000) {
            code -= 0x10000;
            out += char16(0xD800 + (code >> 10));
            out += char16(0xDC00 + (code & 0x3FF));
        } else {
            out += char16(code);
        }
    }
    return out;
}

std::string toUtf8(const std::u16string& text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        char32_t code = text[i];
        if (code >= 0xD800 && code < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
            text[i + 1] < 0xE000) {
            code = 0x10000 + ((code - 0xD800) << 10) + (text[i + 1] - 0xDC00);
            ++i;
        } else if (code >= 0xD800 && code < 0xE000) {
            code = 0xFFFD;
        }
        if (code < 0x80) {
            out += char(code);
        } else if (code < 0x800) {
            out += char(0xC0 | (code >> 6));
            out += char(0x80 | (code & 0x3F));
        } else if (code < 0x10000) {
            out += char(0xE0 | (code >> 12));
            out += char(0x80 | ((code >> 6) & 0x3F));
            out += char(0x80 | (code & 0x3F));
        } else {
            out += char(0xF0 | (code >> 18));
            out += char(0x80 | ((code >> 12) & 0x3F));
            out += char(0x80 | ((code >> 6) & 0x3F));
            out += char(0x80 | (code & 0x3F));
        }
    }
    return out;
}

std::u16string fromBuffer(const char16* text) { return text ? std::u16string(text) : u""; }

void toBuffer(const std::u16string& text, char16* buffer, int32 size) {
    if (!buffer || size <= 0)
        return;
    size_t count = std::min(text.size(), size_t(size - 1));
    text.copy(buffer, count);
    buffer[count] = 0;
}

std::string fuidText(const FUID& id) {
    const uint8* b = id.bytes;
    char text[40];
    std::snprintf(text, sizeof text,
                  "%02X%02X%02X%02X-%02X%02X-%02X%02X-%02X%02X-%02X%02X%02X%02X%02X%02X", b[3],
                  b[2], b[1], b[0], b[5], b[4], b[7], b[6], b[8], b[9], b[10], b[11], b[12], b[13],
                  b[14], b[15]);
    return text;
}

bool parseFuid(const std::string& text, FUID& id) {
    if (text.size() != 36)
        return false;
    uint32 g1 = 0, g2 = 0, g3 = 0, g4 = 0;
    unsigned long long g5 = 0;
    int used = 0;
    if (std::sscanf(text.c_str(), "%8x-%4x-%4x-%4x-%12llx%n", &g1, &g2, &g3, &g4, &g5, &used) !=
            5 ||
        used != 36)
        return false;
    id = FUID::make(g1, uint16(g2), uint16(g3), uint16(g4), g5);
    return true;
}

std::string colorText(uint32 argb) {
    char text[12];
    std::snprintf(text, sizeof text, "#%08X", argb);
    return text;
}

bool parseColor(const std::string& text, uint32& argb) {
    if (text.size() != 9 || text[0] != '#')
        return false;
    unsigned value = 0;
    int used = 0;
    if (std::sscanf(text.c_str() + 1, "%8x%n", &value, &used) != 1 || used != 8)
        return false;
    argb = value;
    return true;
}

std::string resultText(tresult result) {
    switch (result) {
    case kResultOk:
        return "kResultOk";
    case kResultFalse:
        return "kResultFalse";
    case kInvalidArgument:
        return "kInvalidArgument";
    case kNotImplemented:
        return "kNotImplemented";
    case kNoInterface:
        return "kNoInterface";
    case kOutOfMemory:
        return "kOutOfMemory";
    case kInternalError:
        return "kInternalError";
    default:
        return std::to_string(result);
    }
}

} // namespace RefHost
} // namespace Halvorn
