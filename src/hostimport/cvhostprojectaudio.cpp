// Audio clips on import: a plain clip of one event becomes that event, any other an audio part
// holding its events; files found in the pool are shared.
#include "corvelle/mediaclip.h"
#include "hostimport/clipfields.h"
#include "hostimport/cvhostproject.h"
#include "hostimport/importutilities.h"

namespace Halvorn {

using namespace CvHostUtilities;

namespace {
void setStretch(IHostContext* host, FUnknown* item, IMediaEvent* event) {
    IPtr<IMediaAudioEvent> audio = Halvorn::queryInterface<IMediaAudioEvent>(event);
    IPtr<IHostProjectTools> tools = hostService<IHostProjectTools>(host);
    if (audio && tools)
        tools->setEventStretch(item, audio->getPlaybackRate());
}

void setFades(IAudioEvent* event, IHostEditContext* local, IMediaClip* clip) {
    if (clip->getFadeInTime() > 0.0)
        event->setFadeIn(local, clip->getFadeInTime(), nullptr);
    if (clip->getFadeOutTime() > 0.0)
        event->setFadeOut(local, clip->getFadeOutTime(), nullptr);
}

// An event of a part keeps its own name, place and colour.
void applyEventFields(IHostTimelineObject* item, IMediaEvent* event, ImportSessions& lane) {
    IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(event);
    IMediaTime* time = event->getTime();
    if (!identity || !time)
        return;
    IHostEditContext* local = lane.context.get();
    IHostEditSession* step = lane.step.get();
    item->setName(local, identity->getName(), step);
    item->setStart(local, time->getStart(), step);
    item->setLength(local, time->getDuration(), step);
    item->setOffset(local, time->getOffset(), step);
    IPtr<IHostTimelineEvent> colored = Halvorn::queryInterface<IHostTimelineEvent>(item);
    uint32 argb = 0;
    if (colored && packColor(identity.get(), &argb))
        colored->setColor(local, argb, nullptr);
}

// A clip with one event that plays from its start needs no part.
bool isSingleShape(IMediaClip* clip) {
    if (clip->getEventCount() != 1)
        return false;
    IMediaEvent* event = clip->getEvent(0);
    IMediaTime* time = event ? event->getTime() : nullptr;
    return !time || time->getOffset() == 0.0;
}
} // namespace

IPtr<IAudioEvent> CvHostProject::createAudioEvent(IMediaEvent* event, ImportSessions& local) {
    if (!local.step || !local.context)
        return {};
    IPtr<IMediaAudioEvent> audio = Halvorn::queryInterface<IMediaAudioEvent>(event);
    IPtr<IAudioEvent> made = audio ? hostService<IAudioEvent>(host_.get()) : nullptr;
    if (!made)
        return {};
    String path(audio->getFilePath());
    IPtr<IHostAudioClip> clip =
        Halvorn::queryInterface<IHostAudioClip>(findPoolFile(host_.get(), project_.get(), path));
    if (!clip) {
        // Missing or not audio: the event is lost.
        clip = createAudioClip(host_.get(), path);
        if (!clip)
            return {};
        IHostMediaPool* pool = project_->getMediaPool();
        IPtr<IHostMediaFile> file = Halvorn::queryInterface<IHostMediaFile>(clip.get());
        if (pool && file)
            pool->addFile(file.get(), 0);
    }
    made->setClip(local.context.get(), clip.get(), local.step.get());
    return made;
}

void CvHostProject::importAudioClip(FUnknown* hostTrack, IMediaClip* clip,
                                    ImportSessions& sessions) {
    if (clip->getEventCount() == 0)
        return;
    IPtr<IHostEditContext> local =
        IPtr<IHostEditContext>::adopt(sessions.context->contextFor(hostTrack));
    if (!local)
        return;
    ImportSessions lane = sessions.at(local);
    ClipFields fields(clip);
    IPtr<IHostTimelineObject> item;
    if (isSingleShape(clip)) {
        IMediaEvent* event = clip->getEvent(0);
        IPtr<IAudioEvent> audio = Halvorn::queryInterface<IMediaAudioEvent>(event)
                                      ? createAudioEvent(event, lane)
                                      : nullptr;
        item = Halvorn::queryInterface<IHostTimelineObject>(audio.get());
        if (!item)
            return;
        setStretch(host_.get(), item.get(), event);
        setFades(audio.get(), local.get(), clip);
    } else {
        IPtr<IAudioPart> part = hostService<IAudioPart>(host_.get());
        item = Halvorn::queryInterface<IHostTimelineObject>(part.get());
        if (!item || part->initialize(fields.object->getName(), hostTrack) != kResultOk)
            return;
        IPtr<IHostEditContext> partContext =
            IPtr<IHostEditContext>::adopt(sessions.context->contextFor(part.get()));
        if (!partContext)
            return;
        for (uint32 index = 0, count = clip->getEventCount(); index < count; ++index) {
            IMediaEvent* event = clip->getEvent(index);
            IPtr<IAudioEvent> audio = createAudioEvent(event, lane);
            IPtr<IHostTimelineObject> eventItem =
                Halvorn::queryInterface<IHostTimelineObject>(audio.get());
            if (!eventItem)
                continue;
            applyEventFields(eventItem.get(), event, lane);
            setStretch(host_.get(), eventItem.get(), event);
            // In a part the clip's fades go onto every event it holds.
            setFades(audio.get(), local.get(), clip);
            sessions.step->add(partContext.get(), eventItem.release());
            sessions.step->commit(project_.get(), u"Import Audio Event");
        }
    }
    item->setName(local.get(), fields.object->getName(), sessions.step.get());
    fields.place(item.get(), local.get(), sessions.step.get(), sessions.step.get());
    fields.color(item.get(), sessions.context.get());
    sessions.step->add(local.get(), item.release());
    sessions.step->commit(project_.get(), u"Import Clip");
}

} // namespace Halvorn
