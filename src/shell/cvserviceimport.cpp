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

    auto client = IPtr<CvPackageManagerClient>::adopt(new (std::nothrow) CvPackageManagerClient);
    if (!client)
        return kResultFalse;
    registerClientFolders(*client, base);
    CvPackageManager manager;
    auto package =
        IPtr<IMediaProjectPackage>::adopt(manager.readPackage(path.text16(), client.get()));
    IMediaProject* project = package ? package->getProject() : nullptr;
    auto importer = project ? IPtr<CvHostProject>::adopt(new (std::nothrow) CvHostProject(host_))
                            : IPtr<CvHostProject>();
    if (!importer)
        return kResultFalse;
    // Whatever becomes of single items, the model was handed over.
    importer->importProject(project);
    return kResultOk;
}

} // namespace Halvorn
