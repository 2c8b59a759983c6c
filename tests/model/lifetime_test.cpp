// Reference counts balance: a large model, released at its root, holds nothing back (the
// sanitizer run's leak checker sees any block left over).
#include "model/cvproject.h"
#include "modeltest.h"

#include <gtest/gtest.h>

namespace Halvorn {
namespace {

// Tracks in folders, each with a channel held twice, devices, sends, clips of every event kind
// and automation; sizes are chosen so that every list outgrows its first allocation.
IPtr<CvProject> buildLargeProject() {
    auto project = newObject<CvProject>("Big", "1");
    for (int f = 0; f < 4; ++f) {
        auto folder = newObject<CvTrack>(kContentTracks, "");
        for (int t = 0; t < 12; ++t) {
            String id;
            id.printf("t%d.%d", f, t);
            auto track = newObject<CvTrack>(t % 2 ? kContentAudio : kContentNotes, id);
            auto channel = newObject<CvChannel>(1, kChannelRoleRegular, id);
            channel->addParameter(namedParameter(kParamVolume, id).get());
            auto eq = newObject<CvEqualizer>(kRoleAudioFX, "");
            eq->addBand(newObject<CvEqualizerBand>(kBandBell, 0, "").get());
            channel->addDevice(eq.get());
            channel->addDevice(newObject<CvInstrument>(kDeviceBuiltinInstrument, 1, "").get());
            channel->addSend(newObject<CvSend>(kSendPre, "").get());
            track->setChannel(channel.get());
            project->addChannel(channel.get());

            auto clip = newObject<CvClip>(t % 2 ? kEventAudio : kEventMidi, "");
            for (int e = 0; e < 300; ++e) {
                if (t % 2) {
                    auto audio = newObject<CvAudioEvent>("");
                    audio->addWarpPoint(newObject<CvWarpPoint>(0.0, 0.0).get());
                    audio->addWarpPoint(newObject<CvWarpPoint>(1.0, 2.0).get());
                    clip->addEvent(audio.get());
                } else {
                    clip->addEvent(newObject<CvMidiNoteEvent>(60 + e % 12, 0.8, 0).get());
                }
            }
            clip->addEvent(newObject<CvVideoEvent>("").get());
            clip->addEvent(newObject<CvTempoEvent>().get());
            clip->addEvent(newObject<CvSignatureEvent>().get());
            clip->addEvent(newObject<CvMarkerEvent>().get());
            track->addClip(clip.get());

            auto lane = newObject<CvAutomation>(kUnitLinear, "");
            lane->setTarget(id);
            for (int p = 0; p < 200; ++p)
                lane->addPoint(newObject<CvAutomationPoint>().get());
            track->addAutomation(lane.get());
            folder->addTrack(track.get());
        }
        project->addTrack(folder.get());
    }
    auto fx = newObject<CvChannel>(1, kChannelRoleEffect, "fx");
    project->addChannel(fx.get());
    return project;
}

TEST(Lifetime, ReferenceCountsOfALargeModelBalance) {
    IPtr<CvProject> project = buildLargeProject();
    EXPECT_EQ(project->refCount(), 1);

    // Counts after the build: a list holds one reference, a channel two (project and track).
    CvTrack* track = project->getAllTracks()[1];
    EXPECT_EQ(track->refCount(), 1);
    EXPECT_EQ(track->getChannel()->refCount(), 2);
    EXPECT_EQ(track->getClips()[0]->refCount(), 1);

    // Walks and getters hold no references.
    for (int i = 0; i < 3; ++i) {
        TArray<ICvFileAccessor*> accessors = project->getFileAccessors();
        EXPECT_EQ(accessors.total(), 4 * 6 * 300 + 4 * 6 + 48 * 2);
    }
    for (CvTrack* each : project->getAllTracks())
        for (CvClip* clip : each->getClips())
            for (CvEvent* event : clip->getEvents())
                ASSERT_EQ(event->refCount(), 1);
    EXPECT_EQ(project->refCount(), 1);

    // A reference kept by an outside holder outlives the project, and only that object.
    IPtr<CvChannel> kept(track->getChannel());
    project = nullptr;
    EXPECT_EQ(kept->refCount(), 1);
}

} // namespace
} // namespace Halvorn
