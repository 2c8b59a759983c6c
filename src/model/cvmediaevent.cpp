// The event kinds: audio with its playback rate, video, MIDI, note, marker, tempo, signature.
#include "model/cvevent.h"

#include "model/cvlist.h"

#include <cmath>

namespace Halvorn {

namespace {

double roundToFiveDecimals(double x) { return std::floor(x * 100000 + 0.5) / 100000; }

// Cuts to a whole number; below zero or not a number gives 0, beyond the range the largest.
uint32 cutToWhole(double x) {
    if (!(x > 0.0))
        return 0;
    return x >= 4294967295.0 ? 4294967295u : static_cast<uint32>(x);
}

double clampVelocity(double velocity) {
    return !(velocity > 0.0) ? 0.0 : (velocity > 1.0 ? 1.0 : velocity);
}

} // namespace

// Warp maps can be long: the list doubles as it grows.
CvAudioEvent::CvAudioEvent(const String& id)
    : CvEvent(kEventAudio, id), warpPoints_(-1), file_(CvFile::make(kCvFileAudio, nullptr, false)) {
}

CvAudioEvent::~CvAudioEvent() = default;

tresult CvAudioEvent::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, ICvFileAccessor)
    CV_QUERY(iid, object, IMediaAudioEvent)
    return CvEvent::queryInterface(iid, object);
}

void CvAudioEvent::setFile(const char16* path, bool external) {
    file_ = CvFile::make(kCvFileAudio, path, external);
}

uint32 CvAudioEvent::getWarpCount() { return listCount(warpPoints_); }

IMediaWarpPoint* CvAudioEvent::getWarp(uint32 index) {
    return listElement<IMediaWarpPoint>(warpPoints_, index);
}

// Only the last warp point counts, so a bent warp map still yields one average rate. A time that
// rounds to zero counts as zero, so that no infinite rate reaches the host.
double CvAudioEvent::getPlaybackRate() {
    if (!(getTime()->getDuration() > 0.0) || warpPoints_.total() < 2)
        return 1.0;
    CvWarpPoint* last = warpPoints_.at(warpPoints_.total() - 1).get();
    double time = roundToFiveDecimals(last->getTime());
    if (time == 0.0)
        return 1.0;
    return roundToFiveDecimals(last->getContentTime()) / time;
}

tresult CvAudioEvent::getFormat(uint32* sampleRate, uint32* channelCount, double* duration) {
    if (sampleRate)
        *sampleRate = sampleRate_;
    if (channelCount)
        *channelCount = channelCount_;
    if (duration)
        *duration = duration_;
    return kResultOk;
}

void CvAudioEvent::addWarpPoint(CvWarpPoint* point) { addToList(warpPoints_, point); }

void CvAudioEvent::setFormat(uint32 sampleRate, uint32 channelCount, double duration) {
    sampleRate_ = sampleRate;
    channelCount_ = channelCount;
    duration_ = duration;
}

CvVideoEvent::CvVideoEvent(const String& id)
    : CvEvent(kEventVideo, id), file_(CvFile::make(kCvFileVideo, nullptr, false)) {}

CvVideoEvent::~CvVideoEvent() = default;

tresult CvVideoEvent::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, ICvFileAccessor)
    CV_QUERY(iid, object, IMediaVideoEvent)
    return CvEvent::queryInterface(iid, object);
}

void CvVideoEvent::setFile(const char16* path, bool external) {
    file_ = CvFile::make(kCvFileVideo, path, external);
}

tresult CvVideoEvent::getFormat(uint32* sampleRate, uint64* frameCount, double* duration) {
    if (sampleRate)
        *sampleRate = sampleRate_;
    if (frameCount)
        *frameCount = frameCount_;
    if (duration)
        *duration = duration_;
    return kResultOk;
}

void CvVideoEvent::setFormat(uint32 sampleRate, uint64 frameCount, double duration) {
    sampleRate_ = sampleRate;
    frameCount_ = frameCount;
    duration_ = duration;
}

tresult CvMidiEvent::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaMidiEvent)
    return CvEvent::queryInterface(iid, object);
}

// data2 takes the velocity as given, cut to a whole number; only the stored velocity is clamped.
CvMidiNoteEvent::CvMidiNoteEvent(uint32 key, double velocity, uint32 channel)
    : CvMidiEvent(144, channel, key, cutToWhole(velocity * 127.0)),
      velocity_(clampVelocity(velocity)), key_(key) {}

tresult CvMidiNoteEvent::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaMidiNoteEvent)
    return CvMidiEvent::queryInterface(iid, object);
}

tresult CvMarkerEvent::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaMarkerEvent)
    return CvEvent::queryInterface(iid, object);
}

tresult CvTempoEvent::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaTempoEvent)
    return CvEvent::queryInterface(iid, object);
}

tresult CvSignatureEvent::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaSignatureEvent)
    return CvEvent::queryInterface(iid, object);
}

} // namespace Halvorn
