// Tracks, the project, automation folders and lanes.
#include "tracks.h"
#include "editing.h"

#include <cstring>

namespace Halvorn {
namespace RefHost {

namespace {
struct TypeRow {
    const char* type;
    const char* channelKind;
};

const TypeRow kTrackTypes[] = {
    {"audio", "AudioChannel"},
    {"instrument", "InstrumentChannel"},
    {"marker", nullptr},
    {"video", nullptr},
    {"folder", nullptr},
    {"FX Channel", "FxChannel"},
    {"Group Channel", "GroupChannel"},
    {"tempo", nullptr},
    {"signature", nullptr},
};

template <class T> bool is(TimelineNode& node) { return dynamic_cast<T*>(&node) != nullptr; }

// Brings the channels of a track and of the tracks below it into the mixer.
void attachChannels(Mixer* mixer, TimelineNode& node) {
    auto* track = dynamic_cast<Track*>(&node);
    if (!mixer || !track)
        return;
    if (track->channel)
        mixer->attach(track->channel.get());
    for (auto& child : track->children())
        attachChannels(mixer, *child);
}
} // namespace

bool isTrackType(const std::string& type) {
    for (auto& row : kTrackTypes)
        if (type == row.type && type != "tempo" && type != "signature")
            return true;
    return false;
}

const char* channelKindOf(const std::string& type) {
    for (auto& row : kTrackTypes)
        if (type == row.type)
            return row.channelKind;
    return nullptr;
}

bool Lane::accepts(TimelineNode& child) const { return is<AutomationPoint>(child); }

FUnknown* Lane::faceFor(const FUID& iid) {
    if (FUnknown* face = Support::faceOf<IHostAutomationLane>(iid, this))
        return face;
    if (FUnknown* face = Support::faceOf<IHostTrackChannel>(iid, this))
        return face;
    if (iid == IHostTimelineEvent::iid)
        return nullptr;
    return TimelineNode::faceFor(iid);
}

IHostIterator* AutomationFolder::getLanes() {
    std::vector<IPtr<TimelineNode>> items;
    for (auto& held : lanes)
        items.emplace_back(held.get());
    return ledger().make<Iterator>(std::move(items)).release();
}

tresult AutomationFolder::setOpen(bool value) {
    open = value;
    return kResultOk;
}

Lane* AutomationFolder::lane(const std::string& path, uint32 tag, bool create) {
    for (auto& held : lanes)
        if (held->path == path && held->tag == tag)
            return held.get();
    ParamOwner* owner = track_.channel ? track_.channel->resolve(path) : nullptr;
    if (!create || !owner || !owner->paramByTag(tag))
        return nullptr;
    auto made = ledger().make<Lane>(path, tag, owner);
    lanes.push_back(made);
    return made.get();
}

FUnknown* AutomationFolder::getLane(const char8* path, uint32 tag, bool create) {
    Lane* found = path ? lane(path, tag, create) : nullptr;
    return found ? found->itemFace() : nullptr;
}

FUnknown* AutomationFolder::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid)
        return static_cast<IHostAutomationFolder*>(this);
    return Support::faceOf<IHostAutomationOwner>(iid, this);
}

Track::Track(Ledger& ledger, std::string type, Mixer* mixer)
    : TimelineNode(ledger, "track"), type(std::move(type)), mixer(mixer) {}

tresult Track::setName(IHostEditContext* context, const char16* text, IHostEditSession* session) {
    tresult result = TimelineNode::setName(context, text, session);
    // A track's channel carries the track's name in the mixer.
    if (channel)
        channel->title = name;
    return result;
}

tresult Track::setColor(IHostEditContext* context, uint32 argb, IHostEditSession* session) {
    tresult result = TimelineNode::setColor(context, argb, session);
    // ... and its colour.
    if (channel)
        channel->color = argb;
    return result;
}

tresult Track::setArrangement(uint32 speakerMask) {
    if (!channel || speakerMask == 0)
        return kResultFalse;
    channel->speakers = speakerMask;
    return kResultOk;
}

bool Track::accepts(TimelineNode& child) const {
    if (type == "folder")
        return is<Track>(child) && !is<TempoTrack>(child) && !is<SignatureTrack>(child);
    if (type == "audio")
        return is<AudioEvent>(child) || is<AudioPart>(child);
    if (type == "instrument")
        return is<MidiPart>(child);
    if (type == "video")
        return is<VideoEvent>(child);
    if (type == "marker")
        return is<MarkerEvent>(child);
    if (type == "tempo")
        return is<TempoEvent>(child);
    if (type == "signature")
        return is<SignatureEvent>(child);
    return false;
}

void Track::adopt(IPtr<TimelineNode> child) {
    attachChannels(mixer, *child);
    append(std::move(child));
}

FUnknown* Track::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid || iid == IHostObjectType::iid)
        return static_cast<IHostObjectType*>(this);
    if (FUnknown* face = Support::faceOf<IHostTrackChannel>(iid, this))
        return face;
    if (type == "audio")
        if (FUnknown* face = Support::faceOf<IHostTrackBus>(iid, this))
            return face;
    return TimelineNode::faceFor(iid);
}

void Track::dispose() {
    channel = nullptr;
    folder = nullptr;
    TimelineNode::dispose();
}

float TempoTrack::getTempoAt(double position) {
    const TempoEvent* last = nullptr;
    for (auto& child : children())
        if (auto* event = dynamic_cast<TempoEvent*>(child.get()); event && event->start <= position)
            if (!last || event->start >= last->start)
                last = event;
    return float(last ? last->bpm : fixedTempo);
}

tresult TempoTrack::setTempo(float bpm) {
    if (!(bpm > 0.0f))
        return kInvalidArgument;
    fixedTempo = bpm;
    return kResultOk;
}

FUnknown* TempoTrack::faceFor(const FUID& iid) { return Track::faceFor(iid); }

bool SignatureTrack::getSignatureAt(double position, QuorSignatureRecord* record) {
    if (!record)
        return false;
    uint16 top = numerator, bottom = denominator;
    double at = -1.0;
    for (auto& child : children())
        if (auto* event = dynamic_cast<SignatureEvent*>(child.get());
            event && event->start <= position && event->start >= at) {
            at = event->start;
            top = event->numerator;
            bottom = event->denominator;
        }
    record->numerator = top;
    record->denominator = bottom;
    return true;
}

tresult SignatureTrack::setSignature(int32, int32 top, int32 bottom) {
    if (top <= 0 || bottom <= 0 || top > 0xFFFF || bottom > 0xFFFF)
        return kInvalidArgument;
    numerator = uint16(top);
    denominator = uint16(bottom);
    return kResultOk;
}

FUnknown* SignatureTrack::faceFor(const FUID& iid) { return Track::faceFor(iid); }

Project::Project(Ledger& ledger, Mixer* mixer) : TimelineNode(ledger, "project"), mixer(mixer) {}

IHostTempoTrack* Project::getTempoTrack() {
    for (auto& child : children())
        if (auto* track = dynamic_cast<TempoTrack*>(child.get()))
            return track;
    return nullptr;
}

IHostSignatureTrack* Project::getSignatureTrack() {
    for (auto& child : children())
        if (auto* track = dynamic_cast<SignatureTrack*>(child.get()))
            return track;
    return nullptr;
}

IHostEditContext* Project::getEditContext(int32 index) {
    if (index != 0)
        return nullptr;
    return ledger().make<EditContext>(IPtr<TimelineNode>(this)).release();
}

IHostObjectType* Project::createTrack(const char8* type) {
    if (!type || !makeTrack || !isTrackType(type))
        return nullptr;
    IPtr<Track> track = makeTrack(type);
    return track ? static_cast<IHostObjectType*>(track.release()) : nullptr;
}

bool Project::accepts(TimelineNode& child) const { return is<Track>(child); }

void Project::adopt(IPtr<TimelineNode> child) {
    attachChannels(mixer, *child);
    append(std::move(child));
}

std::vector<Track*> Project::allTracks() const {
    std::vector<Track*> result;
    std::function<void(const TimelineNode&)> walk = [&](const TimelineNode& node) {
        for (auto& child : node.children())
            if (auto* track = dynamic_cast<Track*>(child.get())) {
                result.push_back(track);
                walk(*track);
            }
    };
    walk(*this);
    return result;
}

FUnknown* Project::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid)
        return static_cast<IHostProject*>(this);
    if (iid == IHostTimelineObject::iid || iid == IHostTimelineEvent::iid)
        return static_cast<IHostTimelineEvent*>(this);
    return nullptr;
}

void Project::dispose() {
    folder = nullptr;
    pool = nullptr;
    makeTrack = nullptr;
    TimelineNode::dispose();
}

} // namespace RefHost
} // namespace Halvorn
