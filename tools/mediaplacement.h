// Media files that a read could not place where they were asked to go.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace CorvelleTool {

// The files of a project read with its media sent below folder that don't lie below it: the
// library keeps the document's path for a medium it could not find or copy.
std::vector<std::string> unplacedMedia(const std::set<std::string>& mediaFiles,
                                       const std::string& folder);

// Says each unplaced file on stderr as a warning about the package; kExitWarnings when there
// was one, else kExitSuccess.
int warnUnplaced(const std::vector<std::string>& unplaced, const std::string& package);

} // namespace CorvelleTool
