// ServiceSettings: the commands' remembered paths in the host's string store.
#pragma once

#include "corvelle/ptr.h"
#include "foundation/fstring.h"
#include "hostapi/hostcontext.h"

namespace Halvorn {

// Section "Corvelle" of the host's defaults. Without the host's store nothing is remembered
// and every key reads empty.
class ServiceSettings {
public:
    explicit ServiceSettings(Quor::IHostContext* host);

    String get(const char8* key) const;
    void set(const char8* key, const String& value);

private:
    IPtr<Quor::IHostDefaults> defaults_;
};

} // namespace Halvorn
