// CvTime, CvEvent and every event class, CvClip with its events, and CvWarpPoint.
#pragma once

#include "corvelle/mediaclip.h"
#include "corvelle/mediaparameter.h"
#include "model/cvfile.h"

namespace Halvorn {

// Start, duration and offset in seconds, all 0.0 at first.
class CvTime : public CvObject, public IMediaTime {
public:
    CV_DECLARE_TYPE(CvTime, CvObject)
    CV_REFCOUNT_METHODS(CvObject)

    CvTime() = default;

    tresult queryInterface(const FUID& iid, void** object) override;

    double getStart() override { return start_; }
    double getDuration() override { return duration_; }
    double getOffset() override { return offset_; }
    void setStart(double start) { start_ = start; }
    void setDuration(double duration) { duration_ = duration; }
    void setOffset(double offset) { offset_ = offset; }

protected:
    ~CvTime() override = default;

private:
    double start_ = 0.0;
    double duration_ = 0.0;
    double offset_ = 0.0;
};

// Everything with a time span, the clip included.
class CvEvent : public CvNode, public IMediaEvent {
public:
    CV_DECLARE_TYPE(CvEvent, CvNode)
    CV_REFCOUNT_METHODS(CvNode)

    CvEvent(uint32 eventType, const String& id);

    tresult queryInterface(const FUID& iid, void** object) override;

    uint32 getEventType() override { return eventType_; }
    IMediaTime* getTime() override { return time_.get(); }
    bool isMuted() override { return muted_; }

    void setStart(double start) { time_->setStart(start); }
    void setDuration(double duration) { time_->setDuration(duration); }
    void setOffset(double offset) { time_->setOffset(offset); }
    void setMuted(bool muted) { muted_ = muted; }

protected:
    ~CvEvent() override;

private:
    IPtr<CvTime> time_;
    uint32 eventType_;
    bool muted_ = false;
};

// A span on a track's timeline holding events of its event type; the events' times are
// relative to the clip's content.
class CvClip : public CvEvent, public IMediaClip {
public:
    CV_DECLARE_TYPE(CvClip, CvEvent)
    CV_REFCOUNT_METHODS(CvEvent)

    CvClip(uint32 eventType, const String& id);

    tresult queryInterface(const FUID& iid, void** object) override;

    uint32 getEventType() override { return CvEvent::getEventType(); }
    IMediaTime* getTime() override { return CvEvent::getTime(); }
    uint32 getEventCount() override;
    IMediaEvent* getEvent(uint32 index) override;
    double getFadeInTime() override { return fadeInTime_; }
    double getFadeOutTime() override { return fadeOutTime_; }

    // Plain add: no test for duplicates.
    void addEvent(CvEvent* event);
    TArray<CvEvent*> getEvents() const;
    void setFadeInTime(double seconds) { fadeInTime_ = seconds; }
    void setFadeOutTime(double seconds) { fadeOutTime_ = seconds; }

protected:
    ~CvClip() override;

private:
    TArray<IPtr<CvEvent>> events_;
    double fadeInTime_ = 0.0;
    double fadeOutTime_ = 0.0;
};

// time: a place in the clip's content; contentTime: the place in the file that plays there.
class CvWarpPoint : public CvObject, public IMediaWarpPoint {
public:
    CV_DECLARE_TYPE(CvWarpPoint, CvObject)
    CV_REFCOUNT_METHODS(CvObject)

    CvWarpPoint(double time, double contentTime) : time_(time), contentTime_(contentTime) {}
    // A point read from a project document, which holds the two times the other way round:
    // the document's contentTime becomes the point's time. The playback rate of a read event
    // depends on this exchange, so it is kept.
    static IPtr<CvWarpPoint> fromDocument(double documentTime, double documentContentTime) {
        return newObject<CvWarpPoint>(documentContentTime, documentTime);
    }

    tresult queryInterface(const FUID& iid, void** object) override;

    double getTime() override { return time_; }
    double getContentTime() override { return contentTime_; }

protected:
    ~CvWarpPoint() override = default;

private:
    double time_;
    double contentTime_;
};

class CvAudioEvent : public CvEvent, public ICvFileAccessor, public IMediaAudioEvent {
public:
    CV_DECLARE_TYPE(CvAudioEvent, CvEvent)
    CV_REFCOUNT_METHODS(CvEvent)

    explicit CvAudioEvent(const String& id);

    tresult queryInterface(const FUID& iid, void** object) override;

    CvFile* getFile() override { return file_.get(); }
    void setFile(const char16* path, bool external) override;

    const char16* getFilePath() override { return file_->getPath().text16(); }
    uint32 getWarpCount() override;
    IMediaWarpPoint* getWarp(uint32 index) override;
    double getPlaybackRate() override;
    tresult getFormat(uint32* sampleRate, uint32* channelCount, double* duration) override;

    // Plain add.
    void addWarpPoint(CvWarpPoint* point);
    void setFormat(uint32 sampleRate, uint32 channelCount, double duration);

protected:
    ~CvAudioEvent() override;

private:
    TArray<IPtr<CvWarpPoint>> warpPoints_;
    IPtr<CvFile> file_;
    double duration_ = 0.0; // of the file
    uint32 sampleRate_ = 44100;
    uint32 channelCount_ = 1;
};

class CvVideoEvent : public CvEvent, public ICvFileAccessor, public IMediaVideoEvent {
public:
    CV_DECLARE_TYPE(CvVideoEvent, CvEvent)
    CV_REFCOUNT_METHODS(CvEvent)

    explicit CvVideoEvent(const String& id);

    tresult queryInterface(const FUID& iid, void** object) override;

    CvFile* getFile() override { return file_.get(); }
    void setFile(const char16* path, bool external) override;

    const char16* getFilePath() override { return file_->getPath().text16(); }
    tresult getFormat(uint32* sampleRate, uint64* frameCount, double* duration) override;

    void setFormat(uint32 sampleRate, uint64 frameCount, double duration);

protected:
    ~CvVideoEvent() override;

private:
    IPtr<CvFile> file_;
    double duration_ = 0.0;
    uint64 frameCount_ = 0;
    uint32 sampleRate_ = 0;
};

class CvMidiEvent : public CvEvent, public IMediaMidiEvent {
public:
    CV_DECLARE_TYPE(CvMidiEvent, CvEvent)
    CV_REFCOUNT_METHODS(CvEvent)

    CvMidiEvent(uint32 status, uint32 channel, uint32 data1, uint32 data2)
        : CvEvent(kEventMidi, {}), status_(status), channel_(channel), data1_(data1),
          data2_(data2) {}

    tresult queryInterface(const FUID& iid, void** object) override;

    uint32 getStatus() override { return status_; }
    uint32 getChannel() override { return channel_; }
    uint32 getData1() override { return data1_; }
    uint32 getData2() override { return data2_; }

protected:
    ~CvMidiEvent() override = default;

private:
    uint32 status_;
    uint32 channel_;
    uint32 data1_;
    uint32 data2_;
};

// A note on: status 144, data1 the key, data2 the velocity on the 0 to 127 scale.
class CvMidiNoteEvent : public CvMidiEvent, public IMediaMidiNoteEvent {
public:
    CV_DECLARE_TYPE(CvMidiNoteEvent, CvMidiEvent)
    CV_REFCOUNT_METHODS(CvMidiEvent)

    // velocity from 0.0 to 1.0; kept clamped to that range.
    CvMidiNoteEvent(uint32 key, double velocity, uint32 channel);

    tresult queryInterface(const FUID& iid, void** object) override;

    uint32 getKey() override { return key_; }
    double getVelocity() override { return velocity_; }

protected:
    ~CvMidiNoteEvent() override = default;

private:
    double velocity_;
    uint32 key_;
};

// The marker's text is the node's name, its colour the node's colour.
class CvMarkerEvent : public CvEvent, public IMediaMarkerEvent {
public:
    CV_DECLARE_TYPE(CvMarkerEvent, CvEvent)
    CV_REFCOUNT_METHODS(CvEvent)

    CvMarkerEvent() : CvEvent(kEventMarker, {}) {}

    tresult queryInterface(const FUID& iid, void** object) override;

    // Its meaning isn't settled and nothing sets it, so it stays false.
    bool getFlag() override { return false; }

protected:
    ~CvMarkerEvent() override = default;
};

class CvTempoEvent : public CvEvent, public IMediaTempoEvent {
public:
    CV_DECLARE_TYPE(CvTempoEvent, CvEvent)
    CV_REFCOUNT_METHODS(CvEvent)

    CvTempoEvent() : CvEvent(kEventTempo, {}) {}

    tresult queryInterface(const FUID& iid, void** object) override;

    double getTempo() override { return tempo_; }
    uint32 getInterpolation() override { return interpolation_; }
    void setTempo(double bpm) { tempo_ = bpm; }
    void setInterpolation(uint32 interpolation) { interpolation_ = interpolation; }

protected:
    ~CvTempoEvent() override = default;

private:
    double tempo_ = 120.0;
    uint32 interpolation_ = kInterpolationHold;
};

class CvSignatureEvent : public CvEvent, public IMediaSignatureEvent {
public:
    CV_DECLARE_TYPE(CvSignatureEvent, CvEvent)
    CV_REFCOUNT_METHODS(CvEvent)

    CvSignatureEvent() : CvEvent(kEventSignature, {}) {}

    tresult queryInterface(const FUID& iid, void** object) override;

    uint16 getNumerator() override { return numerator_; }
    uint16 getDenominator() override { return denominator_; }
    void setNumerator(uint16 numerator) { numerator_ = numerator; }
    void setDenominator(uint16 denominator) { denominator_ = denominator; }

protected:
    ~CvSignatureEvent() override = default;

private:
    uint16 numerator_ = 4;
    uint16 denominator_ = 4;
};

} // namespace Halvorn
