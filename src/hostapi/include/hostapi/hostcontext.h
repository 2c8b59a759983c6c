// The host's root interfaces: the context a service gets, the application, projects, settings.
//
// These declarations serve our reference host and the system alike. Where the host's own table
// holds further operations between the ones used here, only the used ones are declared, in their
// order; a host built against these declarations has exactly these tables.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {
namespace Quor {

struct IHostProject;
struct IHostParameterOwner;

// The object a project filter service gets from the host; every other host service comes from
// getInterface. Some identifiers give a new object at each call (see the interface concerned).
struct IHostContext : FUnknown {
    // On kResultOk *out holds one reference, which the caller releases.
    virtual tresult getInterface(const FUID& iid, void** out) = 0;

    static constexpr FUID iid = FUID::make(0xEEC89683, 0x80DB, 0x4336, 0x9177, 0x273E138A763B);
};

// Answered by the context through queryInterface. Texts borrowed, valid while the host lives.
struct IHostApplicationInfo : FUnknown {
    virtual const char16* getApplicationName() = 0;
    virtual const char16* getApplicationVersion() = 0;

    static constexpr FUID iid = FUID::make(0x97E507DA, 0xE559, 0x4EEA, 0xA5AC, 0x4042E458F2B4);
};

struct IHostProjectManager : FUnknown {
    // Borrowed, valid while the project is open; null if no project is open.
    virtual IHostProject* getActiveProject() = 0;

    static constexpr FUID iid = FUID::make(0x3D7C2813, 0x8ABF, 0x4AAE, 0xA23A, 0x11BF37214C36);
};

// The host's store of strings by section and key. The host's table holds further operations
// around this adjacent pair; only the pair is declared.
struct IHostDefaults : FUnknown {
    virtual tresult setString(const char8* section, const char8* key, const char16* value) = 0;
    // Borrowed, valid until the next setString; null when the key has no value.
    virtual const char16* getString(const char8* section, const char8* key) = 0;

    static constexpr FUID iid = FUID::make(0x1464F3B4, 0x08D6, 0x4A65, 0xAFB8, 0x066A898649A4);
};

// Finds the host's named system objects, such as "QUOR Mixer".
struct IHostObjectRegistry : FUnknown {
    // Borrowed, valid while the host lives; null for an unknown name. flags is 0.
    virtual IHostParameterOwner* findObject(const char8* name, int32 flags) = 0;

    static constexpr FUID iid = FUID::make(0x7F60CB8A, 0xB778, 0x4BB5, 0x9465, 0xFBB7F9CCC827);
};

} // namespace Quor
} // namespace Halvorn
