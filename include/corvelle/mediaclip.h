// IMediaClip and the event interfaces: the timeline content of a track.
//
// A track holds clips; a clip is a span of time holding events. Every event, the clip
// included, answers for IMediaEvent and IMediaObject, and for the one interface of its kind:
// audio, video, MIDI (a note also for IMediaMidiNoteEvent), marker, tempo or signature. All
// times are seconds. A clip's time is its place on the track; the times of its events are
// relative to the clip's content. Pointers given are borrowed, valid while the project lives.
#pragma once

#include "corvelle/mediaobject.h"

namespace Halvorn {

enum CvEventType : uint32 {
    kEventAudio = 1,
    kEventMidi = 2,
    kEventVideo = 3,
    kEventMarker = 4,
    kEventTempo = 5,
    kEventSignature = 6,
    // Only a clip on an audio-and-notes track has this type; it holds no events.
    kEventAudioNotes = 7,
};

struct IMediaTime : FUnknown {
    // The position: on the timeline for a clip, in the clip's content for an event.
    virtual double getStart() = 0;
    virtual double getDuration() = 0;
    // Where in its content a clip begins to play.
    virtual double getOffset() = 0;

    static constexpr FUID iid = FUID::make(0x8E1D8319, 0x81E0, 0x48AF, 0x950E, 0xF854F7DEBF8E);
};

struct IMediaEvent : FUnknown {
    virtual uint32 getEventType() = 0; // a CvEventType
    // Borrowed, valid while the project lives; never null.
    virtual IMediaTime* getTime() = 0;
    virtual bool isMuted() = 0;

    static constexpr FUID iid = FUID::make(0x68A1A115, 0x9E79, 0x4730, 0xA6E8, 0x701DB817DDFE);
};

struct IMediaClip : FUnknown {
    // The type of the events the clip holds.
    virtual uint32 getEventType() = 0;
    // Borrowed, valid while the project lives; never null.
    virtual IMediaTime* getTime() = 0;
    virtual uint32 getEventCount() = 0;
    // Borrowed, valid while the project lives; null at or beyond the count.
    virtual IMediaEvent* getEvent(uint32 index) = 0;
    virtual double getFadeInTime() = 0;
    virtual double getFadeOutTime() = 0;

    static constexpr FUID iid = FUID::make(0xCAABC9FF, 0x6706, 0x46A7, 0x973C, 0x59D5B55E6397);
};

// A pair of positions that plays a place of the source at a place of the clip's content.
struct IMediaWarpPoint : FUnknown {
    virtual double getTime() = 0;
    virtual double getContentTime() = 0;

    static constexpr FUID iid = FUID::make(0x4D9D69AB, 0x0778, 0x4273, 0xBE02, 0xC020C22A9B27);
};

struct IMediaAudioEvent : FUnknown {
    // Borrowed, valid while the object lives: the audio file.
    virtual const char16* getFilePath() = 0;
    virtual uint32 getWarpCount() = 0;
    // Borrowed, valid while the project lives; null at or beyond the count.
    virtual IMediaWarpPoint* getWarp(uint32 index) = 0;
    // Content time over time of the last warp point, each rounded to five decimals; 1.0 when
    // the event has no length, fewer than two warp points, or a last point at time 0.
    virtual double getPlaybackRate() = 0;
    // Always kResultOk; a null out-pointer is left out.
    virtual tresult getFormat(uint32* sampleRate, uint32* channelCount, double* duration) = 0;

    static constexpr FUID iid = FUID::make(0x9CAF3BD5, 0x8504, 0x4575, 0x9FEE, 0x3E797B239203);
};

struct IMediaVideoEvent : FUnknown {
    // Borrowed, valid while the object lives: the video file.
    virtual const char16* getFilePath() = 0;
    // Always kResultOk; a null out-pointer is left out. frameCount counts audio sample frames.
    virtual tresult getFormat(uint32* sampleRate, uint64* frameCount, double* duration) = 0;

    static constexpr FUID iid = FUID::make(0xD891615A, 0x580D, 0x4A8D, 0x85EA, 0xA61BF54549B3);
};

struct IMediaMidiEvent : FUnknown {
    virtual uint32 getStatus() = 0;
    virtual uint32 getChannel() = 0;
    virtual uint32 getData1() = 0;
    virtual uint32 getData2() = 0;

    static constexpr FUID iid = FUID::make(0xB887A472, 0x2CA4, 0x40A7, 0xB3A7, 0x6D7F1EF85158);
};

struct IMediaMidiNoteEvent : FUnknown {
    virtual uint32 getKey() = 0;
    // 0.0 to 1.0.
    virtual double getVelocity() = 0;

    static constexpr FUID iid = FUID::make(0x8EFAEC27, 0x4D7F, 0x4E70, 0x81EB, 0xDB910CA47775);
};

// A marker's text is its IMediaObject name, its colour the object's colour.
struct IMediaMarkerEvent : FUnknown {
    // Kept for its place; always false, since nothing sets it.
    virtual bool getFlag() = 0;

    static constexpr FUID iid = FUID::make(0xF1B4E908, 0x30A5, 0x43FF, 0x9EAE, 0xF24594F84BBD);
};

struct IMediaTempoEvent : FUnknown {
    // Beats per minute.
    virtual double getTempo() = 0;
    virtual uint32 getInterpolation() = 0; // a CvInterpolation

    static constexpr FUID iid = FUID::make(0x44C731F4, 0xCC4F, 0x45A3, 0x9CB2, 0xE047CB77FD6F);
};

struct IMediaSignatureEvent : FUnknown {
    virtual uint16 getNumerator() = 0;
    virtual uint16 getDenominator() = 0;

    static constexpr FUID iid = FUID::make(0x21CC4C02, 0xBA71, 0x41D3, 0x8070, 0xBD9D6EA47C95);
};

} // namespace Halvorn
