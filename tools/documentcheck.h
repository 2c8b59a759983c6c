// Checking a project document against the format, as a careful receiver reads it.
#pragma once

#include "checkfinding.h"

#include <string>
#include <vector>

namespace CorvelleTool {

// A file the document points at: a medium (File) or a plug-in state (State).
struct MediaReference {
    std::string path;
    bool external = false;
    std::string place;
};

struct DocumentCheck {
    std::vector<Finding> findings;
    std::vector<MediaReference> media;
};

// Walks the document text: unknown elements and attributes, values that don't parse or lie
// out of range, ids used twice, references to ids that don't exist, content the reader drops,
// beats without a tempo, video clips without exactly one event.
DocumentCheck checkDocument(const std::string& text);

} // namespace CorvelleTool
