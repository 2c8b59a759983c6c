// A project document exactly as the system's writer writes it, for the document read benchmark.
#pragma once

#include <string>

namespace ReadBench {

// The size of an orchestral project: tracks of notes clips, each track with a channel, an
// insert with parameters and one automation lane.
struct WrittenShape {
    int tracks = 80;
    int clipsPerTrack = 53;
    int notesPerClip = 100;
    int pointsPerLane = 200;

    long notes() const { return long(tracks) * clipsPerTrack * notesPerClip; }
};

// Builds the model in a child process, so that none of its memory stays with the caller, and
// writes it with CvXmlWriter to path. False when that failed.
bool writeWrittenDocument(const std::string& path, const WrittenShape& shape);

} // namespace ReadBench
