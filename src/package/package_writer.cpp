// writeProjectPackage: stage the tree, write both documents, pack, and put the archive in place.
#include "package/package_writer.h"

#include "documents/cvxmlwriter.h"
#include "foundation/ffilesystem.h"
#include "foundation/furl.h"
#include "package/archivecheck.h"
#include "package/cvzipwriter.h"

#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <new>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Halvorn {

namespace {

constexpr const char8* kTreeName = "corvtmp";
// Enough for any run of concurrent writes into one folder.
constexpr int32 kClaimAttempts = 64;
constexpr const char8* kProjectDocument = "project.xml";
constexpr const char8* kMetaDataDocument = "metadata.xml";

String joined(const String& folder, const char8* name) {
    String path(folder);
    if (!path.endsWith(String("/")))
        path.append("/");
    path.append(name);
    return path;
}

// Writes one document into the tree through a stream of its own; true when it is whole.
template <class Write> bool writeDocument(const String& tree, const char8* name, Write write) {
    FStream* stream = gFNFileSystem->createStream(FUrl(joined(tree, name), false), FStream::kWrite);
    if (!stream)
        return false;
    const bool written = write(stream);
    gFNFileSystem->closeStream(stream);
    return written;
}

// Finds a free name beside the target and makes the item there exclusively with make (which
// fails with EEXIST when someone else was first, and then the search runs again). So the write
// never takes over an item it didn't make: a folder "corvtmp" that exists already may be the
// user's, and it is neither used nor removed.
template <class Make>
[[nodiscard]] bool claim(const String& path, bool isFolder, FUrl& url, Make make) {
    for (int32 attempt = 0; attempt < kClaimAttempts; ++attempt) {
        url = FUrl(path, isFolder);
        if (!url.makeUnique())
            return false;
        if (make(url.getPath().text8()))
            return true;
        if (errno != EEXIST)
            return false;
    }
    return false;
}

bool makeFolder(const char8* path) { return mkdir(path, 0700) == 0; }

// A part file is locked for as long as its write runs; a part file that nobody holds locked
// was left by a write that was killed.
int makeLockedFile(const char8* path) {
    const int fd = open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (fd >= 0 && flock(fd, LOCK_EX) != 0) {
        close(fd);
        unlink(path);
        return -1;
    }
    return fd;
}

// True for the part name itself and for its unique forms ("-01", "-02", ...).
bool isPartName(const char8* name, const String& partName) {
    const std::string base(partName.text8());
    const std::string text(name);
    if (text.compare(0, base.size(), base) != 0)
        return false;
    const std::string rest = text.substr(base.size());
    return rest.empty() || (rest.size() >= 3 && rest[0] == '-' &&
                            rest.find_first_not_of("0123456789", 1) == std::string::npos);
}

// Removes the partial files that earlier writes to the same target left when they were killed:
// regular files of the target's part name that no running write holds locked.
void removeStalePartFiles(const String& folder, const String& partName) {
    String folderPath(folder);
    const int folderFd = open(folderPath.text8(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR* listing = folderFd >= 0 ? fdopendir(folderFd) : nullptr;
    if (!listing) {
        if (folderFd >= 0)
            close(folderFd);
        return;
    }
    while (const dirent* entry = readdir(listing)) {
        if (!isPartName(entry->d_name, partName))
            continue;
        const int fd =
            openat(folderFd, entry->d_name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        struct stat status;
        if (fd >= 0 && fstat(fd, &status) == 0 && S_ISREG(status.st_mode) &&
            flock(fd, LOCK_EX | LOCK_NB) == 0)
            unlinkat(folderFd, entry->d_name, 0);
        if (fd >= 0)
            close(fd);
    }
    closedir(listing);
}

// Packs the tree into a fresh file beside the target and renames it over the target, so that
// the target only ever holds a whole archive. The temporary file never outlives the call, but
// for a kill that gives no chance to remove it; the next write to the target removes it then.
bool packTree(const String& tree, const String& folder, const String& leaf, const String& target) {
    String partName(".");
    partName.append(leaf);
    partName.append(".part");
    removeStalePartFiles(folder, partName);
    FUrl part;
    int lock = -1;
    const auto makeFile = [&lock](const char8* path) { return (lock = makeLockedFile(path)) >= 0; };
    if (!claim(joined(folder, partName.text8()), false, part, makeFile))
        return false;
    String partPath;
    part.getNativePath(partPath);
    String targetPath(target);
    const bool packed =
        CvZipWriter().zipFolder(tree, partPath) && archiveHoldsFolder(partPath, tree);
    // rename replaces the target in one step, and a link at the target is replaced, not followed.
    const bool placed = packed && std::rename(partPath.text8(), targetPath.text8()) == 0;
    if (!placed)
        std::remove(partPath.text8());
    close(lock);
    return placed;
}

} // namespace

bool writeProjectPackage(IMediaProjectPackage* package, const char16* path) {
    if (!package || !path)
        return false;
    String target(path);
    target.replace(String("\\"), String("/"));
    const int32 slash = target.findLast(-1, u'/');
    String leaf(target);
    leaf.remove(0, slash + 1);
    if (leaf.isEmpty())
        return false; // a path that ends in "/" names no file
    String folder("./");
    if (slash >= 0) {
        folder = target;
        folder.remove(slash + 1);
    }
    if (!gFNFileSystem->folderExists(FUrl(folder, true)))
        return false;

    FUrl tree;
    if (!claim(joined(folder, kTreeName), true, tree, makeFolder))
        return false;
    String treePath;
    tree.getNativePath(treePath);

    bool archived = false;
    try {
        CvXmlWriter writer(treePath);
        const bool projectWritten = writeDocument(treePath, kProjectDocument, [&](FStream* stream) {
            return writer.writeProject(package->getProject(), stream);
        });
        const bool metaDataWritten =
            writeDocument(treePath, kMetaDataDocument,
                          [&](FStream* stream) { return writer.writeMetaData(stream); });
        archived = projectWritten && metaDataWritten && packTree(treePath, folder, leaf, target);
    } catch (const std::bad_alloc&) {
        // Nothing crosses the interface; the tree goes all the same.
    }
    const bool removed = gFNFileSystem->removeFolder(tree, true);
    return archived && removed;
}

} // namespace Halvorn
