// The plug-ins that sit in the host's slots: their controllers and their saved state.
//
// Declarations only, shared by export, import and our reference host. Where a table holds
// operations between these, only the ones used are declared, in their order.
#pragma once

#include "corvelle/base.h"
#include "corvelle/stream.h"

namespace Halvorn {
namespace Quor {

// The plug-in's record of one parameter. The published record goes on behind title; these
// declarations hold the two fields that the system reads, and our reference host fills only
// these.
struct QuorParameterInfo {
    uint32 id;
    char16 title[128];
};

// The display text of a value: 128 UTF-16 units, zero-terminated.
using QuorString128 = char16[128];

// The plug-in's controller, as the host hands it on.
struct IQuorController : FUnknown {
    virtual int32 getParameterCount() = 0;
    virtual tresult getParameterInfo(int32 index, QuorParameterInfo* info) = 0;
    virtual tresult valueToText(uint32 id, double normalized, QuorString128 text) = 0;
    virtual tresult valueFromText(uint32 id, const char16* text, double* normalized) = 0;
    // The parameter's present value, 0 to 1.
    virtual double getNormalized(uint32 id) = 0;
    virtual tresult setNormalized(uint32 id, double normalized) = 0;
    // No identifier: this face is never asked for through queryInterface, and naming
    // I::iid for it doesn't compile.
    struct iid;
};

// On a plug-in object. An IHostParameterOwner that answers for it is a plug-in.
struct IHostPluginAccess : FUnknown {
    // Borrowed, valid while the plug-in lives; may be null.
    virtual IQuorController* getController() = 0;

    static constexpr FUID iid = FUID::make(0x0742C1BD, 0xA6B4, 0x4FFA, 0xAB83, 0x8ED120A7D895);
};

// On a plug-in object: its state in the host's preset file format.
struct IHostPluginState : FUnknown {
    virtual tresult saveState(IBStream* stream) = 0;
    // flags is 0.
    virtual tresult loadState(IBStream* stream, int32 flags) = 0;

    static constexpr FUID iid = FUID::make(0x2D9D1D92, 0x9D9E, 0x4CAF, 0xBAA6, 0x9F5E2355932F);
};

} // namespace Quor
} // namespace Halvorn
