// Tracks, channels and sends: the track tree, channel lookup, file accessors and their texts.
#include "model/cvproject.h"
#include "modeltest.h"

#include <gtest/gtest.h>

namespace Halvorn {
namespace {

TEST(TrackChannel, FolderCountsOnceAtTopButWalksDepthFirst) {
    auto project = newObject<CvProject>("", "");
    auto folder = newObject<CvTrack>(kContentTracks, "folder");
    auto a = newObject<CvTrack>(kContentAudio, "a");
    auto inner = newObject<CvTrack>(kContentTracks, "inner");
    auto b = newObject<CvTrack>(kContentNotes, "b");
    auto c = newObject<CvTrack>(kContentAudio, "c");
    auto after = newObject<CvTrack>(kContentVideo, "after");
    folder->addTrack(a.get());
    folder->addTrack(inner.get());
    inner->addTrack(b.get());
    folder->addTrack(c.get());
    project->addTrack(folder.get());
    project->addTrack(after.get());
    project->addTrack(after.get()); // unique

    EXPECT_EQ(project->getTrackCount(), 2u);
    EXPECT_EQ(folder->getTrackCount(), 3u);
    EXPECT_EQ(project->getTrack(2), nullptr);
    std::string order;
    for (CvTrack* track : project->getAllTracks())
        order += utf8(track->getId()) + " ";
    EXPECT_EQ(order, "folder a inner b c after ");
    EXPECT_EQ(folder->getAllTracks().total(), 4);
    EXPECT_EQ(project->findTrack("b"), b.get());
    EXPECT_EQ(project->findTrack("B"), nullptr);
    EXPECT_EQ(project->findTrack(""), nullptr);

    IMediaTrack* face = project->getTrack(0);
    EXPECT_EQ(face->getTrack(1)->getTrack(0), static_cast<IMediaTrack*>(b.get()));
    EXPECT_EQ(face->getChannel(), nullptr); // a folder has none unless set
    EXPECT_EQ(face->getReserved(), nullptr);
    EXPECT_TRUE(face->isLoaded());
}

TEST(TrackChannel, TrackListsAreUniqueAndBoundedByIndex) {
    auto track = newObject<CvTrack>(kContentAudio, "t");
    auto clip = newObject<CvClip>(kEventAudio, "c");
    auto lane = newObject<CvAutomation>(kUnitLinear, "l");
    track->addClip(clip.get());
    track->addClip(clip.get());
    track->addClip(nullptr);
    track->addAutomation(lane.get());
    track->addAutomation(lane.get());
    track->addTrack(nullptr);
    EXPECT_EQ(track->getClipCount(), 1u);
    EXPECT_EQ(track->getAutomationCount(), 1u);
    EXPECT_EQ(track->getClip(0), static_cast<IMediaClip*>(clip.get()));
    EXPECT_EQ(track->getClip(1), nullptr);
    EXPECT_EQ(track->getAutomation(1), nullptr);
    EXPECT_EQ(track->getTrack(0), nullptr);
    EXPECT_EQ(track->getClips().total(), 1);
    EXPECT_EQ(clip->refCount(), 2);
}

TEST(TrackChannel, ChannelSharedByTrackAndProjectIsFoundOnlyThroughTheList) {
    auto project = newObject<CvProject>("", "");
    auto track = newObject<CvTrack>(kContentAudio, "track1");
    auto regular = newObject<CvChannel>(1, kChannelRoleRegular, "ch1");
    auto hidden = newObject<CvChannel>(1, kChannelRoleRegular, "hidden");
    auto effect = newObject<CvChannel>(1, kChannelRoleEffect, "fx");
    track->setChannel(regular.get());
    project->addTrack(track.get());
    project->addChannel(regular.get());
    project->addChannel(effect.get());
    project->addChannel(effect.get());
    EXPECT_EQ(project->getChannelCount(), 2u);
    EXPECT_EQ(regular->refCount(), 3);

    IMediaTrack* trackFace = track.get();
    EXPECT_EQ(trackFace->getChannel(), static_cast<IMediaChannel*>(regular.get()));
    EXPECT_EQ(trackFace->getChannel()->getRole(), kChannelRoleRegular);
    EXPECT_EQ(project->findChannel(u"fx"), static_cast<IMediaChannel*>(effect.get()));
    EXPECT_EQ(project->findChannel(u"ch1"), static_cast<IMediaChannel*>(regular.get()));
    EXPECT_EQ(project->findChannel(u"FX"), nullptr);
    EXPECT_EQ(project->findChannel(nullptr), nullptr);

    auto other = newObject<CvTrack>(kContentAudio, "track2");
    other->setChannel(hidden.get());
    project->addTrack(other.get());
    EXPECT_EQ(project->findChannel(u"hidden"), nullptr);

    track->setChannel(hidden.get()); // releases the old channel, shares the new one
    EXPECT_EQ(regular->refCount(), 2);
    EXPECT_EQ(hidden->refCount(), 3);
    track->setChannel(nullptr);
    EXPECT_EQ(hidden->refCount(), 2);
    EXPECT_EQ(track->getChannel(), nullptr);
}

TEST(TrackChannel, ChannelAndSendFaces) {
    auto channel = newObject<CvChannel>(1, kChannelRoleSubmix, "bus");
    auto volume = namedParameter(kParamVolume);
    volume->setValue(0.8);
    channel->addParameter(volume.get());
    channel->addParameter(namedParameter(kParamPan).get());
    auto send = newObject<CvSend>(kSendPost, "send1");
    send->addParameter(namedParameter(kParamEnable).get());
    channel->addSend(send.get());
    channel->addSend(send.get());
    auto device = newObject<CvDevice>(kDeviceCompressor, kRoleAudioFX, "d1");
    channel->addDevice(device.get());
    channel->addDevice(device.get());

    IMediaChannel* face = channel.get();
    EXPECT_EQ(face->getDeviceCount(), 1u);
    EXPECT_EQ(face->getDevice(1), nullptr);
    EXPECT_EQ(face->findParameter(kParamVolume)->getValue(), 0.8);
    EXPECT_TRUE(face->hasParameter(kParamPan));
    EXPECT_EQ(face->findParameter(kParamSolo), nullptr);
    EXPECT_FALSE(face->hasParameter(kParamSolo));
    EXPECT_EQ(face->findParameter(nullptr), nullptr);
    EXPECT_FALSE(face->hasParameter(nullptr));
    ASSERT_EQ(face->getSendCount(), 1u);
    EXPECT_EQ(face->getSend(1), nullptr);

    IMediaSend* sendFace = face->getSend(0);
    EXPECT_TRUE(sendFace->hasParameter(kParamEnable));
    EXPECT_EQ(sendFace->findParameter(kParamVolume), nullptr);
    EXPECT_TRUE(newObject<CvSend>(kSendPre, "")->isEnabled());

    auto container = queryInterface<IMediaParameterContainer>(face);
    ASSERT_TRUE(container);
    EXPECT_EQ(container->getParameterCount(), 2u);
    EXPECT_TRUE(queryInterface<IMediaObject>(face));
    EXPECT_FALSE(queryInterface<IMediaDevice>(face));
    EXPECT_EQ(newObject<CvChannel>(1, 0, "")->getAudioChannels(), 1u);
}

TEST(TrackChannel, FileAccessorsListMediaInTrackOrderThenDevicesOfEveryChannel) {
    auto project = newObject<CvProject>("", "");
    auto audio = newObject<CvTrack>(kContentAudio, "audio");
    auto markers = newObject<CvTrack>(kContentMarkers, "markers");
    auto notes = newObject<CvTrack>(kContentNotes, "notes");
    auto video = newObject<CvTrack>(kContentVideo, "video");
    auto clip = newObject<CvClip>(kEventAudio, "clip");
    auto take = newObject<CvAudioEvent>("take");
    auto nested = newObject<CvClip>(kEventAudio, "nested");
    nested->addEvent(newObject<CvAudioEvent>("deep").get());
    clip->addEvent(take.get());
    clip->addEvent(newObject<CvMarkerEvent>().get());
    clip->addEvent(nested.get()); // a clip inside a clip is not walked into
    clip->addEvent(take.get());   // reached twice, listed twice
    audio->addClip(clip.get());
    auto markerClip = newObject<CvClip>(kEventMarker, "");
    markerClip->addEvent(newObject<CvMarkerEvent>().get());
    markers->addClip(markerClip.get());
    auto noteClip = newObject<CvClip>(kEventAudio, "");
    noteClip->addEvent(newObject<CvAudioEvent>("notOnAudioTrack").get());
    notes->addClip(noteClip.get());
    auto videoClip = newObject<CvClip>(kEventVideo, "");
    auto film = newObject<CvVideoEvent>("film");
    videoClip->addEvent(film.get());
    video->addClip(videoClip.get());

    auto channel = newObject<CvChannel>(1, kChannelRoleRegular, "ch");
    auto insert = newObject<CvDevice>(kDeviceQuor3, kRoleAudioFX, "insert");
    channel->addDevice(insert.get());
    audio->setChannel(channel.get());
    video->setChannel(channel.get());
    auto fx = newObject<CvChannel>(1, kChannelRoleEffect, "fx");
    auto reverb = newObject<CvEqualizer>(kRoleAudioFX, "eq");
    fx->addDevice(reverb.get());
    for (CvTrack* track : {audio.get(), markers.get(), notes.get(), video.get()})
        project->addTrack(track);
    project->addChannel(channel.get());
    project->addChannel(fx.get());

    TArray<ICvFileAccessor*> accessors = project->getFileAccessors();
    ASSERT_EQ(accessors.total(), 6);
    EXPECT_EQ(accessors[0], static_cast<ICvFileAccessor*>(take.get()));
    EXPECT_EQ(accessors[1], static_cast<ICvFileAccessor*>(take.get()));
    EXPECT_EQ(accessors[2], static_cast<ICvFileAccessor*>(film.get()));
    // The channel of two tracks: once for each track, the project's list adds nothing new.
    EXPECT_EQ(accessors[3], static_cast<ICvFileAccessor*>(insert.get()));
    EXPECT_EQ(accessors[4], static_cast<ICvFileAccessor*>(insert.get()));
    EXPECT_EQ(accessors[5], static_cast<ICvFileAccessor*>(reverb.get()));
    EXPECT_EQ(accessors[2]->getFile()->getType(), kCvFileVideo);
    EXPECT_EQ(take->refCount(), 3); // the walk holds no references
    EXPECT_EQ(insert->refCount(), 2);
}

} // namespace
} // namespace Halvorn
