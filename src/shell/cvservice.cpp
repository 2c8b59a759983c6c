// CvService: its faces, the host it keeps, and the export command from dialog to package.
#include "shell/cvservice.h"

#include "corvelle/ptr.h"
#include "foundation/ffilesystem.h"
#include "foundation/furl.h"
#include "hostexport/cvhostprojectexporter.h"
#include "package/cvpackage.h"
#include "package/cvpackagemanager.h"
#include "package/cvpackagemanagerclient.h"
#include "shell/cvhostdialogs.h"
#include "shell/cvhostprogressdialog.h"
#include "shell/cvservicesettings.h"

#include <new>

namespace Halvorn {

using namespace Quor;

namespace {

// The folder of a chosen path, with its trailing "/": what the next save dialog starts in.
String folderOf(String path) {
    path.replace(String("\\"), String("/"));
    int32 slash = path.findLast(-1, u'/');
    path.remove(slash + 1);
    return path;
}

} // namespace

void CvService::registerClientFolders(CvPackageManagerClient& client, const String& base) {
    static const struct {
        int32 type;
        const char8* name;
    } kFolders[] = {{2, "/Audio"}, {4, "/Video"}, {1, "/Preset"}, {3, "/Midi"}};
    for (const auto& folder : kFolders) {
        String path(base);
        path.append(folder.name);
        client.setPathForFileType(folder.type, path);
    }
}

CvService::~CvService() {
    if (host_)
        host_->release();
}

tresult CvService::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IPluginBase)
    CV_QUERY(iid, object, IProjectFilterPlugin)
    CV_QUERY(iid, object, IProjectFilterPlugin2)
    CV_QUERY(iid, object, IProjectFilterPlugin3)
    return CvObject::queryInterface(iid, object);
}

tresult CvService::initialize(FUnknown* context) {
    void* face = nullptr;
    if (!context || context->queryInterface(IHostContext::iid, &face) != kResultOk)
        face = nullptr;
    if (host_)
        host_->release();
    host_ = static_cast<IHostContext*>(face);
    return host_ ? kResultOk : kResultFalse;
}

tresult CvService::getFilterFlags(uint32* flags) {
    if (!flags)
        return kResultFalse;
    *flags = 1 | 2 | 8 | 16;
    return kResultOk;
}

tresult CvService::reservedFilter3b(uint32* value) {
    if (value)
        *value = 1;
    return kResultFalse;
}

tresult CvService::exportProject(FUnknown*, FUnknown* target) {
    if (!target)
        return kResultFalse;
    ServiceSettings settings(host_);
    String startFolder = settings.get("lastExportPath");
    if (startFolder.isEmpty())
        startFolder = getDocumentsFolder();
    String path =
        showSaveDialog(host_, String("Save Corvelle File"), corvelleFileType(), startFolder);
    if (path.isEmpty())
        return kResultFalse;
    String folder = folderOf(path);
    settings.set("lastExportPath", folder);
    if (!gFNFileSystem->folderExists(FUrl(folder, true)))
        return kResultFalse;

    String workPath(folder);
    workPath.append("corvfiletmp");
    FUrl workFolder(workPath, true);
    // A stale work folder beside the target belongs to someone else: take a fresh name.
    if (!workFolder.makeUnique() || !gFNFileSystem->createFolder(workFolder))
        return kResultFalse;

    tresult result = kResultFalse;
    // The model is built with throwing allocations; no exception may cross the interface.
    try {
        auto client = newObject<CvPackageManagerClient>();
        registerClientFolders(*client, workFolder.getPath());
        CvHostProgressDialog progress(host_, String("Export Corvelle"));
        progress.start();
        progress.setText(String("Reading the project"));
        auto exporter = newObject<CvHostProjectExporter>(host_, client.get());
        auto project = IPtr<IMediaProject>::adopt(exporter->run());
        if (project) {
            progress.setText(String("Writing the package"));
            auto package = newObject<CvPackage>(project.get());
            CvPackageManager manager;
            if (manager.writePackage(package.get(), path.text16()))
                result = kResultOk;
        }
    } catch (const std::bad_alloc&) {
        result = kOutOfMemory;
    }
    // The package stands or not; a work folder that won't go away doesn't change that.
    (void)gFNFileSystem->removeFolder(workFolder, true);
    return result;
}

FUnknown* createService(void*) {
    auto* service = new (std::nothrow) CvService;
    return service ? static_cast<IPluginBase*>(service) : nullptr;
}

} // namespace Halvorn
