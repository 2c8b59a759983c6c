// CvXmlWriter: the arrangement, with lanes, clips, audio, video, notes, automation, tempo,
// signature and markers.
#include "documents/cvxmlwriter.h"

#include "corvelle/ptr.h"
#include "documents/cvschemanames.h"
#include "documents/cvtables.h"
#include "documents/cvvaluerules.h"
#include "documents/cvxmloutput.h"

namespace Halvorn {

using namespace CvSchema;

namespace {

constexpr uint32 kTime = CvValueRules::kTimePrecision;
constexpr uint32 kValue = CvValueRules::kValuePrecision;

// A note's release velocity: the format always states it and never reads it.
constexpr const char8* kNoteRelease = "0";

// The three times of an event; all zero for an object that gives none.
struct Times {
    double start = 0.0;
    double duration = 0.0;
    double offset = 0.0;

    explicit Times(IMediaTime* time) {
        if (time) {
            start = time->getStart();
            duration = time->getDuration();
            offset = time->getOffset();
        }
    }
};

void writeSpan(CvXmlOutput& out, const Times& times) {
    out.real(Attribute::kTime, times.start, kTime);
    out.real(Attribute::kDuration, times.duration, kTime);
    if (times.offset != 0.0)
        out.real(Attribute::kPlayStart, times.offset, kValue);
}

void writeFile(CvXmlOutput& out, const String& path) {
    out.start(Element::kFile);
    out.text(Attribute::kPath, path.text8());
    out.boolean(Attribute::kExternal, false);
    out.end();
}

IMediaTrack* firstTopLevelTrack(IMediaProject* project, uint32 content) {
    for (uint32 i = 0; i < project->getTrackCount(); ++i) {
        IMediaTrack* track = project->getTrack(i);
        if (track && track->getContentType() == content)
            return track;
    }
    return nullptr;
}

// Calls visit(event) for every event of every clip of the track, in order.
template <class Visit> void forEachEvent(IMediaTrack* track, Visit visit) {
    for (uint32 c = 0; c < track->getClipCount(); ++c) {
        IMediaClip* clip = track->getClip(c);
        if (!clip)
            continue;
        for (uint32 e = 0; e < clip->getEventCount(); ++e)
            if (IMediaEvent* event = clip->getEvent(e))
                visit(event);
    }
}

} // namespace

void CvXmlWriter::writeArrangement(CvXmlOutput& out, IMediaProject* project) {
    out.start(Element::kArrangement);
    out.start(Element::kLanes);
    out.text(Attribute::kTimeUnit, Text::kSeconds);
    TArray<IMediaTrack*> lanes;
    for (uint32 i = 0; i < project->getTrackCount(); ++i)
        collectLanes(project->getTrack(i), 0, lanes);
    for (IMediaTrack* track : lanes)
        writeLane(out, track);
    out.end();
    if (IMediaTrack* tempo = firstTopLevelTrack(project, kContentTempo))
        writeTempoAutomation(out, tempo);
    if (IMediaTrack* signature = firstTopLevelTrack(project, kContentSignature))
        writeSignatureAutomation(out, signature);
    if (IMediaTrack* markers = firstTopLevelTrack(project, kContentMarkers))
        writeMarkers(out, markers);
    out.end();
}

void CvXmlWriter::collectLanes(IMediaTrack* track, uint32 depth, TArray<IMediaTrack*>& lanes) {
    if (!track || depth >= kMaxTrackDepth)
        return;
    lanes.add(track);
    for (uint32 i = 0; i < track->getTrackCount(); ++i)
        collectLanes(track->getTrack(i), depth + 1, lanes);
}

void CvXmlWriter::writeTempoAutomation(CvXmlOutput& out, IMediaTrack* track) {
    out.start(Element::kTempoAutomation);
    out.text(Attribute::kUnit, Text::kSeconds);
    forEachEvent(track, [&](IMediaEvent* event) {
        IPtr<IMediaTempoEvent> tempo = Halvorn::queryInterface<IMediaTempoEvent>(event);
        IMediaTime* time = event->getTime();
        if (!tempo || !time)
            return;
        out.start(Element::kRealPoint);
        out.real(Attribute::kTime, time->getStart(), kTime);
        out.real(Attribute::kValue, tempo->getTempo(), kValue);
        // Every interpolation but linear goes out as hold.
        out.text(Attribute::kInterpolation, interpolationToString(tempo->getInterpolation()));
        out.end();
    });
    out.end();
}

void CvXmlWriter::writeSignatureAutomation(CvXmlOutput& out, IMediaTrack* track) {
    out.start(Element::kTimeSignatureAutomation);
    out.text(Attribute::kTimeUnit, Text::kSeconds);
    forEachEvent(track, [&](IMediaEvent* event) {
        IPtr<IMediaSignatureEvent> signature = Halvorn::queryInterface<IMediaSignatureEvent>(event);
        IMediaTime* time = event->getTime();
        if (!signature || !time)
            return;
        out.start(Element::kTimeSignaturePoint);
        out.real(Attribute::kTime, time->getStart(), kTime);
        out.integer(Attribute::kNumerator, signature->getNumerator());
        out.integer(Attribute::kDenominator, signature->getDenominator());
        out.end();
    });
    out.end();
}

void CvXmlWriter::writeMarkers(CvXmlOutput& out, IMediaTrack* track) {
    out.start(Element::kMarkers);
    out.text(Attribute::kTimeUnit, Text::kSeconds);
    forEachEvent(track, [&](IMediaEvent* event) {
        IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(event);
        IPtr<IMediaMarkerEvent> marker = Halvorn::queryInterface<IMediaMarkerEvent>(event);
        IMediaTime* time = event->getTime();
        if (!identity || !marker || !time)
            return;
        out.start(Element::kMarker);
        out.real(Attribute::kTime, time->getStart(), kTime);
        out.text(Attribute::kName, identity->getName());
        out.end();
    });
    out.end();
}

void CvXmlWriter::writeLane(CvXmlOutput& out, IMediaTrack* track) {
    IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(track);
    if (!identity)
        return;
    out.start(Element::kLanes);
    out.text(Attribute::kTrack, identity->getId());
    if (track->getClipCount() != 0) {
        out.start(Element::kClips);
        for (uint32 i = 0; i < track->getClipCount(); ++i)
            if (IMediaClip* clip = track->getClip(i))
                writeClip(out, clip);
        out.end();
    }
    for (uint32 i = 0; i < track->getAutomationCount(); ++i) {
        IMediaAutomation* automation = track->getAutomation(i);
        if (automation && !String(automation->getTarget()).isEmpty())
            writeAutomation(out, automation);
    }
    out.end();
}

void CvXmlWriter::writeClip(CvXmlOutput& out, IMediaClip* clip) {
    const uint32 type = clip->getEventType();
    out.start(Element::kClip);
    writeSpan(out, Times(clip->getTime()));
    if (type == kEventAudio) {
        out.text(Attribute::kFadeTimeUnit, Text::kSeconds);
        if (clip->getFadeInTime() > 0.0)
            out.real(Attribute::kFadeInTime, clip->getFadeInTime(), kValue);
        if (clip->getFadeOutTime() > 0.0)
            out.real(Attribute::kFadeOutTime, clip->getFadeOutTime(), kValue);
    }
    IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(clip);
    if (identity)
        out.text(Attribute::kName, identity->getName());
    if (IPtr<IMediaEvent> event = Halvorn::queryInterface<IMediaEvent>(clip))
        out.boolean(Attribute::kEnable, !event->isMuted());
    if (identity)
        writeColor(out, identity.get());
    if (type == kEventAudio)
        writeAudioContent(out, clip);
    else if (type == kEventMidi)
        writeNotes(out, clip);
    else if (type == kEventVideo)
        writeVideoContent(out, clip);
    out.end();
}

void CvXmlWriter::writeAutomation(CvXmlOutput& out, IMediaAutomation* automation) {
    out.start(Element::kPoints);
    if (automation->getUnit() != kUnitUnknown)
        out.text(Attribute::kUnit, unitToString(automation->getUnit()));
    if (IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(automation))
        out.text(Attribute::kId, identity->getId());
    out.start(Element::kTarget);
    out.text(Attribute::kParameter, automation->getTarget());
    out.end();
    for (uint32 i = 0; i < automation->getPointCount(); ++i) {
        IMediaAutomationPoint* point = automation->getPoint(i);
        if (!point)
            continue;
        // The interpolation alone picks the element: nothing else marks a Boolean lane.
        if (point->getInterpolation() == kInterpolationLinear) {
            out.start(Element::kRealPoint);
            out.real(Attribute::kTime, point->getTime(), kTime);
            out.real(Attribute::kValue, point->getValue(), kValue);
            out.text(Attribute::kInterpolation, interpolationToString(kInterpolationLinear));
        } else {
            out.start(Element::kBoolPoint);
            out.real(Attribute::kTime, point->getTime(), kTime);
            out.boolean(Attribute::kValue, point->getValue() > 0.0);
        }
        out.end();
    }
    out.end();
}

void CvXmlWriter::writeAudioContent(CvXmlOutput& out, IMediaClip* clip) {
    if (clip->getEventCount() == 0)
        return;
    out.start(Element::kClips);
    for (uint32 i = 0; i < clip->getEventCount(); ++i)
        if (IMediaEvent* event = clip->getEvent(i))
            writeAudioEvent(out, event);
    out.end();
}

void CvXmlWriter::writeAudioEvent(CvXmlOutput& out, IMediaEvent* event) {
    IPtr<IMediaAudioEvent> audio = Halvorn::queryInterface<IMediaAudioEvent>(event);
    IMediaTime* time = event->getTime();
    if (!audio || !time)
        return;
    out.start(Element::kClip);
    out.text(Attribute::kContentTimeUnit, Text::kSeconds);
    writeSpan(out, Times(time));
    uint32 sampleRate = 0;
    uint32 channels = 0;
    double duration = 0.0;
    String path;
    // Without its file the event keeps its place and time, as a Clip without child.
    if (String(audio->getFilePath()).isEmpty() ||
        audio->getFormat(&sampleRate, &channels, &duration) != kResultOk ||
        !stageFile(audio->getFilePath(), kCvFileAudio, Text::kAudioFolder, path)) {
        out.end();
        return;
    }
    const uint32 warps = audio->getWarpCount();
    if (warps != 0) {
        out.start(Element::kWarps);
        out.text(Attribute::kContentTimeUnit, Text::kSeconds);
        out.text(Attribute::kTimeUnit, Text::kSeconds);
    }
    out.start(Element::kAudio);
    out.integer(Attribute::kSampleRate, sampleRate);
    out.integer(Attribute::kChannels, channels);
    out.real(Attribute::kDuration, duration, kValue);
    writeFile(out, path);
    out.end();
    if (warps != 0) {
        for (uint32 i = 0; i < warps; ++i) {
            IMediaWarpPoint* warp = audio->getWarp(i);
            if (!warp)
                continue;
            out.start(Element::kWarp);
            out.real(Attribute::kTime, warp->getTime(), kTime);
            out.real(Attribute::kContentTime, warp->getContentTime(), kValue);
            out.end();
        }
        out.end();
    }
    out.end();
}

void CvXmlWriter::writeVideoContent(CvXmlOutput& out, IMediaClip* clip) {
    for (uint32 i = 0; i < clip->getEventCount(); ++i) {
        IPtr<IMediaVideoEvent> video = Halvorn::queryInterface<IMediaVideoEvent>(clip->getEvent(i));
        if (!video || String(video->getFilePath()).isEmpty())
            continue;
        uint32 sampleRate = 0;
        uint64 frameCount = 0;
        double duration = 0.0;
        String path;
        if (video->getFormat(&sampleRate, &frameCount, &duration) != kResultOk ||
            !stageFile(video->getFilePath(), kCvFileVideo, Text::kVideoFolder, path))
            continue;
        out.start(Element::kVideo);
        out.real(Attribute::kDuration, duration, kValue);
        writeFile(out, path);
        out.end();
    }
}

void CvXmlWriter::writeNotes(CvXmlOutput& out, IMediaClip* clip) {
    if (clip->getEventCount() == 0)
        return;
    out.start(Element::kNotes);
    for (uint32 i = 0; i < clip->getEventCount(); ++i) {
        IMediaEvent* event = clip->getEvent(i);
        IPtr<IMediaMidiEvent> midi = Halvorn::queryInterface<IMediaMidiEvent>(event);
        IPtr<IMediaMidiNoteEvent> note = Halvorn::queryInterface<IMediaMidiNoteEvent>(event);
        if (!midi || !note || !event->getTime())
            continue;
        out.start(Element::kNote);
        const Times times(event->getTime());
        out.real(Attribute::kTime, times.start, kTime);
        out.real(Attribute::kDuration, times.duration, kTime);
        out.integer(Attribute::kChannel, midi->getChannel());
        out.integer(Attribute::kKey, note->getKey());
        out.real(Attribute::kVelocity, note->getVelocity(), kValue);
        out.text(Attribute::kRelease, kNoteRelease);
        out.end();
    }
    out.end();
}

} // namespace Halvorn
