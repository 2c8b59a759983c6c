// Buffers, identifiers and colours as text.
#include "text.h"

#include <algorithm>
#include <cstdio>

namespace Halvorn {
namespace RefHost {

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
