// The host's automation: a track's folder of lanes, lanes with their bindings, and points.
//
// Declarations only, shared by export, import and our reference host. Where the host's table
// holds operations between these, only the ones used are declared, in their order.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {
namespace Quor {

struct IHostIterator;
struct IHostEditContext;
struct IHostEditSession;

// A track's automation; it answers for IHostAutomationOwner. No identifier.
struct IHostAutomationFolder : FUnknown {
    // One reference, the caller releases: a walk over the lanes.
    virtual IHostIterator* getLanes() = 0;
    virtual tresult setOpen(bool open) = 0;
    // No identifier: this face is never asked for through queryInterface, and naming
    // I::iid for it doesn't compile.
    struct iid;
};

// What a lane moves. No identifier.
struct IHostLaneBinding : FUnknown {
    // The tag of the parameter that the lane moves.
    virtual uint32 getTag() = 0;
    // No identifier: this face is never asked for through queryInterface, and naming
    // I::iid for it doesn't compile.
    struct iid;
};

// A lane; it also answers for IHostTrackChannel and IHostTimelineObject, whose children are
// its points.
struct IHostAutomationLane : FUnknown {
    // Borrowed, valid while the lane lives; may be null.
    virtual IHostLaneBinding* getBinding() = 0;

    static constexpr FUID iid = FUID::make(0xD8C011BC, 0xDA08, 0x49CC, 0x8841, 0xC81863DE9146);
};

// A point of a lane; it also answers for IHostTimelineObject.
struct IHostAutomationPoint : FUnknown {
    // Between 0 and 1.
    virtual float getValue() = 0;
    virtual tresult setValue(IHostEditContext* context, float value, IHostEditSession* session) = 0;

    static constexpr FUID iid = FUID::make(0x501B33DD, 0xB717, 0x4533, 0xB793, 0xE1408425375F);
};

// On an automation folder: its lanes by parameter.
struct IHostAutomationOwner : FUnknown {
    // Borrowed, valid while the folder holds the lane: the lane of the parameter with this tag
    // below the object at path (relative to the track's channel); made when create is true.
    virtual FUnknown* getLane(const char8* path, uint32 tag, bool create) = 0;

    static constexpr FUID iid = FUID::make(0xD8D719FA, 0xE57C, 0x2F4A, 0xB53E, 0x9EDBB9C889BB);
};

// On mixer channels, panners, send slots and plug-ins: the place in the host's object tree.
struct IHostAutomationTarget : FUnknown {
    // Borrowed, valid while the object lives. Below a mixer channel it begins with the
    // channel's path.
    virtual const char8* getPath() = 0;

    static constexpr FUID iid = FUID::make(0x6A55D22C, 0xAF99, 0x4846, 0xA505, 0x514828B17F11);
};

} // namespace Quor
} // namespace Halvorn
