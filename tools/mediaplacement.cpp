// Telling the media a read placed from those it could not.
#include "mediaplacement.h"

#include "conventions.h"

#include <iostream>

namespace CorvelleTool {

std::vector<std::string> unplacedMedia(const std::set<std::string>& mediaFiles,
                                       const std::string& folder) {
    const std::string prefix = folder + "/";
    std::vector<std::string> unplaced;
    for (const std::string& file : mediaFiles)
        if (file.compare(0, prefix.size(), prefix) != 0)
            unplaced.push_back(file);
    return unplaced;
}

int warnUnplaced(const std::vector<std::string>& unplaced, const std::string& package) {
    for (const std::string& file : unplaced)
        std::cerr << "corvelle: " << package << ": media file not placed: " << file << "\n";
    return unplaced.empty() ? kExitSuccess : kExitWarnings;
}

} // namespace CorvelleTool
