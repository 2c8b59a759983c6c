// writeProjectPackage: stage the tree, write both documents, pack, and put the archive in place.
#include "package/package_writer.h"

#include "documents/cvxmlwriter.h"
#include "foundation/ffilesystem.h"
#include "foundation/furl.h"
#include "package/archivecheck.h"
#include "package/cvzipwriter.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <new>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Halvorn {

namespace {

// Claimed exclusively beside the target, so the write never takes over an item it didn't make:
// a folder "corvtmp" that exists already may be the user's, and it is neither used nor removed.
constexpr const char8* kTreeName = "corvtmp";
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

// A part file stays locked for as long as its write runs (claimLockedFile), so one that nobody
// holds locked was left by a write that was killed.
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
    if (!gFNFileSystem->claimLockedFile(FUrl(joined(folder, partName.text8()), false), part, lock))
        return false;
    String partPath;
    part.getNativePath(partPath);
    const bool packed =
        CvZipWriter().zipFolder(tree, partPath) && archiveHoldsFolder(partPath, tree);
    const bool placed = packed && gFNFileSystem->renameFile(part, FUrl(target, false));
    if (!placed)
        (void)gFNFileSystem->removeFile(part);
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
    if (!gFNFileSystem->claimUnique(FUrl(joined(folder, kTreeName), true), tree))
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
