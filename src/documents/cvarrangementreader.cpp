// CvArrangementReader: lanes, clips, audio with warp points, notes, video, automation, markers,
// tempo and time signature.
#include "documents/cvarrangementreader.h"

#include "documents/cvnodevalues.h"
#include "documents/cvschemanames.h"
#include "documents/cvtables.h"
#include "model/cvproject.h"

#include <new>

namespace Halvorn {

using namespace CvSchema;
using namespace CvNodeValues;

namespace {

String text(const char8* utf8) { return String(utf8); }

// One automation point between the document and the model: real and Boolean points are
// gathered first, so that all real points come before all Boolean ones.
struct PendingPoint {
    String id;
    uint32 interpolation = kInterpolationLinear;
    double value = 0.0;
    double time = 0.0;
};

// Puts a timeline event at its time in the clip, with the element's colour when it has one.
void placeEvent(CvClip* clip, CvEvent* event, const CvXmlElement& element, double time) {
    event->setStart(time);
    CvColor color = readColor(element);
    if (color.isValid())
        event->setColor(color);
    clip->addEvent(event);
}

// The clip's event type follows from the track's content; 0 drops the clip.
uint32 eventTypeOfContent(uint32 contentType) {
    switch (contentType) {
    case kContentAudio:
        return kEventAudio;
    case kContentNotes:
        return kEventMidi;
    case kContentVideo:
        return kEventVideo;
    case kContentAudioNotes:
        return kEventAudioNotes;
    default:
        return 0;
    }
}

} // namespace

void CvArrangementReader::read(const CvXmlElement& arrangement) {
    // Every track is read by now, and lanes look them up by id: index them once, in the
    // order in which the project's own look-up would find them.
    allTracks = project->getAllTracks();
    for (int32 place = 0; place < allTracks.total(); ++place)
        if (!tracks.add(place))
            throw std::bad_alloc();
    for (const CvXmlElement& outer : arrangement.getChildrenByName(Element::kLanes)) {
        bool outerSeconds = readSeconds(outer, Attribute::kTimeUnit, true);
        for (const CvXmlElement& lane : outer.getChildrenByName(Element::kLanes))
            readLane(lane, outerSeconds);
    }
    for (const CvXmlElement& markers : arrangement.getChildrenByName(Element::kMarkers))
        readMarkers(markers);
    if (const CvXmlElement tempo = arrangement.findChild(Element::kTempoAutomation))
        readTempoAutomation(tempo);
    if (const CvXmlElement signature = arrangement.findChild(Element::kTimeSignatureAutomation))
        readSignatureAutomation(signature);
}

// A Clips with a time unit sets it for itself, for the Clips behind it and for the lane's Points.
void CvArrangementReader::readLane(const CvXmlElement& lane, bool outerSeconds) {
    bool laneSeconds = readSeconds(lane, Attribute::kTimeUnit, outerSeconds);
    CvTrack* laneTrack = tracks.find(readText(lane, Attribute::kTrack, String()));
    for (const CvXmlElement& clips : lane.getChildrenByName(Element::kClips)) {
        CvTrack* track = trackFor(clips, laneTrack);
        if (!track)
            continue;
        laneSeconds = readSeconds(clips, Attribute::kTimeUnit, laneSeconds);
        for (const CvXmlElement& clip : clips.getChildrenByName(Element::kClip))
            readClip(clip, track, laneSeconds, outerSeconds);
    }
    for (const CvXmlElement& points : lane.getChildrenByName(Element::kPoints))
        readPoints(points, laneTrack, laneSeconds);
}

CvTrack* CvArrangementReader::trackFor(const CvXmlElement& node, CvTrack* laneTrack) const {
    return laneTrack ? laneTrack : tracks.find(readText(node, Attribute::kTrack, String()));
}

double CvArrangementReader::readTime(const CvXmlElement& node, const char8* key, double defaultValue,
                                     bool seconds) const {
    double value = readReal(node, key, defaultValue);
    return seconds ? value : timeDomain->beatsToSeconds(value);
}

void CvArrangementReader::readClip(const CvXmlElement& node, CvTrack* track, bool laneSeconds,
                                   bool outerSeconds) const {
    double start = readTime(node, Attribute::kTime, 0.0, laneSeconds);
    double duration = readTime(node, Attribute::kDuration, 0.0, laneSeconds);
    String name = readName(node);
    CvColor color = readColor(node);
    bool contentSeconds = readSeconds(node, Attribute::kContentTimeUnit, outerSeconds);
    double playStart = readTime(node, Attribute::kPlayStart, 0.0, contentSeconds);
    double playStop = readTime(node, Attribute::kPlayStop, 0.0, contentSeconds);
    if (duration == 0.0)
        duration = playStop - playStart;
    uint32 eventType = eventTypeOfContent(track->getContentType());
    if (eventType == 0)
        return;

    IPtr<CvClip> clip = newObject<CvClip>(eventType, String());
    clip->setStart(start);
    clip->setDuration(duration);
    clip->setOffset(playStart);
    clip->setName(name);
    if (color.isValid())
        clip->setColor(color);
    if (!readBoolean(node, Attribute::kEnable, true))
        clip->setMuted(true);
    bool fadeSeconds = readSeconds(node, Attribute::kFadeTimeUnit, true);
    clip->setFadeInTime(readTime(node, Attribute::kFadeInTime, 0.0, fadeSeconds));
    clip->setFadeOutTime(readTime(node, Attribute::kFadeOutTime, 0.0, fadeSeconds));
    track->addClip(clip.get());

    switch (eventType) {
    case kEventAudio:
        readAudioEvents(node, clip.get(), laneSeconds);
        break;
    case kEventMidi:
        readNoteEvents(node, clip.get(), laneSeconds);
        break;
    case kEventVideo:
        readVideoEvents(node, clip.get());
        break;
    default: // a clip of audio and notes has no content
        break;
    }
}

// Without inner Clips the clip element itself is the one audio event.
void CvArrangementReader::readAudioEvents(const CvXmlElement& clipNode, CvClip* clip,
                                          bool laneSeconds) const {
    const CvXmlElement inner = clipNode.findChild(Element::kClips);
    if (!inner) {
        readAudioEvent(clipNode, clip, laneSeconds);
        return;
    }
    bool clipsSeconds = readSeconds(inner, Attribute::kTimeUnit, laneSeconds);
    for (const CvXmlElement& element : inner.getChildrenByName(Element::kClip))
        readAudioEvent(element, clip, clipsSeconds);
}

// An element without an Audio, or with an Audio without File, gives no event.
void CvArrangementReader::readAudioEvent(const CvXmlElement& element, CvClip* clip,
                                         bool clipsSeconds) const {
    const CvXmlElement audio = element.findDescendant(Element::kAudio);
    const CvXmlElement file = audio ? audio.findChild(Element::kFile) : CvXmlElement();
    if (!file)
        return;
    auto sampleRate = static_cast<uint32>(readInteger(audio, Attribute::kSampleRate, 44100));
    double fileDuration = readReal(audio, Attribute::kDuration, 0.0);
    auto channels = static_cast<uint32>(readInteger(audio, Attribute::kChannels, 1));
    bool external = readBoolean(file, Attribute::kExternal, false);
    String path = readText(file, Attribute::kPath, String());

    IPtr<CvAudioEvent> event = newObject<CvAudioEvent>(String());
    event->setFile(path.text16(), external);
    event->setFormat(sampleRate, channels, fileDuration);

    bool contentSeconds = readSeconds(element, Attribute::kContentTimeUnit, true);
    double playStart = readTime(element, Attribute::kPlayStart, 0.0, contentSeconds);
    double playStop = readTime(element, Attribute::kPlayStop, 0.0, contentSeconds);
    double start = readTime(element, Attribute::kTime, 0.0, clipsSeconds);
    double duration = readTime(element, Attribute::kDuration, 0.0, clipsSeconds);
    if (duration == 0.0)
        duration = playStop - playStart;
    event->setStart(start);
    event->setDuration(duration);
    event->setOffset(playStart);

    if (const CvXmlElement warps = element.findChild(Element::kWarps)) {
        bool warpContentSeconds = readSeconds(warps, Attribute::kContentTimeUnit, true);
        bool warpSeconds = readSeconds(warps, Attribute::kTimeUnit, clipsSeconds);
        for (const CvXmlElement& warp : warps.getChildrenByName(Element::kWarp)) {
            double contentTime = readTime(warp, Attribute::kContentTime, 0.0, warpContentSeconds);
            double time = readTime(warp, Attribute::kTime, 0.0, warpSeconds);
            event->addWarpPoint(CvWarpPoint::fromDocument(time, contentTime).get());
        }
    }
    clip->addEvent(event.get());
}

void CvArrangementReader::readNoteEvents(const CvXmlElement& clipNode, CvClip* clip,
                                         bool laneSeconds) const {
    for (const CvXmlElement& notes : clipNode.getDescendantsByName(Element::kNotes)) {
        for (const CvXmlElement& note : notes.getChildrenByName(Element::kNote)) {
            double start = readTime(note, Attribute::kTime, 0.0, laneSeconds);
            double duration = readTime(note, Attribute::kDuration, 0.0, laneSeconds);
            auto channel = static_cast<uint32>(readInteger(note, Attribute::kChannel, 0));
            auto key = static_cast<uint32>(readInteger(note, Attribute::kKey, 60));
            double velocity = readReal(note, Attribute::kVelocity, 1.0);
            IPtr<CvMidiNoteEvent> event = newObject<CvMidiNoteEvent>(key, velocity, channel);
            event->setStart(start);
            event->setDuration(duration);
            clip->addEvent(event.get());
        }
    }
}

// Time and format of a video event stay at their defaults: the format doesn't read them.
void CvArrangementReader::readVideoEvents(const CvXmlElement& clipNode, CvClip* clip) const {
    const CvXmlElement video = clipNode.findChild(Element::kVideo);
    const CvXmlElement file = video ? video.findChild(Element::kFile) : CvXmlElement();
    if (!file)
        return;
    bool external = readBoolean(file, Attribute::kExternal, false);
    String path = readText(file, Attribute::kPath, String());
    IPtr<CvVideoEvent> event = newObject<CvVideoEvent>(String());
    event->setFile(path.text16(), external);
    clip->addEvent(event.get());
}

// Real points come before Boolean points whatever their order in the file; nothing sorts them.
void CvArrangementReader::readPoints(const CvXmlElement& node, CvTrack* laneTrack,
                                     bool laneSeconds) const {
    CvTrack* track = trackFor(node, laneTrack);
    const CvXmlElement target = track ? node.findChild(Element::kTarget) : CvXmlElement();
    if (!target)
        return;
    String parameter = readText(target, Attribute::kParameter, String());
    if (parameter.isEmpty())
        return;
    uint32 unit = unitFromString(readText(node, Attribute::kUnit, text(Text::kUnknown)));
    IPtr<CvAutomation> automation = newObject<CvAutomation>(unit, readId(node));
    automation->setTarget(parameter);

    TArray<PendingPoint> points(-1);
    for (const CvXmlElement& element : node.getChildrenByName(Element::kRealPoint))
        points.add(PendingPoint{readId(element), readInterpolation(element),
                                readReal(element, Attribute::kValue, 0.0),
                                readReal(element, Attribute::kTime, 0.0)});
    for (const CvXmlElement& element : node.getChildrenByName(Element::kBoolPoint))
        points.add(PendingPoint{readId(element), kInterpolationHold,
                                readBoolean(element, Attribute::kValue, true) ? 1.0 : 0.0,
                                readReal(element, Attribute::kTime, 0.0)});
    for (const PendingPoint& point : points) {
        IPtr<CvAutomationPoint> modelPoint = newObject<CvAutomationPoint>(point.id);
        modelPoint->setValue(point.value);
        modelPoint->setTime(laneSeconds ? point.time : timeDomain->beatsToSeconds(point.time));
        modelPoint->setInterpolation(point.interpolation);
        automation->addPoint(modelPoint.get());
    }
    track->addAutomation(automation.get());
}

CvClip* CvArrangementReader::addTimelineTrack(const CvXmlElement& node, uint32 contentType,
                                              const char8* defaultName, uint32 eventType) const {
    IPtr<CvTrack> track = newObject<CvTrack>(contentType, readId(node));
    track->setName(readText(node, Attribute::kName, text(defaultName)));
    project->addTrack(track.get());
    IPtr<CvClip> clip = newObject<CvClip>(eventType, String());
    clip->setStart(0.0);
    clip->setName(text(defaultName));
    track->addClip(clip.get());
    return clip.get();
}

// Marker times are in beats unless the element says seconds.
void CvArrangementReader::readMarkers(const CvXmlElement& node) const {
    bool seconds = readSeconds(node, Attribute::kTimeUnit, false);
    CvClip* clip = addTimelineTrack(node, kContentMarkers, Text::kMarkersName, kEventMarker);
    double end = 0.0;
    for (const CvXmlElement& element : node.getChildrenByName(Element::kMarker)) {
        double time = readTime(element, Attribute::kTime, 0.0, seconds);
        IPtr<CvMarkerEvent> marker = newObject<CvMarkerEvent>();
        marker->setName(readName(element));
        placeEvent(clip, marker.get(), element, time);
        end = time > end ? time : end;
    }
    clip->setDuration(end);
}

// Tempo point times are always seconds.
void CvArrangementReader::readTempoAutomation(const CvXmlElement& node) const {
    CvClip* clip = addTimelineTrack(node, kContentTempo, Text::kTempoName, kEventTempo);
    double end = 0.0;
    for (const CvXmlElement& element : node.getChildrenByName(Element::kRealPoint)) {
        double time = readReal(element, Attribute::kTime, 0.0);
        IPtr<CvTempoEvent> event = newObject<CvTempoEvent>();
        event->setTempo(readReal(element, Attribute::kValue, 120.0));
        event->setInterpolation(readInterpolation(element));
        placeEvent(clip, event.get(), element, time);
        end = time > end ? time : end;
    }
    clip->setDuration(end);
}

// Signature point times are in beats unless the element says seconds.
void CvArrangementReader::readSignatureAutomation(const CvXmlElement& node) const {
    bool seconds = readSeconds(node, Attribute::kTimeUnit, false);
    CvClip* clip = addTimelineTrack(node, kContentSignature, Text::kSignatureName, kEventSignature);
    double end = 0.0;
    for (const CvXmlElement& element : node.getChildrenByName(Element::kTimeSignaturePoint)) {
        double time = readTime(element, Attribute::kTime, 0.0, seconds);
        IPtr<CvSignatureEvent> event = newObject<CvSignatureEvent>();
        event->setNumerator(static_cast<uint16>(readInteger(element, Attribute::kNumerator, 4)));
        event->setDenominator(
            static_cast<uint16>(readInteger(element, Attribute::kDenominator, 4)));
        placeEvent(clip, event.get(), element, time);
        end = time > end ? time : end;
    }
    clip->setDuration(end);
}

} // namespace Halvorn
