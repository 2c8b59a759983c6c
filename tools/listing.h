// corvelle ls: the entries of a package archive with their sizes, read with minizip directly,
// since the host-free door gives the project and not the archive.
#pragma once

#include <string>

namespace CorvelleTool {

// Prints every entry of the archive at path in the archive's order, as a table like
// "unzip -l" or as JSON. kExitSuccess, or one line on stderr and kExitFailed when the file is
// no readable zip archive.
int listEntries(const std::string& path, bool json);

} // namespace CorvelleTool
