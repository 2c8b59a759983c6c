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

// Writes one document into the tree through a stream of its own; 0 when it is whole, else the
// error number of the failed write.
template <class Write> int writeDocument(const String& tree, const char8* name, Write write) {
    int32 error = 0;
    FStream* stream =
        gFNFileSystem->createStream(FUrl(joined(tree, name), false), FStream::kWrite, &error);
    if (!stream)
        return error != 0 ? error : EIO;
    errno = 0;
    const bool written = write(stream);
    error = written ? 0 : errno != 0 ? errno : EIO;
    gFNFileSystem->closeStream(stream);
    return error;
}

// Every failure of one write names its target.
PackageError cannotWrite(const String& target, int errorNumber) {
    String lead("cannot write ");
    lead.append(target);
    return packageError(kPackageWriteFailed, lead, errorNumber);
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
PackageError packTree(const String& tree, const String& folder, const String& leaf,
                      const String& target) {
    String partName(".");
    partName.append(leaf);
    partName.append(".part");
    removeStalePartFiles(folder, partName);
    FUrl part;
    int lock = -1;
    if (!gFNFileSystem->claimLockedFile(FUrl(joined(folder, partName.text8()), false), part, lock))
        return cannotWrite(target, errno);
    String partPath;
    part.getNativePath(partPath);
    PackageError error;
    if (!CvZipWriter().zipFolder(tree, partPath))
        error = cannotWrite(target, errno);
    else if (!archiveHoldsFolder(partPath, tree))
        error = cannotWrite(target, EIO);
    else if (!gFNFileSystem->renameFile(part, FUrl(target, false)))
        error = cannotWrite(target, errno);
    if (!error.ok())
        (void)gFNFileSystem->removeFile(part);
    close(lock);
    return error;
}

} // namespace

PackageError writeProjectPackage(IMediaProjectPackage* package, const char16* path) {
    if (!package || !path)
        return packageError(kPackageInvalidArgument, String("no package or no path"));
    String target(path);
    target.replace(String("\\"), String("/"));
    const int32 slash = target.findLast(-1, u'/');
    String leaf(target);
    leaf.remove(0, slash + 1);
    if (leaf.isEmpty())
        return cannotWrite(target, EISDIR); // a path that ends in "/" names no file
    String folder("./");
    if (slash >= 0) {
        folder = target;
        folder.remove(slash + 1);
    }
    struct stat status;
    const int folderState = stat(folder.text8(), &status) != 0 ? errno
                            : S_ISDIR(status.st_mode)          ? 0
                                                               : ENOTDIR;
    if (folderState != 0)
        return cannotWrite(target, folderState);

    FUrl tree;
    if (!gFNFileSystem->claimUnique(FUrl(joined(folder, kTreeName), true), tree))
        return cannotWrite(target, errno);
    String treePath;
    tree.getNativePath(treePath);

    PackageError error;
    try {
        CvXmlWriter writer(treePath);
        int failure = writeDocument(treePath, kProjectDocument, [&](FStream* stream) {
            return writer.writeProject(package->getProject(), stream);
        });
        if (failure == 0)
            failure = writeDocument(treePath, kMetaDataDocument,
                                    [&](FStream* stream) { return writer.writeMetaData(stream); });
        error =
            failure != 0 ? cannotWrite(target, failure) : packTree(treePath, folder, leaf, target);
    } catch (const std::bad_alloc&) {
        // Nothing crosses the interface; the tree goes all the same.
        error = packageError(kPackageOutOfMemory, String("out of memory"));
    }
    if (!gFNFileSystem->removeFolder(tree, true) && error.ok()) {
        String lead("cannot remove the staging folder ");
        lead.append(treePath);
        error = packageError(kPackageWriteFailed, lead);
    }
    return error;
}

} // namespace Halvorn
