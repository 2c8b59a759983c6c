// CvPackageManager: the read road from package file to project model, and the door to the write.
#include "package/cvpackagemanager.h"

#include "corvelle/ptr.h"
#include "documents/cvxmlreader.h"
#include "foundation/ffilesystem.h"
#include "foundation/furl.h"
#include "model/cvfile.h"
#include "model/cvmediafilerule.h"
#include "model/cvproject.h"
#include "package/cvpackage.h"
#include "package/cvzipreader.h"
#include "package/package_writer.h"
#include "package/packageerror.h"
#include "package/readreport.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <new>

namespace Halvorn {
namespace {

void toSlashes(String& path) { path.replace(String("\\"), String("/")); }

// Claimed exclusively: a concurrent read of a package with the same name never shares it. The
// temporary folder itself must exist: a missing one is a setting to fix, not a folder to make.
[[nodiscard]] PackageError claimExtractionFolder(const String& name, FUrl& folder) {
    const FUrl wanted(name, FUrl::kTemporaryFolder, true);
    if (!wanted.isEmpty() && gFNFileSystem->claimUnique(wanted, folder))
        return {};
    const int cause = errno;
    String lead("cannot create a folder in the temporary folder ");
    lead.append(FUrl(String("x"), FUrl::kTemporaryFolder, false).getFolderPath());
    return packageError(kPackageTemporaryFolder, lead, cause);
}

// Removes the extraction folder on every way out, an exception of memory included.
class ExtractionFolderRemoval {
public:
    explicit ExtractionFolderRemoval(const FUrl& folder) : folder_(folder) {}
    ~ExtractionFolderRemoval() { (void)gFNFileSystem->removeFolder(folder_, true); }
    ExtractionFolderRemoval(const ExtractionFolderRemoval&) = delete;
    ExtractionFolderRemoval& operator=(const ExtractionFolderRemoval&) = delete;

private:
    const FUrl& folder_;
};

// The file name a medium keeps in the client's folder; false for a path that names no file.
[[nodiscard]] bool mediaFileName(const String& path, String& name) {
    String slashed(path);
    toSlashes(slashed);
    const int32 slash = slashed.findLast(-1, u'/');
    name = slashed;
    if (slash >= 0)
        name.remove(0, slash + 1);
    return !name.isEmpty() && name != String(".") && name != String("..");
}

// What the media walk of one read needs: where the package was unpacked, whom to ask for the
// target folders, and whom to tell of what was refused (may be null).
struct ReadContext {
    String extractionFolder;
    IMediaPackageManagerClient& client;
    IMediaPackageReadReport* report;
};

// A path of the package must stay inside the extraction folder, also through links.
bool liesInside(const String& source, const String& folder) {
    char8 resolvedSource[PATH_MAX];
    char8 resolvedFolder[PATH_MAX];
    String sourceCopy(source);
    String folderCopy(folder);
    if (!realpath(sourceCopy.text8(), resolvedSource) ||
        !realpath(folderCopy.text8(), resolvedFolder))
        return false;
    const size_t length = std::strlen(resolvedFolder);
    return std::strncmp(resolvedSource, resolvedFolder, length) == 0 &&
           resolvedSource[length] == '/';
}

// Where the accessor's file is to be read from; false when it is missing or refused, which
// leaves the accessor unchanged.
[[nodiscard]] bool findSource(const CvFile& file, const ReadContext& read, String& source) {
    const String& path = file.getPath();
    if (file.isExternal()) {
        source = path;
        toSlashes(source);
        if (!gFNFileSystem->fileExists(FUrl(source, false)))
            return false;
        if (isAcceptableOutsideMedium(static_cast<CvFileType>(file.getType()), source))
            return true;
        tellReport(read.report, kReadRefusedExternal, path);
        return false;
    }
    if (path.isEmpty())
        return false;
    if (!isPackageRelativePath(path)) {
        tellReport(read.report, kReadRefusedPath, path);
        return false;
    }
    source = read.extractionFolder;
    source.append("/");
    source.append(path);
    toSlashes(source);
    if (!gFNFileSystem->fileExists(FUrl(source, false)))
        return false;
    if (liesInside(source, read.extractionFolder))
        return true;
    tellReport(read.report, kReadRefusedPath, path);
    return false;
}

// Copies one accessor's file into the client's folder for its type and points the accessor at
// the copy. Anything missing or refused leaves the accessor as the document gave it.
void moveFileToClient(ICvFileAccessor& accessor, const ReadContext& read) {
    CvFile* file = accessor.getFile();
    if (!file)
        return;
    const char16* wanted = read.client.getPathForFileType(static_cast<int32>(file->getType()));
    if (!wanted || !wanted[0])
        return;
    String targetFolder(wanted);
    toSlashes(targetFolder);
    (void)gFNFileSystem->createFolder(FUrl(targetFolder, true));

    String source;
    String name;
    if (!findSource(*file, read, source) || !mediaFileName(file->getPath(), name))
        return;
    const FUrl sourceUrl(source, false);

    String target(targetFolder);
    target.append("/");
    target.append(name);
    const FUrl targetUrl(target, false);
    // A file of that name already there is taken as it is, and so is one that a concurrent
    // read into the same folder put there between the test and the copy. A failed copy removes
    // what it wrote.
    if (!gFNFileSystem->fileExists(targetUrl)) {
        const IPtr<FUrl> copy = IPtr<FUrl>::adopt(gFNFileSystem->copyFile(sourceUrl, targetUrl));
        if (!copy && !gFNFileSystem->fileExists(targetUrl)) {
            tellReport(read.report, kReadCopyFailed, file->getPath());
            return;
        }
    }
    String native;
    targetUrl.getNativePath(native);
    toSlashes(native);
    // Replaces the CvFile: file is void from here on.
    accessor.setFile(native.text16(), false);
}

// A summary wants no media at all; then nothing but the document is unpacked.
bool wantsNoMedia(IMediaPackageManagerClient& client) {
    for (int32 type : {kCvFilePreset, kCvFileAudio, kCvFileMidi, kCvFileVideo}) {
        const char16* folder = client.getPathForFileType(type);
        if (folder && folder[0])
            return false;
    }
    return true;
}

// Why project.xml gave no project, with the line and column where the reader stopped.
PackageError documentError(const DocumentError& cause) {
    String message("project.xml");
    if (cause.line > 0)
        message.printf("project.xml line %d, column %d", cause.line, cause.column);
    message.append(": ");
    message.append(cause.message);
    return packageError(kPackageBadDocument, message);
}

// Steps behind a claimed extraction folder: unpack, read the document, move the media.
PackageError readExtracted(const FUrl& packageUrl, const FUrl& folder,
                           IMediaPackageManagerClient& client, IPtr<CvProject>& project) {
    const IPtr<IMediaPackageReadReport> report =
        Halvorn::queryInterface<IMediaPackageReadReport>(&client);
    CvZipReader::Options options;
    options.documentOnly = wantsNoMedia(client);
    options.requireDocument = true;
    options.report = report.get();
    PackageError error = CvZipReader().extract(packageUrl.getPath(), folder.getPath(), options);
    if (!error.ok())
        return error;
    String documentPath(folder.getPath());
    documentPath.append("/project.xml");
    toSlashes(documentPath);
    const IPtr<CvXmlReader> documentReader = newObject<CvXmlReader>();
    project = IPtr<CvProject>::adopt(documentReader->readProject(documentPath));
    if (!project) {
        const DocumentError& cause = documentReader->lastError();
        if (cause.kind == DocumentError::kOutOfMemory)
            throw std::bad_alloc();
        if (cause.kind == DocumentError::kTooLarge)
            tellReport(report.get(), kReadDocumentTooLarge, String("project.xml"));
        return documentError(cause);
    }
    const ReadContext read{folder.getPath(), client, report.get()};
    for (ICvFileAccessor* accessor : project->getFileAccessors())
        if (accessor)
            moveFileToClient(*accessor, read);
    return {};
}

PackageError readPackageFile(const String& path, IMediaPackageManagerClient& client,
                             IPtr<CvProject>& project) {
    const FUrl packageUrl(path, false);
    FUrl folder;
    PackageError error = claimExtractionFolder(packageUrl.getNameWithoutExtension(), folder);
    if (!error.ok())
        return error;
    const ExtractionFolderRemoval removal(folder);
    return readExtracted(packageUrl, folder, client, project);
}

// The published answer is null or false; the reason waits beside it for IMediaPackageLastError.
PackageError outOfMemory() { return packageError(kPackageOutOfMemory, String("out of memory")); }

} // namespace

tresult CvPackageManager::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaPackageManager)
    CV_QUERY(iid, object, IMediaPackageLastError)
    return CvObject::queryInterface(iid, object);
}

IMediaProjectPackage* CvPackageManager::readPackage(const char16* path,
                                                    IMediaPackageManagerClient* client) {
    if (!path || !client) {
        setLastPackageError(packageError(kPackageInvalidArgument, String("no path or no client")));
        return nullptr;
    }
    try {
        IPtr<CvProject> project;
        const PackageError error = readPackageFile(String(path), *client, project);
        setLastPackageError(error);
        // The package takes its own reference; the reader's goes with the handle.
        return error.ok() ? new CvPackage(project.get()) : nullptr;
    } catch (const std::bad_alloc&) {
        // Nothing crosses the interface; the extraction folder is gone already.
        setLastPackageError(outOfMemory());
        return nullptr;
    }
}

int32 CvPackageManager::writePackage(IMediaProjectPackage* package, const char16* path) {
    const PackageError error = writeProjectPackage(package, path);
    setLastPackageError(error);
    return error.ok() ? 1 : 0;
}

int32 CvPackageManager::getLastError() { return lastPackageErrorCode(); }

const char16* CvPackageManager::getLastErrorMessage() { return lastPackageErrorMessage(); }

} // namespace Halvorn
