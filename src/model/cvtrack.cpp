// CvTrack, CvChannel and CvSend.
#include "model/cvtrack.h"

#include "model/cvlist.h"

namespace Halvorn {

tresult CvSend::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaSend)
    return CvParameterContainer::queryInterface(iid, object);
}

CvChannel::~CvChannel() = default;

tresult CvChannel::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaChannel)
    return CvParameterContainer::queryInterface(iid, object);
}

uint32 CvChannel::getDeviceCount() { return listCount(devices_); }

IMediaDevice* CvChannel::getDevice(uint32 index) {
    return listElement<IMediaDevice>(devices_, index);
}

uint32 CvChannel::getSendCount() { return listCount(sends_); }

IMediaSend* CvChannel::getSend(uint32 index) { return listElement<IMediaSend>(sends_, index); }

void CvChannel::addDevice(CvDevice* device) { devices_.add(device); }

void CvChannel::addSend(CvSend* send) { sends_.add(send); }

TArray<CvDevice*> CvChannel::getDevices() const { return rawList(devices_); }

CvTrack::~CvTrack() = default;

tresult CvTrack::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaTrack)
    return CvNode::queryInterface(iid, object);
}

uint32 CvTrack::getTrackCount() { return listCount(tracks_); }

IMediaTrack* CvTrack::getTrack(uint32 index) { return listElement<IMediaTrack>(tracks_, index); }

uint32 CvTrack::getClipCount() { return listCount(clips_); }

IMediaClip* CvTrack::getClip(uint32 index) { return listElement<IMediaClip>(clips_, index); }

uint32 CvTrack::getAutomationCount() { return listCount(automations_); }

IMediaAutomation* CvTrack::getAutomation(uint32 index) {
    return listElement<IMediaAutomation>(automations_, index);
}

void CvTrack::addTrack(CvTrack* track) { tracks_.add(track); }

void CvTrack::addClip(CvClip* clip) { clips_.add(clip); }

void CvTrack::addAutomation(CvAutomation* automation) { automations_.add(automation); }

TArray<CvClip*> CvTrack::getClips() const { return rawList(clips_); }

TArray<CvTrack*> CvTrack::getAllTracks() const {
    TArray<CvTrack*> result(-1);
    collectTracks(result);
    return result;
}

void CvTrack::collectTracks(TArray<CvTrack*>& out) const {
    for (const IPtr<CvTrack>& track : tracks_.elements()) {
        out.add(track.get());
        track->collectTracks(out);
    }
}

} // namespace Halvorn
