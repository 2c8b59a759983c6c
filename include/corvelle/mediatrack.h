// IMediaTrack, IMediaChannel and IMediaSend: the tracks of a project and their mixing strips.
//
// A project is a tree of tracks. A track holds clips and automation lanes and, when it carries
// audio, a channel. A channel holds parameters (found by the logical names of
// corvelle/mediaparameter.h), insert devices and sends. Channels and sends name the channel
// they feed by its id (getDestination), which IMediaProject::findChannel resolves; an id that
// names nothing is ignored. Pointers given are borrowed, valid while the project lives.
#pragma once

#include "corvelle/mediaautomation.h"
#include "corvelle/mediaclip.h"
#include "corvelle/mediadevice.h"
#include "corvelle/mediaobject.h"
#include "corvelle/mediaparameter.h"

namespace Halvorn {

// What a track holds. 5 has no meaning.
enum CvContentType : uint32 {
    kContentUnknown = 0,
    kContentTracks = 1, // a folder of sub-tracks
    kContentAudio = 2,
    kContentNotes = 3,
    kContentTempo = 4,
    kContentSignature = 6,
    kContentAutomation = 7,
    kContentVideo = 8,
    kContentMarkers = 9,
    kContentAudioNotes = 10,
};

enum CvChannelRole : uint32 {
    kChannelRoleUnknown = 0,
    kChannelRoleRegular = 1, // the channel of a track
    kChannelRoleMaster = 2,
    kChannelRoleEffect = 3,
    kChannelRoleSubmix = 4,
    kChannelRoleVca = 5,
};

enum CvSendType : uint32 {
    kSendPre = 0,
    kSendPost = 1,
};

struct IMediaSend : FUnknown {
    virtual uint32 getType() = 0; // a CvSendType
    // Borrowed, valid while the object lives: the id of the receiving channel.
    virtual const char16* getDestination() = 0;
    // Borrowed; the first parameter with this logical name (UTF-8), null when absent or null.
    virtual IMediaParameter* findParameter(const char8* name) = 0;
    virtual bool hasParameter(const char8* name) = 0;
    virtual bool isEnabled() = 0;

    static constexpr FUID iid = FUID::make(0x9238FCE4, 0x2BA8, 0x45F1, 0xA24E, 0x7556B92C0817);
};

// Also answers for IMediaParameterContainer and IMediaObject.
struct IMediaChannel : FUnknown {
    virtual uint32 getKind() = 0; // always 1
    virtual uint32 getRole() = 0; // a CvChannelRole
    virtual uint32 getDeviceCount() = 0;
    // Borrowed; insert devices in signal order, null at or beyond the count.
    virtual IMediaDevice* getDevice(uint32 index) = 0;
    // Borrowed; the first parameter with this logical name (UTF-8), null when absent or null.
    virtual IMediaParameter* findParameter(const char8* name) = 0;
    virtual bool hasParameter(const char8* name) = 0;
    // The channel's width.
    virtual uint32 getAudioChannels() = 0;
    // Borrowed, valid while the object lives: the id of the channel fed; empty for none.
    virtual const char16* getDestination() = 0;
    virtual uint32 getSendCount() = 0;
    // Borrowed; null at or beyond the count.
    virtual IMediaSend* getSend(uint32 index) = 0;

    static constexpr FUID iid = FUID::make(0xCD6B13FD, 0xFF08, 0x4BFE, 0x9E72, 0x6B53E4FABD10);
};

struct IMediaTrack : FUnknown {
    virtual uint32 getContentType() = 0; // a CvContentType
    // Direct sub-tracks of a folder.
    virtual uint32 getTrackCount() = 0;
    // Borrowed; null at or beyond the count.
    virtual IMediaTrack* getTrack(uint32 index) = 0;
    virtual uint32 getClipCount() = 0;
    // Borrowed; null at or beyond the count.
    virtual IMediaClip* getClip(uint32 index) = 0;
    // Borrowed; null for a track without a channel (folders, markers, tempo, signature).
    virtual IMediaChannel* getChannel() = 0;
    // Kept for its place; always null.
    virtual FUnknown* getReserved() = 0;
    // False when the source said the track was not loaded.
    virtual bool isLoaded() = 0;
    virtual uint32 getAutomationCount() = 0;
    // Borrowed; null at or beyond the count.
    virtual IMediaAutomation* getAutomation(uint32 index) = 0;

    static constexpr FUID iid = FUID::make(0x8A170F49, 0xCA46, 0x4BED, 0x8846, 0xD9342EF0A0D8);
};

} // namespace Halvorn
