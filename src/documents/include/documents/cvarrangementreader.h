// CvArrangementReader: reads the Arrangement element: lanes with clips, events and automation,
// then markers, tempo and time signature.
#pragma once

#include "documents/cvxmltree.h"
#include "model/cvlistindex.h"

namespace Halvorn {

class CvClip;
class CvProject;
class CvTimeDomain;
class CvTrack;

// Fills a project whose tracks are already read; project and time domain are borrowed for the
// reader's life. Times in beats become seconds at the single tempo of the time domain; tempo
// automation plays no part in that. A track reference that finds nothing drops the content
// that depends on it.
class CvArrangementReader {
public:
    CvArrangementReader(CvProject* project, CvTimeDomain* timeDomain)
        : project(project), timeDomain(timeDomain) {}

    void read(const CvXmlElement& arrangement);

private:
    void readLane(const CvXmlElement& lane, bool outerSeconds);
    void readClip(const CvXmlElement& node, CvTrack* track, bool laneSeconds, bool outerSeconds) const;
    void readAudioEvents(const CvXmlElement& clipNode, CvClip* clip, bool laneSeconds) const;
    void readAudioEvent(const CvXmlElement& element, CvClip* clip, bool clipsSeconds) const;
    void readNoteEvents(const CvXmlElement& clipNode, CvClip* clip, bool laneSeconds) const;
    void readVideoEvents(const CvXmlElement& clipNode, CvClip* clip) const;
    void readPoints(const CvXmlElement& node, CvTrack* laneTrack, bool laneSeconds) const;
    void readMarkers(const CvXmlElement& node) const;
    void readTempoAutomation(const CvXmlElement& node) const;
    void readSignatureAutomation(const CvXmlElement& node) const;

    // A time attribute in seconds: read, and converted from beats unless seconds is true.
    double readTime(const CvXmlElement& node, const char8* key, double defaultValue, bool seconds) const;
    // The track of a lane's Clips or Points: the lane's own, else the element's "track".
    CvTrack* trackFor(const CvXmlElement& node, CvTrack* laneTrack) const;
    // A track of its own for tempo, signature or markers, with the one clip that holds the
    // events; the clip is returned borrowed.
    CvClip* addTimelineTrack(const CvXmlElement& node, uint32 contentType, const char8* defaultName,
                             uint32 eventType) const;

    CvProject* project;
    CvTimeDomain* timeDomain;
    // The project's tracks in depth-first order, and by id the first of each.
    TArray<CvTrack*> allTracks;
    CvIdIndex<CvTrack, TArray<CvTrack*>> tracks{allTracks};
};

} // namespace Halvorn
