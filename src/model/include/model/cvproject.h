// CvProject, the root of a model, with CvSignature and CvTimeDomain, the beat converter.
#pragma once

#include "corvelle/mediaproject.h"
#include "model/cvtrack.h"

#include <cmath>

namespace Halvorn {

class CvSignature : public CvNode, public IMediaSignature {
public:
    CV_DECLARE_TYPE(CvSignature, CvNode)
    CV_REFCOUNT_METHODS(CvNode)

    CvSignature(uint16 numerator, uint16 denominator, const String& id)
        : CvNode({}, id), numerator_(numerator), denominator_(denominator) {}

    tresult queryInterface(const FUID& iid, void** object) override;

    uint16 getNumerator() override { return numerator_; }
    uint16 getDenominator() override { return denominator_; }

protected:
    ~CvSignature() override = default;

private:
    uint16 numerator_;
    uint16 denominator_;
};

// Converts beats and seconds at one tempo. The model holds seconds only; the document reader
// converts beat times as it reads them.
class CvTimeDomain : public CvNode {
public:
    CV_DECLARE_TYPE(CvTimeDomain, CvNode)

    static constexpr double kDefaultBpm = 120.0;

    // A tempo that is not finite or not above 0 would turn every time into infinity or NaN;
    // the model's default stands in for it.
    explicit CvTimeDomain(double bpm) : bpm_(usable(bpm)) {}

    // A time too large for a double reads as 0 rather than as infinity.
    double beatsToSeconds(double beats) const {
        const double seconds = 60.0 / bpm_ * beats;
        return std::isfinite(seconds) ? seconds : 0.0;
    }
    double secondsToBeats(double seconds) const { return seconds / (60.0 / bpm_); }
    void setTempo(double bpm) { bpm_ = usable(bpm); }

protected:
    ~CvTimeDomain() override = default;

private:
    static double usable(double bpm) { return std::isfinite(bpm) && bpm > 0.0 ? bpm : kDefaultBpm; }

    double bpm_;
};

class CvProject : public CvObject, public IMediaProject {
public:
    CV_DECLARE_TYPE(CvProject, CvObject)
    CV_REFCOUNT_METHODS(CvObject)

    // Tempo 120 bpm within 1 to 300, signature 4/4, no tracks, no channels.
    CvProject(const String& applicationName, const String& applicationVersion);

    tresult queryInterface(const FUID& iid, void** object) override;

    const char16* getApplicationName() override { return applicationName_.text16(); }
    const char16* getApplicationVersion() override { return applicationVersion_.text16(); }
    uint32 getTrackCount() override;
    IMediaTrack* getTrack(uint32 index) override;
    CvParameter* getTempo() override { return tempo_.get(); }
    CvSignature* getTimeSignature() override { return timeSignature_.get(); }
    uint32 getChannelCount() override;
    IMediaChannel* getChannel(uint32 index) override;
    IMediaChannel* findChannel(const char16* id) override;

    // Unique adds.
    void addTrack(CvTrack* track);
    void addChannel(CvChannel* channel);
    // Replace; null keeps the old object, so neither is ever null.
    void setTempo(CvParameter* tempo);
    void setTimeSignature(CvSignature* signature);
    // All tracks, depth first: each track directly before its sub-tracks.
    TArray<CvTrack*> getAllTracks() const;
    // The first of getAllTracks with this id, or null.
    CvTrack* findTrack(const String& id) const;
    // Everything that carries a file: the media of audio and video tracks in track order, then
    // the devices of every channel. An object stands once for each way it is reached.
    TArray<ICvFileAccessor*> getFileAccessors() const;

protected:
    ~CvProject() override;

private:
    CvUniqueList<CvTrack> tracks_;
    CvUniqueList<CvChannel> channels_{true};
    IPtr<CvParameter> tempo_;
    IPtr<CvSignature> timeSignature_;
    String applicationName_;
    String applicationVersion_;
};

} // namespace Halvorn
