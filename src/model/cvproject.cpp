// CvProject: defaults, the depth-first track walk, channel lookup and the file accessors.
#include "model/cvproject.h"

#include "model/cvlist.h"

#include <new>

namespace Halvorn {

tresult CvSignature::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaSignature)
    return CvNode::queryInterface(iid, object);
}

CvProject::CvProject(const String& applicationName, const String& applicationVersion)
    : tempo_(newObject<CvParameter>(kUnitBpm)),
      timeSignature_(newObject<CvSignature>(4, 4, String())), applicationName_(applicationName),
      applicationVersion_(applicationVersion) {
    tempo_->setMin(1.0);
    tempo_->setMax(300.0);
    tempo_->setValue(120.0);
}

CvProject::~CvProject() = default;

tresult CvProject::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaProject)
    return CvObject::queryInterface(iid, object);
}

uint32 CvProject::getTrackCount() { return listCount(tracks_); }

IMediaTrack* CvProject::getTrack(uint32 index) { return listElement<IMediaTrack>(tracks_, index); }

uint32 CvProject::getChannelCount() { return listCount(channels_); }

IMediaChannel* CvProject::getChannel(uint32 index) {
    return listElement<IMediaChannel>(channels_, index);
}

IMediaChannel* CvProject::findChannel(const char16* id) {
    return id ? channels_.findById(String(id)) : nullptr;
}

void CvProject::addTrack(CvTrack* track) { tracks_.add(track); }

void CvProject::addChannel(CvChannel* channel) { channels_.add(channel); }

void CvProject::setTempo(CvParameter* tempo) {
    if (tempo)
        tempo_ = tempo;
}

void CvProject::setTimeSignature(CvSignature* signature) {
    if (signature)
        timeSignature_ = signature;
}

TArray<CvTrack*> CvProject::getAllTracks() const {
    TArray<CvTrack*> result(-1);
    for (const IPtr<CvTrack>& track : tracks_.elements()) {
        result.add(track.get());
        track->collectTracks(result);
    }
    return result;
}

CvTrack* CvProject::findTrack(const String& id) const {
    for (CvTrack* track : getAllTracks())
        if (track->getNodeId() == id)
            return track;
    return nullptr;
}

namespace {

bool carriesMedia(uint32 contentType) {
    return contentType == kContentAudio || contentType == kContentVideo;
}

// Appends the clip's direct events that carry a file; the query's reference is given back at
// once, so the result holds none.
void collectMedia(CvClip& clip, TArray<ICvFileAccessor*>& out) {
    for (CvEvent* event : clip.getEvents()) {
        void* face = nullptr;
        if (event->queryInterface(ICvFileAccessor::iid, &face) != kResultOk)
            continue;
        auto* accessor = static_cast<ICvFileAccessor*>(face);
        accessor->release();
        out.add(accessor);
    }
}

} // namespace

TArray<ICvFileAccessor*> CvProject::getFileAccessors() const {
    // The channel of each track, once for each track that has it; then the project's channels
    // that no track reached.
    TArray<CvChannel*> channels(-1);
    CvPointerIndex<CvChannel> reached;
    TArray<ICvFileAccessor*> result(-1);
    for (CvTrack* track : getAllTracks()) {
        if (CvChannel* channel = track->getChannel()) {
            if (!reached.holds(channel) && !reached.insert(channel))
                throw std::bad_alloc();
            channels.add(channel);
        }
        if (!carriesMedia(track->getContentType()))
            continue;
        for (CvClip* clip : track->getClips())
            collectMedia(*clip, result);
    }
    for (const IPtr<CvChannel>& channel : channels_.elements())
        if (!reached.holds(channel.get()))
            channels.add(channel.get());
    for (CvChannel* channel : channels)
        for (CvDevice* device : channel->getDevices())
            result.add(device);
    return result;
}

} // namespace Halvorn
