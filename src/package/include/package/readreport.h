// Telling an optional read report what a read refused or could not do.
#pragma once

#include "corvelle/package.h"
#include "foundation/fstring.h"

namespace Halvorn {

inline void tellReport(IMediaPackageReadReport* report, PackageReadCase what,
                       const String& subject) {
    if (report)
        (void)report->report(what, subject.text16());
}

} // namespace Halvorn
