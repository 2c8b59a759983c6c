// PackageError: making one from an error number, and the per-thread record of the last one.
#include "package/packageerror.h"

#include <cctype>
#include <cstring>
#include <string>

namespace Halvorn {
namespace {

// Long enough for a path at PATH_MAX with its lead; a longer message is cut.
constexpr int32 kMessageUnits = 4400;

thread_local PackageErrorCode lastCode = kPackageNoError;
thread_local char16 lastMessage[kMessageUnits];

} // namespace

PackageError packageError(PackageErrorCode code, const String& message) {
    PackageError error;
    error.code = code;
    error.message = message;
    return error;
}

PackageError packageError(PackageErrorCode code, const String& lead, int errorNumber) {
    char buffer[256];
    // The GNU form gives the text, which may or may not lie in the buffer.
    std::string text = strerror_r(errorNumber, buffer, sizeof buffer);
    if (!text.empty())
        text[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(text[0])));
    String message(lead);
    message.append(": ");
    message.append(text.c_str());
    return packageError(code, message);
}

void setLastPackageError(const PackageError& error) {
    lastCode = error.code;
    const char16* text = error.code == kPackageNoError ? u"" : error.message.text16();
    int32 length = 0;
    while (text[length] && length < kMessageUnits - 1) {
        lastMessage[length] = text[length];
        ++length;
    }
    lastMessage[length] = 0;
}

PackageErrorCode lastPackageErrorCode() { return lastCode; }

const char16* lastPackageErrorMessage() { return lastMessage; }

} // namespace Halvorn
