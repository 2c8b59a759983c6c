// FUID operations: the two printed forms, parsing the registry form, random version-4 ids.
#include "foundation/fuid.h"

#include <sys/random.h>

#include <cerrno>
#include <cstring>

namespace Halvorn {
namespace {

// Printed order of the 16 bytes: the first three groups are stored little-endian.
constexpr int kPrintOrder[16] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};

int hexValue(char8 c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

} // namespace

String printFuid(const FUID& id, FuidForm form) {
    static const char8 kDigits[] = "0123456789ABCDEF";
    char8 text[39];
    int n = 0;
    if (form == FuidForm::kRegistry)
        text[n++] = '{';
    for (int i = 0; i < 16; ++i) {
        // Dashes stand after the 4th, 6th, 8th and 10th printed byte.
        if (form == FuidForm::kRegistry && (i == 4 || i == 6 || i == 8 || i == 10))
            text[n++] = '-';
        uint8 b = id.bytes[kPrintOrder[i]];
        text[n++] = kDigits[b >> 4];
        text[n++] = kDigits[b & 0xF];
    }
    if (form == FuidForm::kRegistry)
        text[n++] = '}';
    text[n] = 0;
    return String(text);
}

bool parseFuid(const char8* text, FUID& id) {
    if (!text)
        return false;
    size_t length = std::strlen(text);
    bool braced = length == 38 && text[0] == '{' && text[37] == '}';
    if (braced) {
        ++text;
        length -= 2;
    }
    if (length != 36)
        return false;
    FUID parsed{};
    int digit = 0;
    for (size_t i = 0; i < 36; ++i) {
        bool dashPlace = i == 8 || i == 13 || i == 18 || i == 23;
        if (dashPlace) {
            if (text[i] != '-')
                return false;
            continue;
        }
        int value = hexValue(text[i]);
        if (value < 0)
            return false;
        uint8& b = parsed.bytes[kPrintOrder[digit / 2]];
        b = uint8(digit % 2 == 0 ? value << 4 : b | value);
        ++digit;
    }
    id = parsed;
    return true;
}

FUID generateFuid() {
    FUID id{};
    size_t filled = 0;
    while (filled < sizeof(id.bytes)) {
        ssize_t n = getrandom(id.bytes + filled, sizeof(id.bytes) - filled, 0);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return FUID{};
        }
        filled += size_t(n);
    }
    // Version 4 in the high nibble of the third group, variant 10 in the fourth.
    id.bytes[7] = uint8((id.bytes[7] & 0x0F) | 0x40);
    id.bytes[8] = uint8((id.bytes[8] & 0x3F) | 0x80);
    return id;
}

} // namespace Halvorn
