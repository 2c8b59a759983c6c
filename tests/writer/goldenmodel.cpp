// The model behind tests/data/golden/project.xml, built in code through the model's fillers.
#include "goldenmodel.h"

#include "model/cvautomation.h"
#include "model/cvdevice.h"
#include "model/cvevent.h"
#include "model/cvtrack.h"
#include "writertestsupport.h"

namespace WriterTest {

using namespace Halvorn;

namespace {

// Adds a parameter of the given name, value, range, steps and number to target.
template <class Target>
void addParameter(Target* target, uint32 unit, const char* id, const char* name, double value,
                  double min, double max, uint32 steps = 0, uint32 number = 0) {
    auto parameter = newObject<CvParameter>(unit, id);
    parameter->setName(name);
    parameter->setMin(min);
    parameter->setMax(max);
    parameter->setValue(value);
    parameter->setStepCount(steps);
    parameter->setParameterId(number);
    target->addParameter(parameter.get());
}

IPtr<CvAutomationPoint> point(double time, double value, uint32 interpolation) {
    auto result = newObject<CvAutomationPoint>();
    result->setTime(time);
    result->setValue(value);
    result->setInterpolation(interpolation);
    return result;
}

IPtr<CvAudioEvent> audioEvent(const std::string& path, double start, double duration, double offset,
                              uint32 rate, uint32 channels, double length) {
    auto event = newObject<CvAudioEvent>(String());
    event->setFile(toUtf16(path).c_str(), false);
    event->setStart(start);
    event->setDuration(duration);
    event->setOffset(offset);
    event->setFormat(rate, channels, length);
    return event;
}

IPtr<CvChannel> guitarChannel(const GoldenMedia& media) {
    auto channel = newObject<CvChannel>(1, kChannelRoleRegular, "id3");
    channel->setName("Guitar");
    channel->setAudioChannels(2);
    channel->setDestination("id20");
    addParameter(channel.get(), kUnitLinear, "id4", kParamVolume, 0.8, 0.0, 2.0);
    addParameter(channel.get(), kUnitNormalized, "id5", kParamPan, 0.25, 0.0, 1.0);
    addParameter(channel.get(), kUnitNormalized, "id6", kParamMute, 0.0, 0.0, 1.0, 2);

    auto reverb = newObject<CvDevice>(kDeviceQuor3, kRoleAudioFX, "id7");
    reverb->setName("Reverb & Hall");
    reverb->setDeviceId("ABCDEF0123456789ABCDEF0123456789");
    reverb->setStateFile(media.state.c_str(), false);
    // The model holds the host's tag: the plug-in's own number 5 plus 4201.
    addParameter(reverb.get(), kUnitNormalized, "id8", "Mix", 0.5, 0.0, 1.0, 0, 4206);
    addParameter(reverb.get(), kUnitPercent, "", "Size", 75.0, 0.0, 100.0, 0, 4201);
    channel->addDevice(reverb.get());

    auto unsupported = newObject<CvDevice>(kDeviceAu, kRoleAudioFX, "id40");
    unsupported->setName("Left out");
    channel->addDevice(unsupported.get());

    auto compressor = newObject<CvDevice>(kDeviceCompressor, kRoleAudioFX, "id9");
    compressor->setName("Comp");
    compressor->setEnabled(false);
    addParameter(compressor.get(), kUnitDecibel, "id10", kParamCompressorThreshold, -12.5, -60.0,
                 0.0);
    addParameter(compressor.get(), kUnitNormalized, "id41", "NotInTheTable", 1.0, 0, 1);
    addParameter(compressor.get(), kUnitNormalized, "id11", kParamCompressorAutoMakeup, 1.0, 0.0,
                 1.0, 2);
    channel->addDevice(compressor.get());

    auto send = newObject<CvSend>(kSendPost, "id12");
    send->setDestination("id21");
    addParameter(send.get(), kUnitNormalized, "id13", kParamEnable, 1.0, 0.0, 1.0, 2);
    addParameter(send.get(), kUnitLinear, "id14", kParamVolume, 0.5, 0.0, 2.0);
    channel->addSend(send.get());
    auto preSend = newObject<CvSend>(kSendPre, "");
    channel->addSend(preSend.get());
    return channel;
}

IPtr<CvTrack> guitarTrack(const GoldenMedia& media, CvProject* project) {
    auto track = newObject<CvTrack>(kContentAudio, "id2");
    track->setName("Guitar");
    track->setColor(CvColor(0xff, 0x80, 0x00, 0xff));
    auto channel = guitarChannel(media);
    track->setChannel(channel.get());
    project->addChannel(channel.get());

    auto clip = newObject<CvClip>(kEventAudio, String());
    clip->setName("Take 1");
    clip->setColor(CvColor(0x00, 0xff, 0x00, 0xff));
    clip->setStart(1.5);
    clip->setDuration(4.0);
    clip->setOffset(0.25);
    clip->setFadeInTime(0.1);
    auto warped = audioEvent(media.guitar, 0.0, 4.0, 0.0, 48000, 2, 4.5);
    warped->addWarpPoint(newObject<CvWarpPoint>(0.0, 0.0).get());
    warped->addWarpPoint(newObject<CvWarpPoint>(2.0, 2.5).get());
    clip->addEvent(warped.get());
    clip->addEvent(audioEvent(media.guitarTwin, 4.0, 2.0, 0.5, 44100, 1, 2.0).get());
    clip->addEvent(audioEvent(media.missing, 6.0, 1.0, 0.0, 44100, 1, 1.0).get());
    track->addClip(clip.get());

    auto volume = newObject<CvAutomation>(kUnitLinear, "id15");
    volume->setTarget("id4");
    volume->addPoint(point(0.0, 0.8, kInterpolationLinear).get());
    volume->addPoint(point(2.0, 1.0, kInterpolationLinear).get());
    volume->addPoint(point(3.0, 0.7, kInterpolationHold).get());
    track->addAutomation(volume.get());
    auto untargeted = newObject<CvAutomation>(kUnitLinear, "id42");
    untargeted->addPoint(point(1.0, 1.0, kInterpolationLinear).get());
    track->addAutomation(untargeted.get());
    return track;
}

IPtr<CvTrack> keysTrack(CvProject* project) {
    auto track = newObject<CvTrack>(kContentNotes, "id16");
    track->setName("Keys \"Lead\" & <Pad>");
    track->setLoaded(false);
    auto channel = newObject<CvChannel>(1, kChannelRoleRegular, "id17");
    channel->setName("Keys");
    addParameter(channel.get(), kUnitNormalized, "", kParamSolo, 1.0, 0.0, 1.0, 2);
    track->setChannel(channel.get());
    project->addChannel(channel.get());

    auto clip = newObject<CvClip>(kEventMidi, String());
    clip->setName("Chords");
    clip->setStart(8.0);
    clip->setDuration(2.0);
    clip->setMuted(true);
    clip->setFadeInTime(1.0); // notes have no fades in the document
    auto first = newObject<CvMidiNoteEvent>(60, 0.8, 0);
    first->setDuration(0.5);
    clip->addEvent(first.get());
    auto second = newObject<CvMidiNoteEvent>(64, 1.0, 1);
    second->setStart(1.0);
    second->setDuration(1.0);
    clip->addEvent(second.get());
    track->addClip(clip.get());
    return track;
}

IPtr<CvTrack> videoTrack(const GoldenMedia& media) {
    auto track = newObject<CvTrack>(kContentVideo, "id18");
    track->setName("Picture");
    auto clip = newObject<CvClip>(kEventVideo, String());
    clip->setName("Film");
    clip->setDuration(12.0);
    auto video = newObject<CvVideoEvent>(String());
    video->setFile(toUtf16(media.movie).c_str(), false);
    video->setFormat(48000, 576000, 12.0);
    clip->addEvent(video.get());
    track->addClip(clip.get());
    return track;
}

// A track of one clip, both named name, with an event where the clip starts and one where it
// ends.
template <class Event, class Fill>
void addTimelineTrack(CvProject* project, uint32 content, uint32 eventType, const char* id,
                      const char* name, double duration, Fill fill) {
    auto track = newObject<CvTrack>(content, id);
    track->setName(name);
    auto clip = newObject<CvClip>(eventType, String());
    clip->setName(name);
    clip->setDuration(duration);
    for (bool last : {false, true}) {
        auto event = newObject<Event>();
        event->setStart(last ? duration : 0.0);
        fill(event.get(), last);
        clip->addEvent(event.get());
    }
    track->addClip(clip.get());
    project->addTrack(track.get());
}

IPtr<CvChannel> returnChannel() {
    auto channel = newObject<CvChannel>(1, kChannelRoleEffect, "id21");
    channel->setName("Hall Return");
    channel->setColor(CvColor(0x20, 0x40, 0x60, 0x80));
    channel->setAudioChannels(2);
    channel->setDestination("id20");
    auto equalizer = newObject<CvEqualizer>(kRoleAudioFX, "id22");
    equalizer->setName("EQ");
    addParameter(equalizer.get(), kUnitDecibel, "id23", kParamEqualizerInputGain, 0, -12, 12);
    auto band = newObject<CvEqualizerBand>(kBandBell, 1, "id24");
    addParameter(band.get(), kUnitHertz, "id25", kParamEqualizerBandFrequency, 1000.0, 20.0,
                 20000.0);
    addParameter(band.get(), kUnitDecibel, "id26", kParamEqualizerBandGain, 3.0, -24.0, 24.0);
    addParameter(band.get(), kUnitLinear, "id27", kParamEqualizerBandQ, 0.7, 0.1, 10.0);
    addParameter(band.get(), kUnitNormalized, "id28", kParamEqualizerBandEnabled, 1.0, 0.0, 1.0, 2);
    equalizer->addBand(band.get());
    channel->addDevice(equalizer.get());
    return channel;
}

} // namespace

GoldenMedia::GoldenMedia(const std::string& folder)
    : guitar(folder + "/takes/guitar.wav"), guitarTwin(folder + "/other/guitar.wav"),
      missing(folder + "/gone/missing.wav"), movie(folder + "/film/movie.mp4"),
      state(folder + "/presets/reverb.quorpreset") {
    writeFile(guitar, "RIFF first guitar");
    writeFile(guitarTwin, "RIFF second guitar, never packed");
    writeFile(movie, "movie bytes");
    writeFile(state, "reverb state");
}

IPtr<CvProject> buildGoldenProject(const GoldenMedia& media) {
    auto project = newObject<CvProject>("Corvelle Test", "Version 2.1");
    project->getTempo()->setValue(128.5);
    project->setTimeSignature(newObject<CvSignature>(3, 4, String()).get());

    auto band = newObject<CvTrack>(kContentTracks, "id1");
    band->setName("Band");
    band->setColor(CvColor(0x11, 0x22, 0x33, 0xff));
    band->addTrack(guitarTrack(media, project.get()).get());
    band->addTrack(keysTrack(project.get()).get());
    project->addTrack(band.get());
    project->addTrack(videoTrack(media).get());

    addTimelineTrack<CvTempoEvent>(project.get(), kContentTempo, kEventTempo, "id30", "Tempo", 8.0,
                                   [](CvTempoEvent* event, bool last) {
                                       event->setTempo(last ? 140.0 : 120.0);
                                       event->setInterpolation(last ? kInterpolationLinear
                                                                    : kInterpolationHold);
                                   });
    addTimelineTrack<CvSignatureEvent>(project.get(), kContentSignature, kEventSignature, "id31",
                                       "Signature", 16.0, [](CvSignatureEvent* event, bool last) {
                                           event->setNumerator(last ? 3 : 4);
                                           event->setDenominator(4);
                                       });
    addTimelineTrack<CvMarkerEvent>(project.get(), kContentMarkers, kEventMarker, "id32", "Markers",
                                    10.5, [](CvMarkerEvent* event, bool last) {
                                        if (!last)
                                            event->setName("Intro");
                                    });

    auto master = newObject<CvChannel>(1, kChannelRoleMaster, "id20");
    master->setName("Main");
    master->setAudioChannels(2);
    addParameter(master.get(), kUnitLinear, "id29", kParamVolume, 1.0, 0.0, 2.0);
    project->addChannel(master.get());
    project->addChannel(returnChannel().get());
    auto vca = newObject<CvChannel>(1, kChannelRoleVca, "id33");
    vca->setName("VCA, left out");
    project->addChannel(vca.get());
    return project;
}

} // namespace WriterTest
