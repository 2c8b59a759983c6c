// Timeline objects of the reference host: the common node with position, name and children,
// the iterator over children, and the parts and events that sit on tracks.
#pragma once

#include "hostapi/hostautomation.h"
#include "hostapi/hosttimeline.h"
#include "ledger.h"
#include "media.h"

#include <string>
#include <vector>

namespace Halvorn {
namespace RefHost {

// Positions are stored relative to the container (a track's items to the project's start, a
// part's events to the part), but read and written on the project's timeline, whatever the
// context: an event at 1.0 inside a part at 10.0 reads 11.0.
class TimelineNode : public HostObject, public IHostTimelineEvent {
public:
    TimelineNode(Ledger& ledger, const char* kind) : HostObject(ledger, kind) {}

    SUPPORT_COUNTED_UNKNOWN
    const char16* getName() override { return name.c_str(); }
    tresult setName(IHostEditContext* context, const char16* name,
                    IHostEditSession* session) override;
    tresult setSelected(IHostEditContext* context, bool selected) override;
    bool isMuted() override { return muted; }
    tresult setMuted(IHostEditContext* context, bool muted, IHostEditSession* session) override;
    double getStart(IHostEditContext* context) override { return start + originIn(context); }
    tresult setStart(IHostEditContext* context, double position,
                     IHostEditSession* session) override;
    double getLength(IHostEditContext*) override { return length; }
    tresult setLength(IHostEditContext* context, double length, IHostEditSession* session) override;
    double getOffset(IHostEditContext*) override { return offset; }
    tresult setOffset(IHostEditContext* context, double offset, IHostEditSession* session) override;
    IHostIterator* getChildren() override;
    tresult getColor(IHostEditContext* context, uint32* argb) override;
    tresult setColor(IHostEditContext* context, uint32 argb, IHostEditSession* session) override;

    std::string label() const override;
    // The face by which an iterator hands this object out.
    virtual FUnknown* itemFace() { return static_cast<IHostTimelineEvent*>(this); }
    // Whether child may be added below this object.
    virtual bool accepts(TimelineNode& child) const;
    const std::vector<IPtr<TimelineNode>>& children() const { return children_; }
    void append(IPtr<TimelineNode> child) {
        child->container_ = this;
        children_.push_back(std::move(child));
    }
    // Takes child in through an edit session; a container may do more than append it.
    virtual void adopt(IPtr<TimelineNode> child) { append(std::move(child)); }
    bool holds(const TimelineNode* child) const;
    // Puts child at index (at the end when index is past it) among this object's children,
    // taking it from the parent it has elsewhere if this object accepts it. Never makes an
    // object its own ancestor.
    [[nodiscard]] bool moveChild(TimelineNode* child, int32 index);

    std::string id;
    std::u16string name;
    bool muted = false;
    bool selected = false;
    double start = 0.0;
    double length = 0.0;
    double offset = 0.0;
    uint32 color = 0;
    bool hasColor = false;

protected:
    FUnknown* faceFor(const FUID& iid) override;
    void dispose() override;
    // Notes a change in session, when there is one.
    void record(IHostEditSession* session, const char* what);
    // Where this container's children are measured from, on the project's timeline: parts
    // measure from their own start, everything else from the project's.
    virtual double childOrigin() const { return container_ ? container_->childOrigin() : 0.0; }
    // Where this object's stored start is measured from.
    double origin() const { return container_ ? container_->childOrigin() : 0.0; }
    // The same for an object not yet in a container: measured against the object that the
    // context names, where it is about to go.
    double originIn(IHostEditContext* context) const;

private:
    // Borrowed: the container holds this object, never the other way round.
    TimelineNode* container_ = nullptr;
    std::vector<IPtr<TimelineNode>> children_;
};

// A walk over a snapshot of children.
class Iterator : public HostObject, public IHostIterator {
public:
    Iterator(Ledger& ledger, std::vector<IPtr<TimelineNode>> items)
        : HostObject(ledger, "iterator"), items_(std::move(items)) {}

    SUPPORT_COUNTED_UNKNOWN
    FUnknown* next() override;
    bool isDone() override { return position_ >= items_.size(); }

protected:
    FUnknown* faceFor(const FUID& iid) override;
    void dispose() override { items_.clear(); }

private:
    std::vector<IPtr<TimelineNode>> items_;
    size_t position_ = 0;
};

class AudioEvent : public TimelineNode, public IAudioEvent {
public:
    explicit AudioEvent(Ledger& ledger) : TimelineNode(ledger, "audio event") {}

    SUPPORT_COUNTED_UNKNOWN
    IHostAudioClip* getClip() override;
    tresult setClip(IHostEditContext* context, FUnknown* clip, IHostEditSession* session) override;
    double getFadeIn(IHostEditContext*) override { return fadeIn; }
    tresult setFadeIn(IHostEditContext* context, double length, IHostEditSession* session) override;
    double getFadeOut(IHostEditContext*) override { return fadeOut; }
    tresult setFadeOut(IHostEditContext* context, double length,
                       IHostEditSession* session) override;

    IPtr<AudioClip> clip;
    double fadeIn = 0.0;
    double fadeOut = 0.0;
    double stretch = 1.0;
    bool warped = false;

protected:
    FUnknown* faceFor(const FUID& iid) override;
    void dispose() override;
};

class AudioPart : public TimelineNode, public IAudioPart {
public:
    explicit AudioPart(Ledger& ledger) : TimelineNode(ledger, "audio part") {}

    SUPPORT_COUNTED_UNKNOWN
    tresult initialize(const char16* name, FUnknown* track) override;
    bool accepts(TimelineNode& child) const override;

protected:
    FUnknown* faceFor(const FUID& iid) override;
    double childOrigin() const override { return start + origin(); }
};

class MidiPart : public TimelineNode, public IMidiPart, public IHostMidiPartSetup {
public:
    explicit MidiPart(Ledger& ledger) : TimelineNode(ledger, "MIDI part") {}

    SUPPORT_COUNTED_UNKNOWN
    tresult initialize(const char16* name, FUnknown* track) override;
    bool accepts(TimelineNode& child) const override;

protected:
    FUnknown* faceFor(const FUID& iid) override;
    double childOrigin() const override { return start + origin(); }
};

class NoteEvent : public TimelineNode, public IMidiEvent, public IHostNoteEvent {
public:
    explicit NoteEvent(Ledger& ledger) : TimelineNode(ledger, "note") {}

    SUPPORT_COUNTED_UNKNOWN
    int32 getStatus() override { return 0x90; }
    int32 getChannel() override { return channel; }
    int32 getPitch() override { return pitch; }
    int32 getVelocity() override { return velocity; }
    tresult setPitch(IHostEditContext* context, int32 pitch, IHostEditSession* session) override;
    tresult setVelocity(IHostEditContext* context, int32 velocity,
                        IHostEditSession* session) override;
    tresult setReleaseVelocity(IHostEditContext* context, int32 velocity,
                               IHostEditSession* session) override;

    int32 channel = 0;
    int32 pitch = 60;
    int32 velocity = 100;
    int32 releaseVelocity = 0;

protected:
    FUnknown* faceFor(const FUID& iid) override;
};

class VideoEvent : public TimelineNode, public IVideoEvent {
public:
    explicit VideoEvent(Ledger& ledger) : TimelineNode(ledger, "video event") {}

    SUPPORT_COUNTED_UNKNOWN
    IHostMediaFile* getClip() override;
    tresult setClip(IHostEditContext* context, FUnknown* clip, IHostEditSession* session) override;

    IPtr<VideoClip> clip;

protected:
    FUnknown* faceFor(const FUID& iid) override;
    void dispose() override;
};

class MarkerEvent : public TimelineNode, public IMarkerObject {
public:
    explicit MarkerEvent(Ledger& ledger) : TimelineNode(ledger, "marker") {}

    SUPPORT_COUNTED_UNKNOWN

protected:
    FUnknown* faceFor(const FUID& iid) override;
};

class TempoEvent : public TimelineNode, public ITempoObject {
public:
    explicit TempoEvent(Ledger& ledger) : TimelineNode(ledger, "tempo event") {}

    SUPPORT_COUNTED_UNKNOWN
    float getTempo() override { return float(bpm); }
    tresult setTempo(IHostEditContext* context, float bpm, IHostEditSession* session) override;
    tresult setRamp(IHostEditContext* context, bool ramp, IHostEditSession* session) override;

    double bpm = 120.0;
    bool ramp = false;

protected:
    FUnknown* faceFor(const FUID& iid) override;
};

class SignatureEvent : public TimelineNode, public ISignatureObject {
public:
    explicit SignatureEvent(Ledger& ledger) : TimelineNode(ledger, "signature event") {}

    SUPPORT_COUNTED_UNKNOWN
    int32 getNumerator() override { return numerator; }
    int32 getDenominator() override { return denominator; }
    tresult setSignature(IHostEditContext* context, uint16 numerator, uint16 denominator,
                         IHostEditSession* session, int32 extra) override;

    uint16 numerator = 4;
    uint16 denominator = 4;

protected:
    FUnknown* faceFor(const FUID& iid) override;
};

class AutomationPoint : public TimelineNode, public IHostAutomationPoint {
public:
    explicit AutomationPoint(Ledger& ledger) : TimelineNode(ledger, "automation point") {}

    SUPPORT_COUNTED_UNKNOWN
    float getValue() override { return float(value); }
    tresult setValue(IHostEditContext* context, float value, IHostEditSession* session) override;

    double value = 0.0;

protected:
    FUnknown* faceFor(const FUID& iid) override;
};

} // namespace RefHost
} // namespace Halvorn
