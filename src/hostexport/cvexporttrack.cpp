// CvHostProjectExporter: tracks by type, and the audio, video and instrument tracks with their
// clips and events.
#include "hostexport/cvhostprojectexporter.h"

namespace Halvorn {

using namespace Quor;
using namespace CvHostUtilities;

namespace {

// Shorter fades are rounding noise of the host's editor.
constexpr double kShortestFade = 0.00001;

double fadeLength(double seconds) { return seconds < kShortestFade ? 0.0 : seconds; }

IPtr<IHostEditContext> contextFor(IHostEditContext* context, FUnknown* object) {
    return IPtr<IHostEditContext>::adopt(context ? context->contextFor(object) : nullptr);
}

// Sample rate and frame count give the length in seconds in single precision, as the host's
// own clips measure it.
double lengthOf(int64 frames, float sampleRate) { return double(float(frames) / sampleRate); }

} // namespace

CvTrack* CvHostProjectExporter::exportTrack(const CvExportContext& ctx) {
    auto type = ::Halvorn::queryInterface<IHostObjectType>(ctx.track);
    if (!type)
        return nullptr;
    if (type->isType("audio"))
        return exportMediaTrack(ctx, kContentAudio);
    if (type->isType("video"))
        return exportMediaTrack(ctx, kContentVideo);
    if (type->isType("signature"))
        return exportSignatureTrack(ctx);
    if (type->isType("tempo"))
        return exportTempoTrack(ctx);
    if (type->isType("instrument"))
        return exportMediaTrack(ctx, kContentNotes);
    if (type->isType("folder"))
        return exportFolderTrack(ctx);
    if (type->isType("marker"))
        return exportMarkerTrack(ctx);
    return nullptr;
}

CvTrack* CvHostProjectExporter::makeTrack(uint32 contentType, IHostEditContext* context,
                                          FUnknown* object) {
    if (::Halvorn::queryInterface<IHostObjectType>(object) &&
        (!tools_ || !tools_->isTrackLoaded(object)))
        return nullptr;
    auto track = newObject<CvTrack>(contentType, newId());
    if (auto timeline = ::Halvorn::queryInterface<IHostTimelineObject>(object))
        track->setName(String(timeline->getName()));
    track->setColor(readColor(context, object));
    return track.release();
}

CvClip* CvHostProjectExporter::makeClip(IHostEditContext* trackContext, IHostTimelineEvent* event,
                                        uint32 eventType) {
    auto clip = newObject<CvClip>(eventType, String());
    clip->setStart(event->getStart(trackContext));
    clip->setDuration(event->getLength(trackContext));
    clip->setOffset(event->getOffset(trackContext));
    clip->setName(String(event->getName()));
    clip->setMuted(event->isMuted());
    CvColor color = readColor(trackContext, event);
    if (color.isValid())
        clip->setColor(color);
    return clip.release();
}

CvTrack* CvHostProjectExporter::exportMediaTrack(const CvExportContext& ctx, uint32 contentType) {
    auto trackContext = contextFor(ctx.context, ctx.track);
    if (!trackContext)
        return nullptr;
    auto track = IPtr<CvTrack>::adopt(makeTrack(contentType, ctx.context, ctx.track));
    if (!track)
        return nullptr;
    if (contentType == kContentAudio) {
        for (IAudioEvent* event : collectChildren<IAudioEvent>(ctx.track))
            addAudioClip(*track, trackContext.get(), event);
    } else if (contentType == kContentVideo) {
        for (IVideoEvent* event : collectChildren<IVideoEvent>(ctx.track))
            addVideoClip(*track, trackContext.get(), event);
    } else {
        for (IMidiPart* part : collectChildren<IMidiPart>(ctx.track))
            addMidiClip(*track, trackContext.get(), part);
    }
    if (auto channel = ::Halvorn::queryInterface<IHostTrackChannel>(ctx.track))
        exportTrackChannel(ctx.context, channel.get(), track.get(), ctx.project);
    return track.release();
}

void CvHostProjectExporter::addAudioClip(CvTrack& track, IHostEditContext* trackContext,
                                         IAudioEvent* event) {
    auto timeline = ::Halvorn::queryInterface<IHostTimelineEvent>(event);
    if (!timeline)
        return;
    auto clip = IPtr<CvClip>::adopt(makeClip(trackContext, timeline.get(), kEventAudio));
    if (!clip)
        return;
    clip->setFadeInTime(fadeLength(event->getFadeIn(trackContext)));
    clip->setFadeOutTime(fadeLength(event->getFadeOut(trackContext)));
    track.addClip(clip.get());
    IHostAudioClip* audio = event->getClip();
    IHostMediaFile* file = audio ? audio->getFile() : nullptr;
    String path = mediaPath(file ? file->getLocation() : nullptr);
    if (path.isEmpty())
        return;
    auto reader = hostService<IHostAudioFile>(host_.get());
    auto url = hostService<IHostUrl>(host_.get());
    if (!reader || !url || url->setPath(path.text16(), 0) != kResultOk || !reader->open(url.get()))
        return;
    auto info = ::Halvorn::queryInterface<IHostAudioFileInfo>(reader.get());
    if (!info)
        return;
    float sampleRate = info->getSampleRate();
    double length = lengthOf(info->getFrameCount(), sampleRate);
    auto audioEvent = newObject<CvAudioEvent>(String());
    audioEvent->setStart(0.0);
    audioEvent->setDuration(length);
    audioEvent->setFile(path.text16(), true);
    audioEvent->setFormat(uint32(sampleRate), uint32(info->getChannelCount()), length);
    clip->addEvent(audioEvent.get());
    double ratio = 1.0;
    if (tools_ && tools_->getEventStretch(event, &ratio) != kResultOk)
        ratio = 1.0;
    bool warped = tools_ && tools_->isEventWarped(event);
    if (ratio == 1.0 && !warped)
        return;
    // A stretched event tells its rate as one straight line over the whole file.
    IMediaTime* time = clip->getTime();
    auto first = newObject<CvWarpPoint>(0.0, 0.0);
    auto last = newObject<CvWarpPoint>(time->getOffset() + time->getDuration(), length);
    audioEvent->addWarpPoint(first.get());
    audioEvent->addWarpPoint(last.get());
}

void CvHostProjectExporter::addVideoClip(CvTrack& track, IHostEditContext* trackContext,
                                         IVideoEvent* event) {
    auto timeline = ::Halvorn::queryInterface<IHostTimelineEvent>(event);
    if (!timeline || !contextFor(trackContext, event))
        return;
    auto clip = IPtr<CvClip>::adopt(makeClip(trackContext, timeline.get(), kEventVideo));
    if (!clip)
        return;
    track.addClip(clip.get());
    IHostMediaFile* file = event->getClip();
    String path = mediaPath(file ? file->getLocation() : nullptr);
    auto video = ::Halvorn::queryInterface<IHostVideoClip>(file);
    if (path.isEmpty() || !video)
        return;
    float sampleRate = video->getSampleRate();
    int64 frames = video->getFrameCount();
    auto videoEvent = newObject<CvVideoEvent>(String());
    videoEvent->setFile(path.text16(), true);
    videoEvent->setFormat(uint32(sampleRate), uint64(frames), lengthOf(frames, sampleRate));
    clip->addEvent(videoEvent.get());
}

void CvHostProjectExporter::addMidiClip(CvTrack& track, IHostEditContext* trackContext,
                                        IMidiPart* part) {
    auto timeline = ::Halvorn::queryInterface<IHostTimelineEvent>(part);
    auto partContext = contextFor(trackContext, part);
    if (!timeline || !partContext)
        return;
    auto clip = IPtr<CvClip>::adopt(makeClip(trackContext, timeline.get(), kEventMidi));
    if (!clip)
        return;
    track.addClip(clip.get());
    IMediaTime* time = clip->getTime();
    for (IMidiEvent* event : collectChildren<IMidiEvent>(part)) {
        auto noteTime = ::Halvorn::queryInterface<IHostTimelineEvent>(event);
        if (!noteTime || event->getStatus() != 144)
            continue;
        auto note = newObject<CvMidiNoteEvent>(
            uint32(event->getPitch()), double(event->getVelocity()) / 127.0,
            uint32(event->getChannel()));
        // Notes lie in the clip's content: from the clip's start, shifted by its offset.
        note->setStart(noteTime->getStart(partContext.get()) - time->getStart() +
                       time->getOffset());
        note->setDuration(noteTime->getLength(partContext.get()));
        clip->addEvent(note.get());
    }
}

} // namespace Halvorn
