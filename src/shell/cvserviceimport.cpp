// CvService::importProject: from the open dialog to the importer, the package's media going to
// the folders of the host's project.
#include "shell/cvservice.h"

#include "corvelle/ptr.h"
#include "hostimport/cvhostproject.h"
#include "hostimport/importutilities.h"
#include "package/cvpackagemanager.h"
#include "package/cvpackagemanagerclient.h"
#include "shell/cvhostdialogs.h"
#include "shell/cvservicesettings.h"

#include <new>

namespace Halvorn {

using namespace Quor;

tresult CvService::importProject(FUnknown*, FUnknown* target) {
    if (!target)
        return kResultFalse;
    ServiceSettings settings(host_);
    String startPath = settings.get("lastImportPath");
    if (startPath.isEmpty())
        startPath = getDocumentsFolder();
    String path =
        showOpenDialog(host_, String("Select Corvelle File"), corvelleFileType(), startPath);
    if (path.isEmpty())
        return kResultFalse;
    settings.set("lastImportPath", path);
    // Without a project folder the media would go to "/Audio" and its kin at the file system's
    // root: the package isn't read at all.
    String base = CvHostUtilities::getProjectFolderPath(host_);
    if (base.isEmpty())
        return kResultFalse;

    // The model and the importer's registries use throwing allocations; no exception may
    // cross the interface.
    try {
        auto client = newObject<CvPackageManagerClient>();
        registerClientFolders(*client, base);
        CvPackageManager manager;
        auto package =
            IPtr<IMediaProjectPackage>::adopt(manager.readPackage(path.text16(), client.get()));
        IMediaProject* project = package ? package->getProject() : nullptr;
        if (!project)
            return kResultFalse;
        // Whatever becomes of single items, the model was handed over.
        newObject<CvHostProject>(host_)->importProject(project);
        return kResultOk;
    } catch (const std::bad_alloc&) {
        return kOutOfMemory;
    }
}

} // namespace Halvorn
