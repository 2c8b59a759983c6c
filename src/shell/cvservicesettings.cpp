// ServiceSettings: reading and writing the remembered paths.
#include "shell/cvservicesettings.h"

namespace Halvorn {

using namespace Quor;

namespace {
constexpr const char8* kSection = "Corvelle";
}

ServiceSettings::ServiceSettings(IHostContext* host) {
    void* face = nullptr;
    if (host && host->getInterface(IHostDefaults::iid, &face) == kResultOk)
        defaults_ = IPtr<IHostDefaults>::adopt(static_cast<IHostDefaults*>(face));
}

String ServiceSettings::get(const char8* key) const {
    const char16* value = defaults_ ? defaults_->getString(kSection, key) : nullptr;
    return value ? String(value) : String();
}

void ServiceSettings::set(const char8* key, const String& value) {
    if (defaults_)
        defaults_->setString(kSection, key, value.text16());
}

} // namespace Halvorn
