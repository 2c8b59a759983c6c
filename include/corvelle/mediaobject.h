// IMediaObject and IMediaColor: the identity, name and colour shared by every node of a model.
//
// A project model is a tree of reference-counted objects that a caller reads through the
// IMedia interfaces. Every node with an identity answers for IMediaObject: other objects refer
// to it by its id text, never by pointer. All pointers these interfaces give are borrowed: no
// reference is added, and they stay valid while the project that holds the object lives.
// Texts are zero-terminated UTF-16, never null; a text that was never set is empty.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {

// The colour of a node. All four bytes zero means that no colour is set.
struct IMediaColor : FUnknown {
    virtual uint8 getRed() = 0;
    virtual uint8 getGreen() = 0;
    virtual uint8 getBlue() = 0;
    virtual uint8 getAlpha() = 0;

    static constexpr FUID iid = FUID::make(0x8AABED9A, 0x574C, 0x4EEC, 0xBAEC, 0x66B8E104E86B);
};

struct IMediaObject : FUnknown {
    // Borrowed, valid while the object lives and its text is unchanged.
    virtual const char16* getId() = 0;
    // Borrowed, as getId. For a parameter this is its logical name.
    virtual const char16* getName() = 0;
    // Borrowed, lives and dies with this object; never null. No colour reads as all zero.
    virtual IMediaColor* getColor() = 0;

    static constexpr FUID iid = FUID::make(0xD36B04AA, 0x5BA8, 0x4952, 0x8074, 0x489E95542EC7);
};

} // namespace Halvorn
