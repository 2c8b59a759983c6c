// The project filter service's interfaces, as a host calls them.
//
// A host creates the service from the factory (corvelle/factory.h), asks it for IPluginBase and
// hands it the host's context through initialize. The service's command interfaces build on
// IPluginBase.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {
namespace Quor {

struct IPluginBase : FUnknown {
    // Gives the service its host; context is asked for the host context. kResultOk when the
    // service has a host afterwards, kResultFalse when it hasn't.
    virtual tresult initialize(FUnknown* context) = 0;
    virtual tresult terminate() = 0;

    static constexpr FUID iid = FUID::make(0x22888DDB, 0x156E, 0x45AE, 0x8358, 0xB34808190625);
};

} // namespace Quor
} // namespace Halvorn
