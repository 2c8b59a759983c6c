// Timeline nodes, the child iterator, and the parts and events of a track.
#include "timeline.h"
#include "editing.h"
#include "media.h"
#include "text.h"

#include <algorithm>

namespace Halvorn {
namespace RefHost {

std::string TimelineNode::label() const { return name.empty() ? id : toUtf8(name); }

void TimelineNode::record(IHostEditSession* session, const char* what) {
    if (auto* edit = hostCast<EditSession>(session))
        edit->note(std::string(what) + " " + kind() + " '" + label() + "'");
}

tresult TimelineNode::setName(IHostEditContext*, const char16* text, IHostEditSession* session) {
    name = fromBuffer(text);
    record(session, "rename");
    return kResultOk;
}

tresult TimelineNode::setSelected(IHostEditContext*, bool value) {
    selected = value;
    return kResultOk;
}

tresult TimelineNode::setMuted(IHostEditContext*, bool value, IHostEditSession* session) {
    muted = value;
    record(session, value ? "mute" : "unmute");
    return kResultOk;
}

double TimelineNode::originIn(IHostEditContext* context) const {
    if (container_)
        return container_->childOrigin();
    auto* place = hostCast<EditContext>(context);
    return place && place->node() ? place->node()->childOrigin() : 0.0;
}

tresult TimelineNode::setStart(IHostEditContext* context, double position,
                               IHostEditSession* session) {
    start = position - originIn(context);
    record(session, "move");
    return kResultOk;
}

tresult TimelineNode::setLength(IHostEditContext*, double value, IHostEditSession* session) {
    length = value;
    record(session, "resize");
    return kResultOk;
}

tresult TimelineNode::setOffset(IHostEditContext*, double value, IHostEditSession* session) {
    offset = value;
    record(session, "set offset of");
    return kResultOk;
}

IHostIterator* TimelineNode::getChildren() { return ledger().make<Iterator>(children_).release(); }

tresult TimelineNode::getColor(IHostEditContext*, uint32* argb) {
    if (!argb)
        return kInvalidArgument;
    if (!hasColor)
        return kResultFalse;
    *argb = color;
    return kResultOk;
}

tresult TimelineNode::setColor(IHostEditContext*, uint32 argb, IHostEditSession* session) {
    color = argb;
    hasColor = true;
    record(session, "colour");
    return kResultOk;
}

bool TimelineNode::accepts(TimelineNode&) const { return false; }

bool TimelineNode::holds(const TimelineNode* child) const {
    return std::any_of(children_.begin(), children_.end(),
                       [child](const IPtr<TimelineNode>& held) { return held.get() == child; });
}

bool TimelineNode::moveChild(TimelineNode* child, int32 index) {
    if (!child || index < 0)
        return false;
    for (const TimelineNode* above = this; above; above = above->container_)
        if (above == child)
            return false;
    TimelineNode* from = child->container_;
    if (!from || (from != this && !accepts(*child)))
        return false;
    auto found =
        std::find_if(from->children_.begin(), from->children_.end(),
                     [child](const IPtr<TimelineNode>& held) { return held.get() == child; });
    if (found == from->children_.end())
        return false;
    IPtr<TimelineNode> moved = std::move(*found);
    from->children_.erase(found);
    size_t at = std::min(size_t(index), children_.size());
    children_.insert(children_.begin() + std::ptrdiff_t(at), std::move(moved));
    child->container_ = this;
    return true;
}

void TimelineNode::dispose() {
    for (auto& child : children_)
        child->container_ = nullptr;
    children_.clear();
}

FUnknown* TimelineNode::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid || iid == IHostTimelineObject::iid || iid == IHostTimelineEvent::iid)
        return static_cast<IHostTimelineEvent*>(this);
    return nullptr;
}

FUnknown* Iterator::next() {
    if (position_ >= items_.size())
        return nullptr;
    return items_[position_++]->itemFace();
}

FUnknown* Iterator::faceFor(const FUID& iid) {
    return iid == FUnknown::iid ? static_cast<IHostIterator*>(this) : nullptr;
}

IHostAudioClip* AudioEvent::getClip() { return clip.get(); }

tresult AudioEvent::setClip(IHostEditContext*, FUnknown* face, IHostEditSession* session) {
    auto* newClip = hostCast<AudioClip>(face);
    if (!newClip)
        return kInvalidArgument;
    clip = newClip;
    record(session, "set clip of");
    return kResultOk;
}

tresult AudioEvent::setFadeIn(IHostEditContext*, double value, IHostEditSession* session) {
    fadeIn = value;
    record(session, "fade in");
    return kResultOk;
}

tresult AudioEvent::setFadeOut(IHostEditContext*, double value, IHostEditSession* session) {
    fadeOut = value;
    record(session, "fade out");
    return kResultOk;
}

FUnknown* AudioEvent::faceFor(const FUID& iid) {
    if (FUnknown* face = Support::faceOf<IAudioEvent>(iid, this))
        return face;
    return TimelineNode::faceFor(iid);
}

void AudioEvent::dispose() {
    clip = nullptr;
    TimelineNode::dispose();
}

namespace {
bool isAudioEvent(TimelineNode& node) { return dynamic_cast<AudioEvent*>(&node) != nullptr; }
} // namespace

tresult AudioPart::initialize(const char16* text, FUnknown*) {
    name = fromBuffer(text);
    return kResultOk;
}

bool AudioPart::accepts(TimelineNode& child) const { return isAudioEvent(child); }

FUnknown* AudioPart::faceFor(const FUID& iid) {
    if (FUnknown* face = Support::faceOf<IAudioPart>(iid, this))
        return face;
    return TimelineNode::faceFor(iid);
}

tresult MidiPart::initialize(const char16* text, FUnknown*) {
    name = fromBuffer(text);
    return kResultOk;
}

bool MidiPart::accepts(TimelineNode& child) const {
    return dynamic_cast<NoteEvent*>(&child) != nullptr;
}

FUnknown* MidiPart::faceFor(const FUID& iid) {
    if (FUnknown* face = Support::faceOf<IMidiPart>(iid, this))
        return face;
    if (FUnknown* face = Support::faceOf<IHostMidiPartSetup>(iid, this))
        return face;
    return TimelineNode::faceFor(iid);
}

tresult NoteEvent::setPitch(IHostEditContext*, int32 value, IHostEditSession* session) {
    pitch = value;
    record(session, "set pitch of");
    return kResultOk;
}

tresult NoteEvent::setVelocity(IHostEditContext*, int32 value, IHostEditSession* session) {
    velocity = value;
    record(session, "set velocity of");
    return kResultOk;
}

tresult NoteEvent::setReleaseVelocity(IHostEditContext*, int32 value, IHostEditSession* session) {
    releaseVelocity = value;
    record(session, "set release velocity of");
    return kResultOk;
}

FUnknown* NoteEvent::faceFor(const FUID& iid) {
    if (FUnknown* face = Support::faceOf<IMidiEvent>(iid, this))
        return face;
    if (FUnknown* face = Support::faceOf<IHostNoteEvent>(iid, this))
        return face;
    return TimelineNode::faceFor(iid);
}

IHostMediaFile* VideoEvent::getClip() { return clip.get(); }

tresult VideoEvent::setClip(IHostEditContext*, FUnknown* face, IHostEditSession* session) {
    auto* newClip = hostCast<VideoClip>(face);
    if (!newClip)
        return kInvalidArgument;
    clip = newClip;
    record(session, "set clip of");
    return kResultOk;
}

FUnknown* VideoEvent::faceFor(const FUID& iid) {
    if (FUnknown* face = Support::faceOf<IVideoEvent>(iid, this))
        return face;
    return TimelineNode::faceFor(iid);
}

void VideoEvent::dispose() {
    clip = nullptr;
    TimelineNode::dispose();
}

FUnknown* MarkerEvent::faceFor(const FUID& iid) {
    if (FUnknown* face = Support::faceOf<IMarkerObject>(iid, this))
        return face;
    return TimelineNode::faceFor(iid);
}

tresult TempoEvent::setTempo(IHostEditContext*, float value, IHostEditSession* session) {
    bpm = value;
    record(session, "set tempo of");
    return kResultOk;
}

tresult TempoEvent::setRamp(IHostEditContext*, bool value, IHostEditSession* session) {
    ramp = value;
    record(session, "set ramp of");
    return kResultOk;
}

FUnknown* TempoEvent::faceFor(const FUID& iid) {
    if (FUnknown* face = Support::faceOf<ITempoObject>(iid, this))
        return face;
    return TimelineNode::faceFor(iid);
}

tresult SignatureEvent::setSignature(IHostEditContext*, uint16 top, uint16 bottom,
                                     IHostEditSession* session, int32) {
    if (top == 0 || bottom == 0)
        return kInvalidArgument;
    numerator = top;
    denominator = bottom;
    record(session, "set signature of");
    return kResultOk;
}

FUnknown* SignatureEvent::faceFor(const FUID& iid) {
    if (FUnknown* face = Support::faceOf<ISignatureObject>(iid, this))
        return face;
    return TimelineNode::faceFor(iid);
}

tresult AutomationPoint::setValue(IHostEditContext*, float newValue, IHostEditSession* session) {
    value = newValue;
    record(session, "set value of");
    return kResultOk;
}

FUnknown* AutomationPoint::faceFor(const FUID& iid) {
    if (FUnknown* face = Support::faceOf<IHostAutomationPoint>(iid, this))
        return face;
    // A point is a timeline object without a colour.
    if (iid == IHostTimelineEvent::iid)
        return nullptr;
    return TimelineNode::faceFor(iid);
}

} // namespace RefHost
} // namespace Halvorn
