// Project documents for the read benchmarks, written as text of the exchange format.
#pragma once

#include <string>
#include <vector>

namespace ReadBench {

// The size of a generated project. Tracks alternate in a fixed pattern: the first of every
// audioEvery tracks holds audio events that refer to audioFiles in turn, the others notes.
// Every track has a channel with devices and a send, and one automation lane.
struct DocumentShape {
    int tracks = 2;
    int clipsPerTrack = 50;
    int eventsPerClip = 100;
    int audioEvery = 5;
    int pointsPerLane = 100;
    // Leaf names below "audio/" in the package.
    std::vector<std::string> audioFiles;

    long events() const { return long(tracks) * clipsPerTrack * eventsPerClip; }
};

// The file names "take0.wav", "take1.wav", ... for count media files.
std::vector<std::string> takeNames(int count);

// Writes project.xml text with Application, Transport, Structure (tracks with channels,
// devices and sends, a master and an effect channel) and Arrangement (lanes with note and
// audio clips and automation, tempo and signature automation, markers). False on a write error.
bool writeProjectDocument(const std::string& path, const DocumentShape& shape);

} // namespace ReadBench
