// Helpers of the writer tests: UTF-16 text and expat checks.
#include "writertestsupport.h"

#include <expat.h>

namespace WriterTest {

std::u16string utf16(const std::string& utf8) {
    std::u16string out;
    for (size_t i = 0; i < utf8.size();) {
        const unsigned char lead = static_cast<unsigned char>(utf8[i]);
        char32_t c = lead;
        int extra = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
        if (extra)
            c = lead & (0x3F >> extra);
        for (int k = 1; k <= extra && i + k < utf8.size(); ++k)
            c = (c << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
        i += 1 + extra;
        if (c >= 0x10000) {
            c -= 0x10000;
            out += static_cast<char16_t>(0xD800 + (c >> 10));
            out += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
        } else {
            out += static_cast<char16_t>(c);
        }
    }
    return out;
}

bool isWellFormed(const std::string& document, std::string* message) {
    XML_Parser parser = XML_ParserCreate("UTF-8");
    const bool ok =
        XML_Parse(parser, document.data(), static_cast<int>(document.size()), 1) == XML_STATUS_OK;
    if (!ok && message)
        *message = std::string(XML_ErrorString(XML_GetErrorCode(parser))) + " at line " +
                   std::to_string(XML_GetCurrentLineNumber(parser));
    XML_ParserFree(parser);
    return ok;
}

} // namespace WriterTest
