// CvHostProjectExporter: the tempo, signature, marker and folder tracks.
#include "hostexport/cvhostprojectexporter.h"


namespace Halvorn {

using namespace Quor;
using namespace CvHostUtilities;

namespace {

// The one clip of a tempo, signature or marker track, from 0 to its last event.
IPtr<CvClip> makeListClip(CvTrack& track, uint32 eventType, const char8* name) {
    auto clip = newObject<CvClip>(eventType, String());
    clip->setStart(0.0);
    clip->setName(String(name));
    track.addClip(clip.get());
    return clip;
}

// Each child of track that answers for I and for Timeline, with its position against context;
// gives the latest position.
template <class I, class Timeline, class Visit>
double visitObjects(FUnknown* track, IHostEditContext* context, Visit&& visit) {
    double latest = 0.0;
    for (I* object : collectChildren<I>(track)) {
        auto timeline = ::Halvorn::queryInterface<Timeline>(object);
        if (!timeline)
            continue;
        double position = timeline->getStart(context);
        if (position > latest)
            latest = position;
        visit(*object, *timeline, position);
    }
    return latest;
}

} // namespace

// Tempo and signature tracks: one clip of their objects, read against the track context, or
// against none when the host gives no context, as the host allows for these two.
template <class I, class MakeEvent>
CvTrack* CvHostProjectExporter::exportListTrack(const CvExportContext& ctx, uint32 contentType,
                                                uint32 eventType, const char8* name,
                                                MakeEvent&& makeEvent) {
    auto track = IPtr<CvTrack>::adopt(makeTrack(contentType, ctx.context, ctx.track));
    auto clip = track ? makeListClip(*track, eventType, name) : IPtr<CvClip>();
    if (!clip)
        return nullptr;
    auto trackContext = IPtr<IHostEditContext>::adopt(ctx.context->contextFor(ctx.track));
    double latest = visitObjects<I, IHostTimelineObject>(
        ctx.track, trackContext.get(), [&](I& object, IHostTimelineObject&, double position) {
            IPtr<CvEvent> event = makeEvent(object);
            if (!event)
                return;
            event->setStart(position);
            event->setColor(readColor(trackContext.get(), &object));
            clip->addEvent(event.get());
        });
    clip->setDuration(latest);
    return track.release();
}

CvTrack* CvHostProjectExporter::exportTempoTrack(const CvExportContext& ctx) {
    return exportListTrack<ITempoObject>(
        ctx, kContentTempo, kEventTempo, "Tempo", [](ITempoObject& object) {
            auto event = newObject<CvTempoEvent>();
            if (event)
                event->setTempo(double(object.getTempo()));
            return IPtr<CvEvent>(event.get());
        });
}

CvTrack* CvHostProjectExporter::exportSignatureTrack(const CvExportContext& ctx) {
    return exportListTrack<ISignatureObject>(
        ctx, kContentSignature, kEventSignature, "Signature", [](ISignatureObject& object) {
            auto event = newObject<CvSignatureEvent>();
            if (event) {
                event->setNumerator(uint16(object.getNumerator()));
                event->setDenominator(uint16(object.getDenominator()));
            }
            return IPtr<CvEvent>(event.get());
        });
}

CvTrack* CvHostProjectExporter::exportMarkerTrack(const CvExportContext& ctx) {
    auto trackContext = IPtr<IHostEditContext>::adopt(ctx.context->contextFor(ctx.track));
    if (!trackContext)
        return nullptr;
    auto track = IPtr<CvTrack>::adopt(makeTrack(kContentMarkers, ctx.context, ctx.track));
    auto clip = track ? makeListClip(*track, kEventMarker, "Marker") : IPtr<CvClip>();
    if (!clip)
        return nullptr;
    double latest = visitObjects<IMarkerObject, IHostTimelineEvent>(
        ctx.track, trackContext.get(),
        [&](IMarkerObject&, IHostTimelineEvent& timeline, double position) {
            auto event = newObject<CvMarkerEvent>();
            event->setStart(position);
            event->setName(String(timeline.getName()));
            clip->addEvent(event.get());
        });
    clip->setDuration(latest);
    return track.release();
}

CvTrack* CvHostProjectExporter::exportFolderTrack(const CvExportContext& ctx) {
    if (!IPtr<IHostEditContext>::adopt(ctx.context->contextFor(ctx.track)))
        return nullptr;
    auto track = IPtr<CvTrack>::adopt(makeTrack(kContentTracks, ctx.context, ctx.track));
    auto timeline = ::Halvorn::queryInterface<IHostTimelineObject>(ctx.track);
    if (!track || !timeline)
        return track.release();
    // Children go on against the project's top level, like every track.
    auto children = IPtr<IHostIterator>::adopt(timeline->getChildren());
    while (children && !children->isDone()) {
        FUnknown* child = children->next();
        if (!child)
            continue;
        auto sub = IPtr<CvTrack>::adopt(exportTrack({ctx.project, ctx.context, child}));
        if (sub)
            track->addTrack(sub.get());
    }
    return track.release();
}

} // namespace Halvorn
