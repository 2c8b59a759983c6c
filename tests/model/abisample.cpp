// Builds the sample model of the ABI tests through the classes and setters, as a filler does.
#include "abisample.h"

#include "model/cvproject.h"
#include "modeltest.h"

namespace Halvorn {

namespace {

IPtr<CvParameter> parameter(const char8* name, const char8* id, uint32 unit, double value) {
    auto result = newObject<CvParameter>(unit, id);
    result->setName(name);
    result->setValue(value);
    return result;
}

IPtr<CvChannel> masterChannel() {
    auto master = newObject<CvChannel>(1, kChannelRoleMaster, "master");
    master->setName("Main");
    master->addParameter(parameter(kParamVolume, "master.vol", kUnitLinear, 1.0).get());
    return master;
}

IPtr<CvTrack> audioTrack(CvProject& project) {
    auto track = newObject<CvTrack>(kContentAudio, "track.audio");
    track->setName("Vocals");
    track->setColor(CvColor("#ff8000"));
    auto channel = newObject<CvChannel>(1, kChannelRoleRegular, "ch.audio");
    channel->setDestination("master");
    channel->addParameter(parameter(kParamVolume, "ch.audio.vol", kUnitLinear, 0.5).get());
    channel->addParameter(parameter(kParamPan, "ch.audio.pan", kUnitNormalized, 0.25).get());
    auto plugin = newObject<CvDevice>(kDeviceQuor3, kRoleAudioFX, "ch.audio.dly");
    plugin->setName("Delay");
    plugin->setDeviceId("ABCDEF0123456789");
    plugin->setStateFile("plugins/delay.quorpreset", false);
    channel->addDevice(plugin.get());
    auto send = newObject<CvSend>(kSendPost, "ch.audio.send");
    send->setDestination("fx");
    send->addParameter(parameter(kParamVolume, "send.vol", kUnitLinear, 0.7).get());
    channel->addSend(send.get());
    track->setChannel(channel.get());
    project.addChannel(channel.get());

    auto clip = newObject<CvClip>(kEventAudio, "clip.audio");
    clip->setStart(8.0);
    clip->setDuration(4.0);
    clip->setOffset(0.5);
    clip->setFadeInTime(0.1);
    auto take = newObject<CvAudioEvent>("take");
    take->setDuration(4.0);
    take->setFile(u"audio/vocals.wav", false);
    take->setFormat(48000, 2, 6.0);
    take->addWarpPoint(newObject<CvWarpPoint>(0.0, 0.0).get());
    take->addWarpPoint(newObject<CvWarpPoint>(4.0, 3.0).get());
    clip->addEvent(take.get());
    track->addClip(clip.get());

    auto lane = newObject<CvAutomation>(kUnitLinear, "lane.vol");
    lane->setTarget("ch.audio.vol");
    for (int i = 0; i < 3; ++i) {
        auto point = newObject<CvAutomationPoint>();
        point->setTime(i * 2.0);
        point->setValue(0.25 * i);
        point->setInterpolation(kInterpolationLinear);
        lane->addPoint(point.get());
    }
    track->addAutomation(lane.get());
    return track;
}

IPtr<CvTrack> markerTrack() {
    auto track = newObject<CvTrack>(kContentMarkers, "track.markers");
    auto clip = newObject<CvClip>(kEventMarker, "");
    auto marker = newObject<CvMarkerEvent>();
    marker->setName("Chorus");
    marker->setStart(16.0);
    clip->addEvent(marker.get());
    track->addClip(clip.get());
    return track;
}

} // namespace

FUnknown* buildSampleProject() {
    auto project = newObject<CvProject>("Sample Writer", "3.0");
    auto tempo = newObject<CvParameter>(kUnitBpm, "tempo");
    tempo->setValue(96.0);
    project->setTempo(tempo.get());
    project->setTimeSignature(newObject<CvSignature>(3, 4, "sig").get());

    auto folder = newObject<CvTrack>(kContentTracks, "folder");
    folder->setName("Band");
    folder->addTrack(audioTrack(*project).get());
    project->addTrack(folder.get());
    project->addTrack(markerTrack().get());

    auto fx = newObject<CvChannel>(1, kChannelRoleEffect, "fx");
    fx->setDestination("master");
    project->addChannel(fx.get());
    project->addChannel(masterChannel().get());
    return static_cast<IMediaProject*>(project.release());
}

} // namespace Halvorn
