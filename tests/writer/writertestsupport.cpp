// Helpers of the writer tests: expat checks.
#include "writertestsupport.h"

#include <expat.h>

namespace WriterTest {

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
