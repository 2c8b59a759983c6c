// Tracks on import: the host track of each model track, its channel and devices, its sub-tracks
// moved into their folder, and its MIDI, video and marker clips.
#include "corvelle/mediaclip.h"
#include "hostimport/clipfields.h"
#include "hostimport/cvhostproject.h"
#include "hostimport/devicetranslation.h"
#include "hostimport/importutilities.h"

namespace Halvorn {

using namespace CvHostUtilities;

FUnknown* CvHostProject::importTrack(IMediaTrack* track, ImportSessions& sessions) {
    IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(track);
    if (!sessions.isComplete() || !identity)
        return nullptr;
    uint32 content = track->getContentType();
    if (content == kContentTempo || content == kContentSignature || content == kContentAutomation ||
        content == kContentAudioNotes)
        return nullptr;
    // An FX channel comes into being with the project's channels, not as a track.
    IMediaChannel* channel = track->getChannel();
    if (channel && channel->getRole() == kChannelRoleEffect)
        return nullptr;
    IPtr<IHostObjectType> made = createTrackFor(project_.get(), track);
    if (!made)
        return nullptr;
    FUnknown* hostTrack = made.get();
    tracks_.add(hostTrack);
    if (channel && content == kContentAudio)
        setTrackArrangement(hostTrack, channel->getAudioChannels());
    sessions.step->add(sessions.context.get(), made.release());
    sessions.step->commit(project_.get(), u"Import Track");

    if (channel && content == kContentTracks) {
        IPtr<IHostObjectType> group = createChannelTrack(project_.get(), kChannelRoleSubmix);
        if (group) {
            IPtr<IHostObjectType> kept = group;
            sessions.step->add(sessions.context.get(), group.release());
            sessions.step->commit(project_.get(), u"Import Track");
            IPtr<IHostProjectTools> tools = hostService<IHostProjectTools>(host_.get());
            ImportSessions copy = sessions;
            importGroupChannel(channel, kept.get(), copy, tools.get());
            importTrackInserts(host_.get(), kept.get(), track, this);
        }
    }
    if (content == kContentNotes) {
        importInstrument(host_.get(), hostTrack, track, this);
        importTrackInserts(host_.get(), hostTrack, track, this);
    }
    setTrackLoaded(host_.get(), hostTrack, track->isLoaded());
    if (IPtr<IHostTimelineEvent> event = Halvorn::queryInterface<IHostTimelineEvent>(hostTrack)) {
        // The name is the one change of a track that the whole import's session records.
        event->setName(sessions.context.get(), identity->getName(), sessions.outer.get());
        uint32 argb = 0;
        if (packColor(identity.get(), &argb))
            event->setColor(sessions.context.get(), argb, nullptr);
    }
    IHostParameterOwner* mixer = getMixerChannel(hostTrack);
    applyChannelParameters(mixer, channel);
    if (IPtr<IMediaObject> channelIdentity = Halvorn::queryInterface<IMediaObject>(channel))
        devices_.add(String(channelIdentity->getId()), mixer);
    if (content == kContentAudio)
        importTrackInserts(host_.get(), hostTrack, track, this);
    for (uint32 index = 0, count = track->getClipCount(); index < count; ++index)
        importClip(hostTrack, track->getClip(index), sessions);
    if (content == kContentTracks)
        importSubTracks(hostTrack, track, sessions);
    return hostTrack;
}

// A sub-track lands at the top level like any other and moves into its folder at once, at its
// index among the model's sub-tracks (skipped ones included).
void CvHostProject::importSubTracks(FUnknown* hostTrack, IMediaTrack* track,
                                    ImportSessions& sessions) {
    for (uint32 index = 0; index < track->getTrackCount(); ++index) {
        FUnknown* subTrack = importTrack(track->getTrack(index), sessions);
        if (!subTrack)
            continue;
        IPtr<IHostEditContext> folder =
            IPtr<IHostEditContext>::adopt(sessions.context->contextFor(hostTrack));
        if (!folder)
            continue;
        sessions.step->move(folder.get(), subTrack, int32(index));
        sessions.step->commit(project_.get(), u"Move Track");
    }
}

void CvHostProject::importClip(FUnknown* hostTrack, IMediaClip* clip, ImportSessions& sessions) {
    if (!clip || !clip->getTime() || !Halvorn::queryInterface<IMediaObject>(clip))
        return;
    switch (clip->getEventType()) {
    case kEventAudio:
        importAudioClip(hostTrack, clip, sessions);
        break;
    case kEventMidi:
        importMidiClip(hostTrack, clip, sessions);
        break;
    case kEventVideo:
        importVideoClip(hostTrack, clip, sessions);
        break;
    case kEventMarker:
        importMarkerClip(hostTrack, clip, sessions);
        break;
    default:
        break;
    }
}

void CvHostProject::importMidiClip(FUnknown* hostTrack, IMediaClip* clip,
                                   ImportSessions& sessions) {
    ClipFields fields(clip);
    IPtr<IHostEditContext> local =
        IPtr<IHostEditContext>::adopt(sessions.context->contextFor(hostTrack));
    IPtr<IMidiPart> part = hostService<IMidiPart>(host_.get());
    IPtr<IHostMidiPartSetup> setup = Halvorn::queryInterface<IHostMidiPartSetup>(part.get());
    if (!local || !setup || setup->initialize(fields.object->getName(), hostTrack) != kResultOk)
        return;
    IPtr<IHostTimelineObject> item = Halvorn::queryInterface<IHostTimelineObject>(part.get());
    if (!item)
        return;
    fields.place(item.get(), local.get(), sessions.step.get(), sessions.step.get());
    fields.color(item.get(), sessions.context.get());
    sessions.step->add(local.get(), IPtr<IHostTimelineObject>(item).release());
    sessions.step->commit(project_.get(), u"Import Clip");
    IPtr<IHostEditContext> notes =
        clip->getEventCount() != 0 ? IPtr<IHostEditContext>::adopt(local->contextFor(part.get()))
                                   : nullptr;
    if (clip->getEventCount() != 0 && !notes)
        return;
    // The model keeps notes relative to the clip's content; the host wants the timeline.
    double shift = fields.time->getStart() - fields.time->getOffset();
    for (uint32 index = 0, count = clip->getEventCount(); index < count; ++index) {
        IMediaEvent* event = clip->getEvent(index);
        IPtr<IMediaMidiNoteEvent> source = Halvorn::queryInterface<IMediaMidiNoteEvent>(event);
        IMediaTime* time = source ? event->getTime() : nullptr;
        IPtr<IHostNoteEvent> note =
            time ? hostService<IHostNoteEvent>(host_.get()) : IPtr<IHostNoteEvent>();
        IPtr<IHostTimelineObject> noteItem =
            Halvorn::queryInterface<IHostTimelineObject>(note.get());
        if (!noteItem)
            continue;
        noteItem->setStart(notes.get(), time->getStart() + shift, nullptr);
        noteItem->setLength(notes.get(), time->getDuration(), nullptr);
        note->setPitch(notes.get(), int32(source->getKey()), nullptr);
        note->setVelocity(notes.get(), velocityOf(source->getVelocity()), nullptr);
        note->setReleaseVelocity(notes.get(), 0, nullptr);
        sessions.step->add(notes.get(), noteItem.release());
    }
    sessions.step->commit(project_.get(), u"Import Events");
}

void CvHostProject::importVideoClip(FUnknown* hostTrack, IMediaClip* clip,
                                    ImportSessions& sessions) {
    ClipFields fields(clip);
    IPtr<IHostEditContext> local =
        IPtr<IHostEditContext>::adopt(sessions.context->contextFor(hostTrack));
    if (!local || clip->getEventCount() != 1)
        return;
    IPtr<IVideoEvent> video = hostService<IVideoEvent>(host_.get());
    IPtr<IHostTimelineObject> item = Halvorn::queryInterface<IHostTimelineObject>(video.get());
    IPtr<IMediaVideoEvent> source = Halvorn::queryInterface<IMediaVideoEvent>(clip->getEvent(0));
    if (!item || !source)
        return;
    IPtr<IHostMediaFile> file = createVideoClip(host_.get(), String(source->getFilePath()));
    if (!file)
        return;
    if (IHostMediaPool* pool = project_->getMediaPool())
        pool->addFile(file.get(), 0);
    video->setClip(local.get(), file.get(), sessions.step.get());
    item->setName(local.get(), fields.object->getName(), sessions.step.get());
    fields.color(item.get(), sessions.context.get());
    fields.place(item.get(), local.get(), sessions.step.get(), nullptr);
    sessions.step->add(local.get(), item.release());
    sessions.step->commit(project_.get(), u"Import Clip");
}

void CvHostProject::importMarkerClip(FUnknown* hostTrack, IMediaClip* clip,
                                     ImportSessions& sessions) {
    IPtr<IHostEditContext> local =
        IPtr<IHostEditContext>::adopt(sessions.context->contextFor(hostTrack));
    if (!local)
        return;
    for (uint32 index = 0, count = clip->getEventCount(); index < count; ++index) {
        IMediaEvent* event = clip->getEvent(index);
        IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(event);
        IMediaTime* time = identity && Halvorn::queryInterface<IMediaMarkerEvent>(event)
                               ? event->getTime()
                               : nullptr;
        IPtr<IMarkerObject> marker =
            time ? hostService<IMarkerObject>(host_.get()) : IPtr<IMarkerObject>();
        IPtr<IHostTimelineEvent> item = Halvorn::queryInterface<IHostTimelineEvent>(marker.get());
        if (!item)
            continue;
        // Markers stand on the timeline as they are: no clip position is added.
        item->setStart(local.get(), time->getStart(), nullptr);
        item->setName(local.get(), identity->getName(), nullptr);
        uint32 argb = 0;
        if (packColor(identity.get(), &argb))
            item->setColor(local.get(), argb, nullptr);
        sessions.step->add(local.get(), item.release());
    }
    sessions.step->commit(project_.get(), u"Import Events");
}

} // namespace Halvorn
