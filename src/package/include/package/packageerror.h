// PackageError: the reason a package read or write failed, passed up instead of a bare false.
#pragma once

#include "corvelle/package.h"
#include "foundation/fstring.h"

namespace Halvorn {

struct PackageError {
    PackageErrorCode code = kPackageNoError;
    // The cause with its place, as a person reads it; empty for kPackageNoError.
    String message;

    bool ok() const { return code == kPackageNoError; }
};

[[nodiscard]] PackageError packageError(PackageErrorCode code, const String& message);
// "lead: " and the system's text for the error number, in lower case ("permission denied").
[[nodiscard]] PackageError packageError(PackageErrorCode code, const String& lead, int errorNumber);

// The calling thread's record behind IMediaPackageLastError; trivially destructible, so that
// a thread ending after the module was unloaded runs none of its code.
void setLastPackageError(const PackageError& error);
PackageErrorCode lastPackageErrorCode();
const char16* lastPackageErrorMessage();

} // namespace Halvorn
