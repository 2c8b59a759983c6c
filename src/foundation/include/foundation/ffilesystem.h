// FNFileSystem: the process-wide file and folder service, reached through gFNFileSystem.
#pragma once

#include "foundation/fstream.h"
#include "foundation/furl.h"

namespace Halvorn {

// Holds no state, so it needs no set-up and may be used from any thread. Paths go to the
// system as UTF-8. Failures answer null or false; the system's error number (errno) goes only
// to the optional out argument of the stream operations, which receives 0 on success.
class FNFileSystem {
public:
    // A new stream, with one reference, on a file created or emptied; missing parent folders
    // are made first. The file is always open for writing, and for reading too with kRead.
    // A symbolic link at the path is not followed (ELOOP): nothing is written through it.
    [[nodiscard]] FStream* createStream(const FUrl& url, int32 mode, int32* error = nullptr) const;
    // A new stream, with one reference, on an existing file; mode needs kRead or kWrite
    // (else EINVAL). A folder gives EISDIR.
    [[nodiscard]] FStream* openStream(const FUrl& url, int32 mode, int32* error = nullptr) const;
    // Closes the stream and releases the caller's reference. Null is allowed.
    void closeStream(FStream* stream) const;

    // True when the path exists and is of the url's kind: a folder for a folder url, a regular
    // file for a file url.
    [[nodiscard]] bool fileExists(const FUrl& url) const;
    [[nodiscard]] bool folderExists(const FUrl& url) const;
    // Makes every missing level; for a file url its parent folder. True when the folder
    // exists afterwards.
    [[nodiscard]] bool createFolder(const FUrl& url) const;
    // True when no folder remains at the path (a missing folder counts as removed). Recursive
    // deletes the contents first, depth first, and stops at the first item it can't delete.
    // Symbolic links are never followed, neither at the path nor inside: a link is removed as
    // itself and whatever it points to stays. A link at the path itself gives false.
    [[nodiscard]] bool removeFolder(const FUrl& url, bool recursive) const;
    // Makes a new item, private to the user, at a free name derived from wanted as makeUnique
    // derives it: an empty file for a file url, an empty folder for a folder url. The item is
    // created exclusively, so a concurrent caller who takes the same name first makes this one
    // search again; an item that existed before is never taken over. claimed receives the url.
    [[nodiscard]] bool claimUnique(const FUrl& wanted, FUrl& claimed) const;
    // As claimUnique for a file, which stays locked (flock) through lockedFd until the caller
    // closes it: a claimed file nobody holds locked was left by a writer that was killed.
    [[nodiscard]] bool claimLockedFile(const FUrl& wanted, FUrl& claimed, int& lockedFd) const;
    // Renames a file over the target in one step; a link at the target is replaced, not followed.
    [[nodiscard]] bool renameFile(const FUrl& source, const FUrl& target) const;
    // True when the file was deleted.
    [[nodiscard]] bool removeFile(const FUrl& url) const;
    // Copies a regular file through a 64 KiB buffer. Without overwrite an existing target
    // refuses; with it a target that is the source itself refuses. A copy that fails part-way
    // deletes the target. Gives the target url with one reference, or null.
    [[nodiscard]] FUrl* copyFile(const FUrl& source, const FUrl& target,
                                 bool overwrite = false) const;
};

// The service, a static object that exists as soon as the module is loaded.
extern FNFileSystem* const gFNFileSystem;

} // namespace Halvorn
