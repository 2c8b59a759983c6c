// Export of the seven track types with their clips and events.
#include "exportfixture.h"

#include "corvelle/mediaclip.h"

namespace Halvorn {
namespace ExportTest {

using TrackExportTest = ExportTest;

namespace {
IMediaEvent* eventAt(IMediaTrack* track, uint32 clip, uint32 event) {
    return track->getClip(clip)->getEvent(event);
}
} // namespace

TEST_F(TrackExportTest, AudioClipsFadesFileFactsAndWarps) {
    edit([](nlohmann::json& session) {
        auto& items = entry(session["project"]["tracks"], "drums")["items"];
        items[0]["fadeIn"] = 0.000001;
        items.push_back({{"kind", "audio"},
                         {"name", "Slow"},
                         {"start", 8.0},
                         {"length", 1.5},
                         {"offset", 0.5},
                         {"media", "loop"},
                         {"stretch", 2.0}});
    });
    IPtr<IMediaProject> model = exportModel();
    ASSERT_TRUE(model);
    IMediaTrack* drums = findTrack(model.get(), "Drums");
    ASSERT_TRUE(drums);
    EXPECT_EQ(drums->getContentType(), uint32(kContentAudio));
    // A track the host hasn't loaded is left out.
    EXPECT_FALSE(findTrack(model.get(), "Markers"));
    // The audio part's own events are left out: only the track's direct audio events count.
    ASSERT_EQ(drums->getClipCount(), 2u);
    IMediaClip* loop = drums->getClip(0);
    EXPECT_EQ(loop->getFadeInTime(), 0.0);
    EXPECT_DOUBLE_EQ(loop->getFadeOutTime(), 0.1);
    auto audio = queryInterface<IMediaAudioEvent>(eventAt(drums, 0, 0));
    ASSERT_TRUE(audio);
    uint32 rate = 0, channels = 0;
    double length = 0.0;
    ASSERT_EQ(audio->getFormat(&rate, &channels, &length), kResultOk);
    EXPECT_EQ(rate, 44100u);
    EXPECT_EQ(channels, 2u);
    EXPECT_DOUBLE_EQ(length, 1.0);
    EXPECT_EQ(utf8(audio->getFilePath()), folder->path() + "/media/loop.wav");
    EXPECT_EQ(audio->getWarpCount(), 0u);

    auto slow = queryInterface<IMediaAudioEvent>(eventAt(drums, 1, 0));
    ASSERT_EQ(slow->getWarpCount(), 2u);
    EXPECT_DOUBLE_EQ(slow->getWarp(0)->getTime(), 0.0);
    EXPECT_DOUBLE_EQ(slow->getWarp(1)->getTime(), 0.5 + 1.5);
    EXPECT_DOUBLE_EQ(slow->getWarp(1)->getContentTime(), 1.0);
}

TEST_F(TrackExportTest, NotesLieInTheirClipsContent) {
    edit([](nlohmann::json& session) {
        auto& part = entry(session["project"]["tracks"], "keys")["items"][0];
        part["start"] = 10.0;
        part["offset"] = 2.0;
        part["notes"][0]["start"] = 1.0;
        part["notes"][0]["velocity"] = 127;
        part["notes"][1]["velocity"] = 64;
    });
    IPtr<IMediaProject> model = exportModel();
    IMediaTrack* keys = findTrack(model.get(), "Keys");
    ASSERT_TRUE(keys);
    ASSERT_EQ(keys->getClipCount(), 1u);
    EXPECT_DOUBLE_EQ(keys->getClip(0)->getTime()->getStart(), 10.0);
    ASSERT_EQ(keys->getClip(0)->getEventCount(), 2u);
    // The host reads the first note at 11.0 on the timeline: 1.0 into the clip, 2.0 offset.
    IMediaEvent* first = eventAt(keys, 0, 0);
    EXPECT_DOUBLE_EQ(first->getTime()->getStart(), 3.0);
    EXPECT_DOUBLE_EQ(first->getTime()->getDuration(), 1.0);
    EXPECT_DOUBLE_EQ(queryInterface<IMediaMidiNoteEvent>(first)->getVelocity(), 1.0);
    auto second = queryInterface<IMediaMidiNoteEvent>(eventAt(keys, 0, 1));
    EXPECT_NEAR(second->getVelocity(), 64.0 / 127.0, 1e-9);
    EXPECT_EQ(second->getKey(), 64u);
}

TEST_F(TrackExportTest, TimelineTracksFoldersAndLeftOutTracks) {
    edit([](nlohmann::json& session) {
        auto& tracks = session["project"]["tracks"];
        entry(tracks, "tempo")["items"].push_back(
            {{"kind", "tempo"}, {"start", 4.0}, {"bpm", 100.0}});
        auto& extras = entry(tracks, "extras");
        extras["tracks"][1]["loaded"] = true;
        extras["tracks"].push_back(
            {{"id", "inner"},
             {"type", "folder"},
             {"name", "Inner"},
             {"tracks", {{{"id", "m2"}, {"type", "marker"}, {"name", "More"}}}}});
    });
    IPtr<IMediaProject> model = exportModel();
    ASSERT_TRUE(model);
    IMediaTrack* tempo = findTrack(model.get(), "Tempo");
    ASSERT_TRUE(tempo);
    IMediaClip* tempoClip = tempo->getClip(0);
    EXPECT_EQ(nameOf(tempoClip), "Tempo");
    // Events in host order; the clip ends at the latest one.
    ASSERT_EQ(tempoClip->getEventCount(), 3u);
    EXPECT_DOUBLE_EQ(tempoClip->getEvent(1)->getTime()->getStart(), 8.0);
    EXPECT_DOUBLE_EQ(tempoClip->getEvent(2)->getTime()->getStart(), 4.0);
    EXPECT_EQ(queryInterface<IMediaTempoEvent>(tempoClip->getEvent(1))->getInterpolation(),
              uint32(kInterpolationHold));
    EXPECT_DOUBLE_EQ(tempoClip->getTime()->getDuration(), 8.0);
    IMediaClip* signature = findTrack(model.get(), "Signature")->getClip(0);
    EXPECT_EQ(queryInterface<IMediaSignatureEvent>(signature->getEvent(0))->getNumerator(), 6);
    EXPECT_DOUBLE_EQ(signature->getTime()->getDuration(), 16.0);

    IMediaTrack* extras = findTrack(model.get(), "Extras");
    ASSERT_TRUE(extras);
    EXPECT_EQ(extras->getContentType(), uint32(kContentTracks));
    EXPECT_FALSE(extras->getChannel());
    ASSERT_EQ(extras->getTrackCount(), 3u);
    EXPECT_EQ(nameOf(extras->getTrack(0)), "Film");
    EXPECT_EQ(nameOf(extras->getTrack(2)->getTrack(0)), "More");
    IMediaClip* markers = findTrack(model.get(), "Markers")->getClip(0);
    ASSERT_EQ(markers->getEventCount(), 2u);
    EXPECT_EQ(nameOf(markers->getEvent(1)), "Chorus");
    EXPECT_DOUBLE_EQ(markers->getTime()->getDuration(), 8.0);
    auto video =
        queryInterface<IMediaVideoEvent>(findTrack(model.get(), "Film")->getClip(0)->getEvent(0));
    ASSERT_TRUE(video);
    uint32 rate = 0;
    uint64 frames = 0;
    double length = 0.0;
    ASSERT_EQ(video->getFormat(&rate, &frames, &length), kResultOk);
    EXPECT_EQ(rate, 48000u);
    EXPECT_DOUBLE_EQ(length, 2.0);
    // The FX channel's track reaches the model only through the mixer walk.
    EXPECT_FALSE(findTrack(model.get(), "Plate"));
}

} // namespace ExportTest
} // namespace Halvorn
