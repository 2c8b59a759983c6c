// CvXmlWriter: staging media and state files into the package tree, the first file of a name wins.
#include "documents/cvxmlwriter.h"

#include "corvelle/ptr.h"
#include "documents/xml/xmltext.h"
#include "foundation/ffilesystem.h"
#include "foundation/furl.h"
#include "model/cvmediafilerule.h"

namespace Halvorn {

bool CvXmlWriter::stageFile(const char16* sourcePath, CvFileType type, const char8* folderName,
                            String& documentPath) {
    // The document names the folder even for a file that can't be had.
    documentPath = String(folderName);
    String source(sourcePath ? sourcePath : u"");
    source.replace(String("\\"), String("/"));
    // A path that ends in "/" names a folder, as the bare "plugins/" of a device without state
    // that was read from a document: there is no file to stage.
    if (source.isEmpty() || source.endsWith(String("/")))
        return false;
    const FUrl sourceUrl(source, false);
    // The entry takes the name that the document can carry, so that the two always agree: a
    // character that XML refuses is U+FFFD in both.
    const String leaf(Xml::toXmlUtf8(sourceUrl.getName().text16()).c_str());
    // A leaf that is no file name would climb out of the folder or name the folder itself.
    if (leaf.isEmpty() || leaf == String(".") || leaf == String(".."))
        return false;
    documentPath.append(leaf);

    String folder(packageFolder);
    folder.replace(String("\\"), String("/"));
    if (!folder.endsWith(String("/")))
        folder.append("/");
    String folderOnDisk(folderName);
    folderOnDisk.remove(folderOnDisk.length() - 1); // the document's name ends in "/"
    folder.append(folderOnDisk);
    if (!gFNFileSystem->createFolder(FUrl(folder, true))) {
        stagingFailed = true;
        return false;
    }

    String target(folder);
    target.append("/");
    target.append(leaf);
    const FUrl targetUrl(target, false);
    // Same-named files share one entry: whatever lies there first stays, unread and uncompared.
    if (gFNFileSystem->fileExists(targetUrl))
        return true;
    // A path that a package read left unchanged (a refused or missing medium) must not bring a
    // stranger's choice of file into the new package.
    if (!isAcceptableOutsideMedium(type, source))
        return false;
    IPtr<FUrl> copied = IPtr<FUrl>::adopt(gFNFileSystem->copyFile(sourceUrl, targetUrl));
    // The file is there and was taken: a package without it would silently lose it.
    if (!copied)
        stagingFailed = true;
    return copied.get() != nullptr;
}

} // namespace Halvorn
