// writeProjectPackage: stage the tree, write both documents, pack, and put the archive in place.
#include "package/package_writer.h"

#include "documents/cvxmlwriter.h"
#include "foundation/ffilesystem.h"
#include "foundation/furl.h"
#include "package/archivecheck.h"
#include "package/cvzipwriter.h"

#include <new>

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

// Packs the tree into a fresh file beside the target and renames it over the target, so that
// the target only ever holds a whole archive. The temporary file never outlives the call.
bool packTree(const String& tree, const String& folder, const String& leaf, const String& target) {
    String partName(".");
    partName.append(leaf);
    partName.append(".part");
    FUrl part;
    if (!gFNFileSystem->claimUnique(FUrl(joined(folder, partName.text8()), false), part))
        return false;
    String partPath;
    part.getNativePath(partPath);
    const bool packed =
        CvZipWriter().zipFolder(tree, partPath) && archiveHoldsFolder(partPath, tree);
    const bool placed = packed && gFNFileSystem->renameFile(part, FUrl(target, false));
    if (!placed)
        (void)gFNFileSystem->removeFile(part);
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
