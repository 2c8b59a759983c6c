// CvPackage: the handle on one project that readPackage gives and writePackage takes.
#pragma once

#include "corvelle/mediaproject.h"
#include "corvelle/package.h"
#include "corvelle/ptr.h"
#include "model/cvobject.h"

namespace Halvorn {

// Keeps its project alive: a package outlives the manager that made it, and the model lives as
// long as the package.
class CvPackage : public CvObject, public IMediaProjectPackage {
public:
    CV_DECLARE_TYPE(CvPackage, CvObject)
    CV_REFCOUNT_METHODS(CvObject)

    // Adds a reference on project unless it is null.
    explicit CvPackage(IMediaProject* project) : project_(project) {}
    // Public so that a command may keep a package on its stack.
    ~CvPackage() override = default;

    tresult queryInterface(const FUID& iid, void** object) override;

    // Borrowed, valid while the package lives; null for a package made without a project.
    IMediaProject* getProject() override { return project_.get(); }

private:
    IPtr<IMediaProject> project_;
};

} // namespace Halvorn
