// corvelle ls: the entries of a package archive with their sizes, read with minizip directly,
// since the host-free door gives the project and not the archive.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace CorvelleTool {

struct ArchiveEntry {
    std::string name;
    uint64_t size = 0;
    uint64_t compressedSize = 0;
    std::string modified; // "YYYY-MM-DD HH:MM", the archive's local time
};

// The entries of the zip archive at path, in the archive's order; false when path is no
// regular file or no zip archive whose directory reads to its end.
bool readArchiveEntries(const std::string& path, std::vector<ArchiveEntry>& entries);

// The inflated bytes of the first entry named name; false when there is none, it can't be
// inflated, or it holds more than limit bytes.
bool readArchiveEntry(const std::string& path, const std::string& name, uint64_t limit,
                      std::string& data);

// Prints every entry of the archive at path in the archive's order, as a table like
// "unzip -l" or as JSON. kExitSuccess, or one line on stderr and kExitFailed when the file is
// no readable zip archive.
int listEntries(const std::string& path, bool json);

} // namespace CorvelleTool
