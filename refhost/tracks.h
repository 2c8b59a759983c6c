// Tracks and the project of the reference host, with each track's automation folder and lanes.
#pragma once

#include "hostapi/hostautomation.h"
#include "hostapi/hostmixer.h"
#include "hostapi/hostproject.h"
#include "media.h"
#include "mixer.h"
#include "timeline.h"

#include <functional>
#include <string>
#include <vector>

namespace Halvorn {
namespace RefHost {

class Track;

// A lane moves the parameter with this tag of the owner at path, relative to the channel of
// the track that holds the lane.
class Lane : public TimelineNode,
             public IHostAutomationLane,
             public IHostTrackChannel,
             public IHostLaneBinding {
public:
    Lane(Ledger& ledger, std::string path, uint32 tag, ParamOwner* owner)
        : TimelineNode(ledger, "automation lane"), path(std::move(path)), tag(tag), owner(owner) {}

    SUPPORT_COUNTED_UNKNOWN
    IHostLaneBinding* getBinding() override { return this; }
    IHostParameterOwner* getMixerChannel() override { return owner; }
    uint32 getTag() override { return tag; }
    bool accepts(TimelineNode& child) const override;

    std::string path;
    uint32 tag;
    ParamOwner* owner;

protected:
    FUnknown* faceFor(const FUID& iid) override;
};

class AutomationFolder : public HostObject,
                         public IHostAutomationFolder,
                         public IHostAutomationOwner {
public:
    AutomationFolder(Ledger& ledger, Track& track)
        : HostObject(ledger, "automation folder"), track_(track) {}

    SUPPORT_COUNTED_UNKNOWN
    IHostIterator* getLanes() override;
    tresult setOpen(bool value) override;
    FUnknown* getLane(const char8* path, uint32 tag, bool create) override;

    // The lane of this parameter, made when create is true and the parameter exists.
    Lane* lane(const std::string& path, uint32 tag, bool create);

    std::vector<IPtr<Lane>> lanes;
    bool open = false;

protected:
    FUnknown* faceFor(const FUID& iid) override;
    void dispose() override { lanes.clear(); }

private:
    Track& track_;
};

// A track. Its type is one of the texts of createTrack, or "tempo" and "signature".
class Track : public TimelineNode,
              public IHostObjectType,
              public IHostTrackChannel,
              public IHostTrackBus {
public:
    Track(Ledger& ledger, std::string type, Mixer* mixer);

    SUPPORT_COUNTED_UNKNOWN
    bool isType(const char8* text) override { return text && type == text; }
    tresult setName(IHostEditContext* context, const char16* name,
                    IHostEditSession* session) override;
    tresult setColor(IHostEditContext* context, uint32 argb, IHostEditSession* session) override;
    IHostAutomationFolder* getAutomationFolder() override { return folder.get(); }
    IHostParameterOwner* getMixerChannel() override { return channel.get(); }
    tresult setArrangement(uint32 speakerMask) override;

    FUnknown* itemFace() override { return static_cast<IHostObjectType*>(this); }
    bool accepts(TimelineNode& child) const override;
    void adopt(IPtr<TimelineNode> child) override;

    std::string type;
    IPtr<Channel> channel;
    IPtr<AutomationFolder> folder;
    bool loaded = true;
    Mixer* mixer;

protected:
    FUnknown* faceFor(const FUID& iid) override;
    void dispose() override;
};

class TempoTrack : public Track, public IHostTempoTrack {
public:
    TempoTrack(Ledger& ledger, Mixer* mixer) : Track(ledger, "tempo", mixer) {}

    SUPPORT_COUNTED_UNKNOWN
    float getTempoAt(double position) override;
    float getFixedTempo() override { return float(fixedTempo); }
    bool isTempoFixed() override { return fixed; }
    tresult setTempo(float bpm) override;

    double fixedTempo = 120.0;
    bool fixed = true;

protected:
    FUnknown* faceFor(const FUID& iid) override;
};

class SignatureTrack : public Track, public IHostSignatureTrack {
public:
    SignatureTrack(Ledger& ledger, Mixer* mixer) : Track(ledger, "signature", mixer) {}

    SUPPORT_COUNTED_UNKNOWN
    bool getSignatureAt(double position, QuorSignatureRecord* record) override;
    tresult setSignature(int32 position, int32 numerator, int32 denominator) override;

    uint16 numerator = 4;
    uint16 denominator = 4;

protected:
    FUnknown* faceFor(const FUID& iid) override;
};

// The open project; its children are its tracks.
class Project : public TimelineNode, public IHostProject {
public:
    Project(Ledger& ledger, Mixer* mixer);

    SUPPORT_COUNTED_UNKNOWN
    IHostUrl* getProjectFolder() override { return folder.get(); }
    IHostMediaPool* getMediaPool() override { return pool.get(); }
    IHostTempoTrack* getTempoTrack() override;
    IHostSignatureTrack* getSignatureTrack() override;
    IHostEditContext* getEditContext(int32 index) override;
    IHostObjectType* createTrack(const char8* type) override;

    bool accepts(TimelineNode& child) const override;
    void adopt(IPtr<TimelineNode> child) override;
    // Every track, folders' tracks included, in display order.
    std::vector<Track*> allTracks() const;

    IPtr<Url> folder;
    // The folder as the session file wrote it.
    std::string folderText;
    IPtr<MediaPool> pool;
    // Makes a track of a type; set by the workstation. Null for an unknown type.
    std::function<IPtr<Track>(const std::string& type)> makeTrack;
    Mixer* mixer;

protected:
    FUnknown* faceFor(const FUID& iid) override;
    void dispose() override;
};

// The track types that createTrack knows, and whether each has a mixer channel.
bool isTrackType(const std::string& type);
// The kind of mixer channel of a track type, or null for one without a channel.
const char* channelKindOf(const std::string& type);

} // namespace RefHost
} // namespace Halvorn
