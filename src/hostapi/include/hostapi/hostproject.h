// The host's project: its special tracks, edit contexts and the edit sessions that record changes.
//
// Declarations only, shared by export, import and our reference host. Where the host's table
// holds operations between these, only the ones used are declared, in their order.
#pragma once

#include "corvelle/base.h"

#include <cstddef>

namespace Halvorn {
namespace Quor {

struct IHostUrl;
struct IHostMediaPool;
struct IHostProject;
struct IHostObjectType;
struct IHostTimelineObject;

// Filled by IHostSignatureTrack::getSignatureAt; the caller zeroes it. The bytes before
// numerator are the host's own.
struct QuorSignatureRecord {
    uint8 reserved[56];
    uint16 numerator;
    uint16 denominator;
    uint8 tail[4];
};
static_assert(sizeof(QuorSignatureRecord) == 64, "QuorSignatureRecord layout");
static_assert(offsetof(QuorSignatureRecord, numerator) == 56, "QuorSignatureRecord layout");
static_assert(offsetof(QuorSignatureRecord, denominator) == 58, "QuorSignatureRecord layout");

// A place in the timeline against which positions are measured and into which changes go:
// the project's top level, a track, a part, an automation lane. No identifier.
struct IHostEditContext : FUnknown {
    // One reference, the caller releases; null when the object has no contents.
    virtual IHostEditContext* contextFor(FUnknown* object) = 0;
    // Borrowed, valid while this context lives.
    virtual IHostTimelineObject* getObject() = 0;
    // No identifier: this face is never asked for through queryInterface, and naming
    // I::iid for it doesn't compile.
    struct iid;
};

// Records changes as named steps of the host's undo history.
struct IHostEditSession : FUnknown {
    virtual tresult setMode(int32 mode) = 0;
    // Closes what the session holds as one step with this name.
    virtual tresult commit(IHostProject* project, const char16* name) = 0;
    // Adds object to the place that context names; takes over one reference of object.
    virtual tresult add(IHostEditContext* context, FUnknown* object) = 0;
    virtual tresult move(IHostEditContext* context, FUnknown* object, int32 index) = 0;

    static constexpr FUID iid = FUID::make(0x3F322518, 0x90F4, 0x462A, 0xB9E9, 0x535C454C265E);
};

// The project's tempo track. No identifier; it also answers for IHostTimelineObject.
struct IHostTempoTrack : FUnknown {
    virtual float getTempoAt(double position) = 0;
    virtual float getFixedTempo() = 0;
    virtual bool isTempoFixed() = 0;
    virtual tresult setTempo(float bpm) = 0;
    // No identifier: this face is never asked for through queryInterface, and naming
    // I::iid for it doesn't compile.
    struct iid;
};

// The project's signature track. No identifier; it also answers for IHostTimelineObject.
struct IHostSignatureTrack : FUnknown {
    // True when the record was filled.
    virtual bool getSignatureAt(double position, QuorSignatureRecord* record) = 0;
    virtual tresult setSignature(int32 position, int32 numerator, int32 denominator) = 0;
    // No identifier: this face is never asked for through queryInterface, and naming
    // I::iid for it doesn't compile.
    struct iid;
};

// The open project, reached through IHostProjectManager only. It also answers for
// IHostTimelineObject, whose children are its tracks in display order. No identifier.
struct IHostProject : FUnknown {
    // Borrowed, may be null; getPath gives the project folder.
    virtual IHostUrl* getProjectFolder() = 0;
    // Borrowed, may be null.
    virtual IHostMediaPool* getMediaPool() = 0;
    // Borrowed, may be null.
    virtual IHostTempoTrack* getTempoTrack() = 0;
    // Borrowed, may be null.
    virtual IHostSignatureTrack* getSignatureTrack() = 0;
    // One reference, the caller releases: the top-level context for index 0.
    virtual IHostEditContext* getEditContext(int32 index) = 0;
    // One reference, the caller releases (or hands it to IHostEditSession::add): a new track
    // of this type, not yet in the project; null for a type the host doesn't know.
    virtual IHostObjectType* createTrack(const char8* type) = 0;
    // No identifier: this face is never asked for through queryInterface, and naming
    // I::iid for it doesn't compile.
    struct iid;
};

} // namespace Quor
} // namespace Halvorn
