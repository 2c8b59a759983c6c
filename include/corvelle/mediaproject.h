// IMediaProject and IMediaSignature: the root of a project model.
//
// A caller without a host gets an IMediaProject from a package and walks everything from
// here: the top-level tracks, every channel of the project (output, effect, group and the
// regular channels of tracks), the tempo and the time signature. Every time in a model is in
// seconds. Pointers given are borrowed, valid while the project lives.
#pragma once

#include "corvelle/mediaparameter.h"
#include "corvelle/mediatrack.h"

namespace Halvorn {

struct IMediaSignature : FUnknown {
    virtual uint16 getNumerator() = 0;
    virtual uint16 getDenominator() = 0;

    static constexpr FUID iid = FUID::make(0x952E9533, 0x3065, 0x4700, 0xBA95, 0xFCE27C097FAE);
};

struct IMediaProject : FUnknown {
    // Borrowed, valid while the project lives: the application that wrote the project.
    virtual const char16* getApplicationName() = 0;
    virtual const char16* getApplicationVersion() = 0;
    // Top-level tracks only; a folder counts once.
    virtual uint32 getTrackCount() = 0;
    // Borrowed; null at or beyond the count.
    virtual IMediaTrack* getTrack(uint32 index) = 0;
    // Borrowed, never null: value in beats per minute.
    virtual IMediaParameter* getTempo() = 0;
    // Borrowed, never null.
    virtual IMediaSignature* getTimeSignature() = 0;
    virtual uint32 getChannelCount() = 0;
    // Borrowed; null at or beyond the count.
    virtual IMediaChannel* getChannel(uint32 index) = 0;
    // Borrowed; the first channel of the project's list with this id (case-sensitive), null
    // when there is none or id is null. A channel held only by a track isn't in the list.
    virtual IMediaChannel* findChannel(const char16* id) = 0;

    static constexpr FUID iid = FUID::make(0x6B502064, 0x7B64, 0x467A, 0xBCCD, 0xE7F9FEAE9FCF);
};

} // namespace Halvorn
