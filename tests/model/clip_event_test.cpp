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

TEST(ClipEvent, ClipHoldsEventsInOrderWithDuplicatesAndAnswersOnlyForItsFaces) {
    auto clip = newObject<CvClip>(kEventAudio, "clip");
    auto first = newObject<CvAudioEvent>("e1");
    clip->addEvent(first.get());
    clip->addEvent(newObject<CvAudioEvent>("e2").get());
    clip->addEvent(first.get()); // plain add keeps duplicates
    clip->addEvent(nullptr);

    // The time object is one, whichever face asks, and it follows the setters.
    IMediaClip* face = clip.get();
    IMediaTime* time = face->getTime();
    clip->setStart(4.0);
    EXPECT_EQ(static_cast<IMediaEvent*>(clip.get())->getTime(), time);
    EXPECT_EQ(time->getStart(), 4.0);
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

    // A tempo or signature event made without values holds the usual ones.
    EXPECT_EQ(newObject<CvTempoEvent>()->getTempo(), 120.0);
    EXPECT_EQ(newObject<CvTempoEvent>()->getInterpolation(), kInterpolationHold);
    EXPECT_EQ(newObject<CvSignatureEvent>()->getNumerator(), 4);
    EXPECT_EQ(newObject<CvSignatureEvent>()->getDenominator(), 4);
}

// Null out-parameters are allowed; a video's frame count needs all 64 bits.
TEST(ClipEvent, MediaEventFormatsAndFiles) {
    auto audio = newObject<CvAudioEvent>("take");
    IMediaAudioEvent* face = audio.get();
    EXPECT_EQ(face->getWarp(0), nullptr);
    EXPECT_EQ(face->getPlaybackRate(), 1.0);
    EXPECT_EQ(audio->getFile()->getType(), kCvFileAudio);
    uint32 rate = 0, channels = 0;
    double length = -1.0;
    EXPECT_EQ(face->getFormat(&rate, &channels, &length), kResultOk);
    EXPECT_EQ(rate, 44100u);
    EXPECT_EQ(channels, 1u);
    EXPECT_EQ(length, 0.0);
    EXPECT_EQ(face->getFormat(nullptr, nullptr, nullptr), kResultOk);

    auto video = newObject<CvVideoEvent>("film");
    uint64 frames = 1;
    video->setFormat(48000, 5000000000ull, 104.2);
    EXPECT_EQ(static_cast<IMediaVideoEvent*>(video.get())->getFormat(nullptr, &frames, nullptr),
              kResultOk);
    EXPECT_EQ(frames, 5000000000ull);
    video->setFile(u"/media/film.mp4", true);
    EXPECT_EQ(video->getFile()->getType(), kCvFileVideo);
    EXPECT_TRUE(video->getFile()->isExternal());
    EXPECT_FALSE(queryInterface<IMediaAudioEvent>(static_cast<IMediaVideoEvent*>(video.get())));
}

// A note's MIDI bytes from key and velocity, and a velocity above 1, are in the document outlines.
TEST(ClipEvent, NoteEventMidiBytesAndClampedVelocity) {
    auto note = newObject<CvMidiNoteEvent>(60, 0.5, 1);
    auto quiet = newObject<CvMidiNoteEvent>(62, -0.5, 0);
    EXPECT_EQ(static_cast<IMediaMidiNoteEvent*>(quiet.get())->getVelocity(), 0.0);
    EXPECT_EQ(static_cast<IMediaMidiEvent*>(quiet.get())->getData2(), 0u);

    auto plain = newObject<CvMidiEvent>(176, 2, 7, 100);
    EXPECT_EQ(static_cast<IMediaMidiEvent*>(plain.get())->getData2(), 100u);
    EXPECT_FALSE(queryInterface<IMediaMidiNoteEvent>(static_cast<IMediaEvent*>(plain.get())));
    EXPECT_TRUE(queryInterface<IMediaMidiEvent>(static_cast<IMediaMidiNoteEvent*>(note.get())));
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
