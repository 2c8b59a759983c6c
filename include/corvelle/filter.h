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

// The two commands. Each takes two pointers of the host's: the first is not read, the second
// must not be null. kResultOk for a command that ran through, kResultFalse for all others,
// the user's cancelling included.
struct IProjectFilterPlugin : IPluginBase {
    // Writes the filter's flags (27); kResultFalse for a null pointer.
    virtual tresult getFilterFlags(uint32* flags) = 0;
    virtual tresult exportProject(FUnknown* reserved, FUnknown* target) = 0;
    virtual tresult importProject(FUnknown* reserved, FUnknown* target) = 0;

    static constexpr FUID iid = FUID::make(0xC9D825D8, 0xD5E2, 0x4E8F, 0xAF1C, 0xB7F41067EDA9);
};

// Eight further slots of the host's table. This filter has no behaviour for them: each gives
// kResultFalse.
struct IProjectFilterPlugin2 : IProjectFilterPlugin {
    virtual tresult reservedFilter2a(FUnknown* argument) = 0;
    virtual tresult reservedFilter2b(FUnknown* argument) = 0;
    virtual tresult reservedFilter2c(FUnknown* argument) = 0;
    virtual tresult reservedFilter2d(FUnknown* argument) = 0;
    virtual tresult reservedFilter2e(FUnknown* argument) = 0;
    virtual tresult reservedFilter2f(FUnknown* argument) = 0;
    virtual tresult reservedFilter2g(FUnknown* argument) = 0;
    virtual tresult reservedFilter2h(FUnknown* argument) = 0;

    static constexpr FUID iid = FUID::make(0xAD1AB71E, 0xE7C9, 0x40FD, 0xA72C, 0xC10AEFFBFD62);
};

// Four further slots. All give kResultFalse; the second also writes 1 to its out argument
// when that isn't null.
struct IProjectFilterPlugin3 : IProjectFilterPlugin2 {
    virtual tresult reservedFilter3a(FUnknown* argument) = 0;
    virtual tresult reservedFilter3b(uint32* value) = 0;
    virtual tresult reservedFilter3c(FUnknown* argument) = 0;
    virtual tresult reservedFilter3d(FUnknown* argument) = 0;

    static constexpr FUID iid = FUID::make(0x46366E33, 0x330A, 0x42F4, 0xBFE4, 0xC0C81C02DC1E);
};

} // namespace Quor
} // namespace Halvorn
