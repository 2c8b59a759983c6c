// Tempo and signature on import: the fixed values and the events merged by exact position.
#include "hostimport/transportimport.h"
#include "corvelle/mediaclip.h"
#include "hostimport/importutilities.h"

#include <unordered_map>

namespace Halvorn {
namespace CvHostUtilities {

namespace {
// Sets one model event on a host tempo or signature object; false when the event isn't of the
// kind.
bool applyTransportEvent(IMediaEvent* event, FUnknown* object, bool tempo, double position,
                         ImportSessions& sessions) {
    IPtr<IMediaObject> identity = queryInterface<IMediaObject>(event);
    IHostEditContext* local = sessions.context.get();
    if (tempo) {
        IPtr<IMediaTempoEvent> source = queryInterface<IMediaTempoEvent>(event);
        IPtr<ITempoObject> target = queryInterface<ITempoObject>(object);
        IPtr<IHostTimelineEvent> timeline = queryInterface<IHostTimelineEvent>(object);
        if (!source || !target || !timeline)
            return false;
        target->setTempo(local, float(source->getTempo()), sessions.step.get());
        target->setRamp(local, source->getInterpolation() == kInterpolationLinear, nullptr);
        timeline->setStart(local, position, nullptr);
        timeline->setName(local, identity->getName(), nullptr);
    } else {
        IPtr<IMediaSignatureEvent> source = queryInterface<IMediaSignatureEvent>(event);
        IPtr<ISignatureObject> target = queryInterface<ISignatureObject>(object);
        IPtr<IHostTimelineEvent> timeline = queryInterface<IHostTimelineEvent>(object);
        if (!source || !target || !timeline)
            return false;
        target->setSignature(local, source->getNumerator(), source->getDenominator(), nullptr, 0);
        timeline->setStart(local, position, nullptr);
    }
    uint32 argb = 0;
    if (packColor(identity.get(), &argb))
        queryInterface<IHostTimelineEvent>(object)->setColor(local, argb, nullptr);
    return true;
}
} // namespace

void setTempoAtStart(IHostProject* project, IHostEditContext* context, double tempo) {
    IHostTempoTrack* track = project ? project->getTempoTrack() : nullptr;
    if (!track)
        return;
    float bpm = float(tempo);
    track->setTempo(bpm);
    IPtr<IHostEditContext> local =
        context ? IPtr<IHostEditContext>::adopt(context->contextFor(track)) : nullptr;
    IHostTimelineObject* object = local ? local->getObject() : nullptr;
    IPtr<IHostIterator> children =
        object ? IPtr<IHostIterator>::adopt(object->getChildren()) : nullptr;
    while (children && !children->isDone()) {
        FUnknown* child = children->next();
        IPtr<ITempoObject> event = queryInterface<ITempoObject>(child);
        IPtr<IHostTimelineObject> timeline = queryInterface<IHostTimelineObject>(child);
        if (event && timeline && timeline->getStart(local.get()) == 0.0) {
            event->setTempo(local.get(), bpm, nullptr);
            return;
        }
    }
}

bool importTransportEvents(IHostContext* host, IMediaTrack* track, ImportSessions& sessions) {
    uint32 content = track ? track->getContentType() : kContentUnknown;
    if (content != kContentTempo && content != kContentSignature)
        return false;
    bool tempo = content == kContentTempo;
    const FUID& kind = tempo ? ITempoObject::iid : ISignatureObject::iid;
    IHostEditContext* local = sessions.context.get();

    // What the host already has, by exact position; a later child at a position wins.
    std::unordered_map<double, IPtr<FUnknown>> existing;
    IPtr<IHostIterator> children =
        sessions.owner ? IPtr<IHostIterator>::adopt(sessions.owner->getChildren()) : nullptr;
    while (children && !children->isDone()) {
        FUnknown* child = children->next();
        void* face = nullptr;
        IPtr<IHostTimelineObject> timeline = queryInterface<IHostTimelineObject>(child);
        if (timeline && child->queryInterface(kind, &face) == kResultOk)
            existing[timeline->getStart(local)] =
                IPtr<FUnknown>::adopt(static_cast<FUnknown*>(face));
    }

    for (uint32 c = 0, clips = track->getClipCount(); c < clips; ++c) {
        IMediaClip* clip = track->getClip(c);
        for (uint32 e = 0, events = clip ? clip->getEventCount() : 0; e < events; ++e) {
            IMediaEvent* event = clip->getEvent(e);
            IMediaTime* time = event ? event->getTime() : nullptr;
            bool ofKind = tempo ? bool(queryInterface<IMediaTempoEvent>(event))
                                : bool(queryInterface<IMediaSignatureEvent>(event));
            if (!time || !ofKind || !queryInterface<IMediaObject>(event))
                continue;
            double position = time->getStart();
            // Made objects don't enter the map: two model events at one new place give two.
            IPtr<FUnknown> object = existing[position];
            bool made = false;
            if (!object) {
                void* face = nullptr;
                if (!host || host->getInterface(kind, &face) != kResultOk || !face)
                    continue;
                object = IPtr<FUnknown>::adopt(static_cast<FUnknown*>(face));
                made = true;
            }
            if (!applyTransportEvent(event, object.get(), tempo, position, sessions))
                continue;
            if (made && sessions.step)
                sessions.step->add(local,
                                   queryInterface<IHostTimelineEvent>(object.get()).release());
        }
    }
    return true;
}

} // namespace CvHostUtilities
} // namespace Halvorn
