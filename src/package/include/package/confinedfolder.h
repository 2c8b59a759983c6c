// ConfinedFolder: creates files and folders below one folder without ever leaving it.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {

// Archives are hostile input. Every level below the root is opened relative to its parent with
// links refused, so that neither a name nor a link already lying in the folder (made by anyone)
// can redirect a write elsewhere; only the root's own path is trusted.
class ConfinedFolder {
public:
    explicit ConfinedFolder(const char8* rootPath);
    ~ConfinedFolder();
    ConfinedFolder(const ConfinedFolder&) = delete;
    ConfinedFolder& operator=(const ConfinedFolder&) = delete;

    bool isOpen() const { return root_ >= 0; }

    // relativePath has "/" separators and no empty, "." or ".." component (see ZipEntryName).
    // Creates the missing folders on the way and gives a descriptor of a regular file opened for
    // writing and emptied, or -1. The caller closes it.
    [[nodiscard]] int createFile(const char8* relativePath) const;
    // Creates the folder and its missing parents; false when one of them can't be made or is a
    // link or no folder.
    [[nodiscard]] bool createFolder(const char8* relativePath) const;

private:
    // Opens the folder of the first count bytes of relativePath, creating levels as needed;
    // gives a descriptor or -1.
    [[nodiscard]] int openFolder(const char8* relativePath, uint32 count) const;

    int root_ = -1;
};

// Writes all of count bytes to a descriptor, resuming after interruptions and short writes.
[[nodiscard]] bool writeAll(int descriptor, const void* data, uint32 count);

} // namespace Halvorn
