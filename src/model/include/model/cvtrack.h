// CvTrack, CvChannel and CvSend: the track tree and the mixing strips.
#pragma once

#include "corvelle/mediatrack.h"
#include "model/cvautomation.h"
#include "model/cvdevice.h"
#include "model/cvevent.h"
#include "model/cvlist.h"
#include "model/cvparameter.h"

namespace Halvorn {

// Its parameters are found by logical name: "MPParamVolume" and "MPEnable".
class CvSend : public CvParameterContainer, public IMediaSend {
public:
    CV_DECLARE_TYPE(CvSend, CvParameterContainer)
    CV_REFCOUNT_METHODS(CvParameterContainer)

    CvSend(uint32 type, const String& id) : CvParameterContainer({}, id), type_(type) {}

    tresult queryInterface(const FUID& iid, void** object) override;

    uint32 getType() override { return type_; }
    const char16* getDestination() override { return destination_.text16(); }
    IMediaParameter* findParameter(const char8* name) override { return findParameterByName(name); }
    bool hasParameter(const char8* name) override { return hasParameterName(name); }
    bool isEnabled() override { return enabled_; }

    void setDestination(const String& channelId) { destination_ = channelId; }
    void setEnabled(bool enabled) { enabled_ = enabled; }

protected:
    ~CvSend() override = default;

private:
    String destination_;
    uint32 type_;
    bool enabled_ = true;
};

// A mixing strip. Its parameters are found by logical name ("MPParamVolume", "MPParamPan",
// "MPParamMute", "MPParamSolo"); the destination is the id of the channel it feeds.
class CvChannel : public CvParameterContainer, public IMediaChannel {
public:
    CV_DECLARE_TYPE(CvChannel, CvParameterContainer)
    CV_REFCOUNT_METHODS(CvParameterContainer)

    CvChannel(uint32 kind, uint32 role, const String& id)
        : CvParameterContainer({}, id), kind_(kind), role_(role) {}

    tresult queryInterface(const FUID& iid, void** object) override;

    uint32 getKind() override { return kind_; }
    uint32 getRole() override { return role_; }
    uint32 getDeviceCount() override;
    IMediaDevice* getDevice(uint32 index) override;
    IMediaParameter* findParameter(const char8* name) override { return findParameterByName(name); }
    bool hasParameter(const char8* name) override { return hasParameterName(name); }
    uint32 getAudioChannels() override { return audioChannels_; }
    const char16* getDestination() override { return destination_.text16(); }
    uint32 getSendCount() override;
    IMediaSend* getSend(uint32 index) override;

    // Unique adds.
    void addDevice(CvDevice* device);
    void addSend(CvSend* send);
    TArray<CvDevice*> getDevices() const;
    void setAudioChannels(uint32 count) { audioChannels_ = count; }
    void setDestination(const String& channelId) { destination_ = channelId; }

protected:
    ~CvChannel() override;

private:
    CvUniqueList<CvDevice> devices_;
    CvUniqueList<CvSend> sends_;
    String destination_;
    uint32 kind_;
    uint32 role_;
    uint32 audioChannels_ = 1;
};

class CvTrack : public CvNode, public IMediaTrack {
public:
    CV_DECLARE_TYPE(CvTrack, CvNode)
    CV_REFCOUNT_METHODS(CvNode)

    CvTrack(uint32 contentType, const String& id) : CvNode({}, id), contentType_(contentType) {}

    tresult queryInterface(const FUID& iid, void** object) override;

    uint32 getContentType() override { return contentType_; }
    uint32 getTrackCount() override;
    IMediaTrack* getTrack(uint32 index) override;
    uint32 getClipCount() override;
    IMediaClip* getClip(uint32 index) override;
    // Borrowed; the same object IMediaTrack gives as IMediaChannel. Null for none.
    CvChannel* getChannel() override { return channel_.get(); }
    FUnknown* getReserved() override { return nullptr; }
    bool isLoaded() override { return loaded_; }
    uint32 getAutomationCount() override;
    IMediaAutomation* getAutomation(uint32 index) override;

    // Unique adds.
    void addTrack(CvTrack* track);
    void addClip(CvClip* clip);
    void addAutomation(CvAutomation* automation);
    // Releases the old channel and shares the new one; null allowed.
    void setChannel(CvChannel* channel) { channel_ = channel; }
    void setLoaded(bool loaded) { loaded_ = loaded; }
    TArray<CvClip*> getClips() const;
    // All descendants, depth first: each track directly before its own sub-tracks.
    TArray<CvTrack*> getAllTracks() const;
    // Appends this track's descendants in the order of getAllTracks.
    void collectTracks(TArray<CvTrack*>& out) const;

protected:
    ~CvTrack() override;

private:
    CvUniqueList<CvTrack> tracks_;
    CvUniqueList<CvClip> clips_;
    CvUniqueList<CvAutomation> automations_;
    IPtr<CvChannel> channel_;
    uint32 contentType_;
    bool loaded_ = true;
};

} // namespace Halvorn
