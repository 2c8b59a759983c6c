// Clips and events: defaults, the note's MIDI bytes, formats and the playback rate.
#include "model/cvevent.h"
#include "modeltest.h"

#include <gtest/gtest.h>

namespace Halvorn {
namespace {

IPtr<CvAudioEvent> warped(double duration,
                          std::initializer_list<std::pair<double, double>> points) {
    auto event = newObject<CvAudioEvent>("a");
    event->setDuration(duration);
    for (const auto& point : points)
        event->addWarpPoint(newObject<CvWarpPoint>(point.first, point.second).get());
    return event;
}

TEST(ClipEvent, EventTimeAndMuteGoThroughTheTimeObject) {
    auto event = newObject<CvMarkerEvent>();
    IMediaEvent* face = event.get();
    EXPECT_EQ(face->getEventType(), kEventMarker);
    EXPECT_FALSE(face->isMuted());
    IMediaTime* time = face->getTime();
    ASSERT_NE(time, nullptr);
    EXPECT_EQ(time->getStart(), 0.0);
    EXPECT_EQ(time->getDuration(), 0.0);
    EXPECT_EQ(time->getOffset(), 0.0);
    event->setStart(1.5);
    event->setDuration(2.25);
    event->setOffset(0.125);
    event->setMuted(true);
    EXPECT_EQ(face->getTime(), time);
    EXPECT_EQ(time->getStart(), 1.5);
    EXPECT_EQ(time->getDuration(), 2.25);
    EXPECT_EQ(time->getOffset(), 0.125);
    EXPECT_TRUE(face->isMuted());
    EXPECT_FALSE(static_cast<IMediaMarkerEvent*>(event.get())->getFlag());
    EXPECT_EQ(utf8(static_cast<IMediaObject*>(event.get())->getId()), "");
}

TEST(ClipEvent, ClipHoldsEventsInOrderWithDuplicatesAndAnswersOnlyForItsFaces) {
    auto clip = newObject<CvClip>(kEventAudio, "clip");
    auto first = newObject<CvAudioEvent>("e1");
    clip->addEvent(first.get());
    clip->addEvent(newObject<CvAudioEvent>("e2").get());
    clip->addEvent(first.get()); // plain add keeps duplicates
    clip->addEvent(nullptr);
    clip->setStart(4.0);
    clip->setFadeInTime(0.5);
    clip->setFadeOutTime(0.75);

    IMediaClip* face = clip.get();
    EXPECT_EQ(face->getEventType(), kEventAudio);
    EXPECT_EQ(face->getTime()->getStart(), 4.0);
    EXPECT_EQ(face->getTime(), static_cast<IMediaEvent*>(clip.get())->getTime());
    EXPECT_EQ(face->getFadeInTime(), 0.5);
    EXPECT_EQ(face->getFadeOutTime(), 0.75);
    ASSERT_EQ(face->getEventCount(), 3u);
    EXPECT_EQ(face->getEvent(2), static_cast<IMediaEvent*>(first.get()));
    EXPECT_EQ(face->getEvent(3), nullptr);
    EXPECT_EQ(face->getEvent(0xFFFFFFFFu), nullptr);
    EXPECT_EQ(first->refCount(), 3);
    EXPECT_EQ(clip->getEvents().total(), 3);

    EXPECT_TRUE(queryInterface<IMediaEvent>(face));
    EXPECT_TRUE(queryInterface<IMediaObject>(face));
    void* out = reinterpret_cast<void*>(1);
    EXPECT_EQ(face->queryInterface(IMediaAudioEvent::iid, &out), kNoInterface);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(face->queryInterface(IMediaAudioEvent::iid, nullptr), kInvalidArgument);
    EXPECT_EQ(clip->refCount(), 1);
}

TEST(ClipEvent, AudioEventDefaultsFormatAndFile) {
    auto event = newObject<CvAudioEvent>("take");
    IMediaAudioEvent* face = event.get();
    EXPECT_EQ(static_cast<IMediaEvent*>(event.get())->getEventType(), kEventAudio);
    EXPECT_EQ(face->getWarpCount(), 0u);
    EXPECT_EQ(face->getWarp(0), nullptr);
    EXPECT_EQ(face->getPlaybackRate(), 1.0);
    EXPECT_EQ(utf8(face->getFilePath()), "");
    EXPECT_EQ(event->getFile()->getType(), kCvFileAudio);
    uint32 rate = 0, channels = 0;
    double length = -1.0;
    EXPECT_EQ(face->getFormat(&rate, &channels, &length), kResultOk);
    EXPECT_EQ(rate, 44100u);
    EXPECT_EQ(channels, 1u);
    EXPECT_EQ(length, 0.0);
    EXPECT_EQ(face->getFormat(nullptr, nullptr, nullptr), kResultOk);

    event->setFormat(48000, 2, 12.5);
    channels = 0;
    EXPECT_EQ(face->getFormat(nullptr, &channels, nullptr), kResultOk);
    EXPECT_EQ(channels, 2u);
    event->setFile(u"audio/take 1.wav", false);
    EXPECT_EQ(utf8(face->getFilePath()), "audio/take 1.wav");
}

TEST(ClipEvent, VideoEventFormatAndFile) {
    auto event = newObject<CvVideoEvent>("film");
    IMediaVideoEvent* face = event.get();
    EXPECT_EQ(static_cast<IMediaEvent*>(event.get())->getEventType(), kEventVideo);
    uint32 rate = 1;
    uint64 frames = 1;
    double length = 1.0;
    EXPECT_EQ(face->getFormat(&rate, &frames, &length), kResultOk);
    EXPECT_EQ(rate, 0u);
    EXPECT_EQ(frames, 0u);
    EXPECT_EQ(length, 0.0);
    event->setFormat(48000, 5000000000ull, 104.2);
    EXPECT_EQ(face->getFormat(nullptr, &frames, nullptr), kResultOk);
    EXPECT_EQ(frames, 5000000000ull);
    event->setFile(u"/media/film.mp4", true);
    EXPECT_EQ(event->getFile()->getType(), kCvFileVideo);
    EXPECT_TRUE(event->getFile()->isExternal());
    EXPECT_EQ(utf8(face->getFilePath()), "/media/film.mp4");
    EXPECT_FALSE(queryInterface<IMediaAudioEvent>(face));
}

TEST(ClipEvent, NoteEventMidiBytesAndClampedVelocity) {
    auto note = newObject<CvMidiNoteEvent>(60, 0.5, 1);
    IMediaMidiEvent* midi = note.get();
    EXPECT_EQ(static_cast<IMediaEvent*>(note.get())->getEventType(), kEventMidi);
    EXPECT_EQ(midi->getStatus(), 144u);
    EXPECT_EQ(midi->getChannel(), 1u);
    EXPECT_EQ(midi->getData1(), 60u);
    EXPECT_EQ(midi->getData2(), 63u); // 63.5 cut down
    EXPECT_EQ(static_cast<IMediaMidiNoteEvent*>(note.get())->getKey(), 60u);
    EXPECT_EQ(static_cast<IMediaMidiNoteEvent*>(note.get())->getVelocity(), 0.5);

    auto loud = newObject<CvMidiNoteEvent>(61, 1.5, 0);
    EXPECT_EQ(static_cast<IMediaMidiNoteEvent*>(loud.get())->getVelocity(), 1.0);
    auto quiet = newObject<CvMidiNoteEvent>(62, -0.5, 0);
    EXPECT_EQ(static_cast<IMediaMidiNoteEvent*>(quiet.get())->getVelocity(), 0.0);
    EXPECT_EQ(static_cast<IMediaMidiEvent*>(quiet.get())->getData2(), 0u);

    auto plain = newObject<CvMidiEvent>(176, 2, 7, 100);
    EXPECT_EQ(static_cast<IMediaMidiEvent*>(plain.get())->getData2(), 100u);
    EXPECT_FALSE(queryInterface<IMediaMidiNoteEvent>(static_cast<IMediaEvent*>(plain.get())));
    EXPECT_TRUE(queryInterface<IMediaMidiEvent>(static_cast<IMediaMidiNoteEvent*>(note.get())));
}

TEST(ClipEvent, TempoAndSignatureEventDefaults) {
    auto tempo = newObject<CvTempoEvent>();
    IMediaTempoEvent* tempoFace = tempo.get();
    EXPECT_EQ(tempoFace->getTempo(), 120.0);
    EXPECT_EQ(tempoFace->getInterpolation(), kInterpolationHold);
    tempo->setTempo(133.0);
    tempo->setInterpolation(kInterpolationLinear);
    EXPECT_EQ(tempoFace->getTempo(), 133.0);
    EXPECT_EQ(tempoFace->getInterpolation(), kInterpolationLinear);
    EXPECT_EQ(static_cast<IMediaEvent*>(tempo.get())->getEventType(), kEventTempo);

    auto signature = newObject<CvSignatureEvent>();
    IMediaSignatureEvent* signatureFace = signature.get();
    EXPECT_EQ(signatureFace->getNumerator(), 4);
    EXPECT_EQ(signatureFace->getDenominator(), 4);
    signature->setNumerator(6);
    signature->setDenominator(8);
    EXPECT_EQ(signatureFace->getNumerator(), 6);
    EXPECT_EQ(signatureFace->getDenominator(), 8);
    EXPECT_EQ(static_cast<IMediaEvent*>(signature.get())->getEventType(), kEventSignature);
}

TEST(ClipEvent, PlaybackRateReadsTheLastWarpPoint) {
    EXPECT_DOUBLE_EQ(warped(10.0, {{0, 0}, {10, 20}})->getPlaybackRate(), 2.0);
    EXPECT_DOUBLE_EQ(warped(10.0, {{0, 0}, {4, 2}, {10, 5}})->getPlaybackRate(), 0.5);
    EXPECT_DOUBLE_EQ(warped(10.0, {{0, 0}, {10, 5}, {8, 12}})->getPlaybackRate(), 1.5);
    EXPECT_EQ(warped(0.0, {{0, 0}, {10, 20}})->getPlaybackRate(), 1.0); // no length
    EXPECT_EQ(warped(-1.0, {{0, 0}, {10, 20}})->getPlaybackRate(), 1.0);
    EXPECT_EQ(warped(10.0, {{10, 20}})->getPlaybackRate(), 1.0);        // one point
    EXPECT_EQ(warped(10.0, {{3, 3}, {0, 20}})->getPlaybackRate(), 1.0); // last at time 0
    // Both sides are rounded to five decimals before dividing.
    EXPECT_DOUBLE_EQ(warped(1.0, {{0, 0}, {3.000004, 6.000006}})->getPlaybackRate(), 6.00001 / 3.0);
    EXPECT_EQ(warped(1.0, {{0, 0}, {0.000004, 1.0}})->getPlaybackRate(), 1.0); // rounds to 0

    auto event = warped(10.0, {{0, 0}, {10, 20}});
    IMediaWarpPoint* point = static_cast<IMediaAudioEvent*>(event.get())->getWarp(1);
    ASSERT_NE(point, nullptr);
    EXPECT_EQ(point->getTime(), 10.0);
    EXPECT_EQ(point->getContentTime(), 20.0);
    EXPECT_EQ(static_cast<IMediaAudioEvent*>(event.get())->getWarp(2), nullptr);
}

} // namespace
} // namespace Halvorn
