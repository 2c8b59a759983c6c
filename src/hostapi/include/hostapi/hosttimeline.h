// The host's timeline: objects with positions and children, tracks, parts and events.
//
// Declarations only, shared by export, import and our reference host. Where the host's table
// holds operations between these, only the ones used are declared, in their order. Positions
// and lengths are seconds, measured against the edit context passed.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {
namespace Quor {

struct IHostEditContext;
struct IHostEditSession;
struct IHostAudioClip;
struct IHostMediaFile;
struct IHostAutomationFolder;

// A walk over children. Ask isDone first; next gives a borrowed object (valid while its
// container holds it), which may be null, and moves on. No identifier.
struct IHostIterator : FUnknown {
    virtual FUnknown* next() = 0;
    virtual bool isDone() = 0;
    // No identifier: this face is never asked for through queryInterface, and naming
    // I::iid for it doesn't compile.
    struct iid;
};

// Every object on the timeline: tracks, parts, events, tempo and signature objects, automation
// lanes and points. A null session changes without recording.
struct IHostTimelineObject : FUnknown {
    // Borrowed, valid until the name changes.
    virtual const char16* getName() = 0;
    virtual tresult setName(IHostEditContext* context, const char16* name,
                            IHostEditSession* session) = 0;
    virtual tresult setSelected(IHostEditContext* context, bool selected) = 0;
    virtual bool isMuted() = 0;
    virtual tresult setMuted(IHostEditContext* context, bool muted, IHostEditSession* session) = 0;
    virtual double getStart(IHostEditContext* context) = 0;
    virtual tresult setStart(IHostEditContext* context, double position,
                             IHostEditSession* session) = 0;
    virtual double getLength(IHostEditContext* context) = 0;
    virtual tresult setLength(IHostEditContext* context, double length,
                              IHostEditSession* session) = 0;
    virtual double getOffset(IHostEditContext* context) = 0;
    virtual tresult setOffset(IHostEditContext* context, double offset,
                              IHostEditSession* session) = 0;
    // One reference, the caller releases; may be null.
    virtual IHostIterator* getChildren() = 0;

    static constexpr FUID iid = FUID::make(0x7A6F999F, 0xBDBC, 0x4BCC, 0xAC40, 0x3DABACE8A171);
};

// A timeline object with a colour: alpha in the top byte, then red, green, blue.
struct IHostTimelineEvent : IHostTimelineObject {
    virtual tresult getColor(IHostEditContext* context, uint32* argb) = 0;
    virtual tresult setColor(IHostEditContext* context, uint32 argb, IHostEditSession* session) = 0;

    static constexpr FUID iid = FUID::make(0x744BD8D2, 0x5042, 0x4DB1, 0xB182, 0xEE9103928774);
};

// What a track offers to tell its type. Objects that iterate out of a track list have these
// operations first in their table, so they are called on them directly.
struct IHostObjectType : FUnknown {
    virtual bool isType(const char8* type) = 0;
    // Borrowed, valid while the track lives; null if the track has none.
    virtual IHostAutomationFolder* getAutomationFolder() = 0;

    static constexpr FUID iid = FUID::make(0x2FC820EB, 0xDC93, 0x441B, 0x9851, 0xEF4F3212B068);
};

struct IAudioEvent : FUnknown {
    // Borrowed, valid while the event holds the clip; null without one.
    virtual IHostAudioClip* getClip() = 0;
    virtual tresult setClip(IHostEditContext* context, FUnknown* clip,
                            IHostEditSession* session) = 0;
    virtual double getFadeIn(IHostEditContext* context) = 0;
    virtual tresult setFadeIn(IHostEditContext* context, double length,
                              IHostEditSession* session) = 0;
    virtual double getFadeOut(IHostEditContext* context) = 0;
    virtual tresult setFadeOut(IHostEditContext* context, double length,
                               IHostEditSession* session) = 0;

    static constexpr FUID iid = FUID::make(0x21FFE452, 0xD832, 0x40D6, 0xAE8B, 0x6DB6AE400165);
};

struct IAudioPart : FUnknown {
    virtual tresult initialize(const char16* name, FUnknown* track) = 0;

    static constexpr FUID iid = FUID::make(0x6B73C0E8, 0x5531, 0x44F3, 0xA9BB, 0x4038949E9F95);
};

// A MIDI part; its timeline children are its MIDI events.
struct IMidiPart : FUnknown {
    static constexpr FUID iid = FUID::make(0x127806AF, 0x826D, 0x4B67, 0xBB4E, 0x6A0748E32BC3);
};

struct IHostMidiPartSetup : FUnknown {
    virtual tresult initialize(const char16* name, FUnknown* track) = 0;

    static constexpr FUID iid = FUID::make(0xD4E8E201, 0xF7C6, 0x4C50, 0x979D, 0x0AE9C4926EC9);
};

// A MIDI event as export reads it.
struct IMidiEvent : FUnknown {
    virtual int32 getStatus() = 0;
    virtual int32 getChannel() = 0;
    virtual int32 getPitch() = 0;
    virtual int32 getVelocity() = 0;

    static constexpr FUID iid = FUID::make(0x280D584E, 0x88EF, 0x43EC, 0x908F, 0x7C22AE6994FB);
};

// A MIDI note as import makes it.
struct IHostNoteEvent : FUnknown {
    virtual tresult setPitch(IHostEditContext* context, int32 pitch, IHostEditSession* session) = 0;
    virtual tresult setVelocity(IHostEditContext* context, int32 velocity,
                                IHostEditSession* session) = 0;
    virtual tresult setReleaseVelocity(IHostEditContext* context, int32 velocity,
                                       IHostEditSession* session) = 0;

    static constexpr FUID iid = FUID::make(0x838CF1B8, 0x1800, 0x4443, 0x8CA7, 0x96B53B9E1238);
};

struct IVideoEvent : FUnknown {
    // Borrowed, valid while the event holds the clip; answers for IHostVideoClip.
    virtual IHostMediaFile* getClip() = 0;
    virtual tresult setClip(IHostEditContext* context, FUnknown* clip,
                            IHostEditSession* session) = 0;

    static constexpr FUID iid = FUID::make(0xEE190F09, 0x858B, 0x473B, 0xB1B4, 0x981BB7C9BD28);
};

// A marker; name and position are those of IHostTimelineEvent.
struct IMarkerObject : FUnknown {
    static constexpr FUID iid = FUID::make(0x0499AB46, 0x4C5F, 0x463D, 0x9BAF, 0x00E704B52D35);
};

struct ITempoObject : FUnknown {
    virtual float getTempo() = 0;
    virtual tresult setTempo(IHostEditContext* context, float bpm, IHostEditSession* session) = 0;
    // True: the tempo runs linearly towards the next event.
    virtual tresult setRamp(IHostEditContext* context, bool ramp, IHostEditSession* session) = 0;

    static constexpr FUID iid = FUID::make(0x744BA1A4, 0x81F4, 0x4B37, 0xB070, 0x2929FB512527);
};

struct ISignatureObject : FUnknown {
    // Only the low 16 bits count.
    virtual int32 getNumerator() = 0;
    virtual int32 getDenominator() = 0;
    virtual tresult setSignature(IHostEditContext* context, uint16 numerator, uint16 denominator,
                                 IHostEditSession* session, int32 extra) = 0;

    static constexpr FUID iid = FUID::make(0x08EB2289, 0x6242, 0x4422, 0x96DF, 0x63D8F770BAF2);
};

} // namespace Quor
} // namespace Halvorn
