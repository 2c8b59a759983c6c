// CvPackageManager: turns package files into project models and back.
#pragma once

#include "corvelle/package.h"
#include "model/cvobject.h"

namespace Halvorn {

// The one class that knows the package as a container. Holds no state but the calling thread's
// last reason (package/packageerror.h): every call runs to its end on the caller's thread, and
// concurrent reads are safe against each other because each claims an extraction folder of its
// own.
class CvPackageManager : public CvObject,
                         public IMediaPackageManager,
                         public IMediaPackageLastError {
public:
    CV_DECLARE_TYPE(CvPackageManager, CvObject)
    CV_REFCOUNT_METHODS(CvObject)

    CvPackageManager() = default;
    // Public so that a command may keep the manager on its stack.
    ~CvPackageManager() override = default;

    tresult queryInterface(const FUID& iid, void** object) override;

    // Unpacks the package into a fresh folder in the system's temporary folder, reads its
    // project.xml, copies the media into the client's folders and points the model at the
    // copies, and removes the folder again. Null for a null argument, a missing file, an
    // extraction folder that can't be made, an archive that can't be opened, no project.xml at
    // the root, or a document that can't be parsed; the reason is kept for getLastError. A medium that is missing or not wanted by
    // the client leaves its file reference as the document gave it.
    IMediaProjectPackage* readPackage(const char16* path,
                                      IMediaPackageManagerClient* client) override;
    // Writes the package's project to a package file at path; nonzero for success. The steps
    // are writeProjectPackage's (package/package_writer.h).
    int32 writePackage(IMediaProjectPackage* package, const char16* path) override;

    // The calling thread's reason for the last failed readPackage or writePackage.
    int32 getLastError() override;
    const char16* getLastErrorMessage() override;
};

} // namespace Halvorn
