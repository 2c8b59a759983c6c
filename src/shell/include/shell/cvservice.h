// CvService: the project filter service a host creates from the factory, with its two commands.
#pragma once

#include "corvelle/filter.h"
#include "hostapi/hostcontext.h"
#include "model/cvobject.h"

namespace Halvorn {

class CvPackageManagerClient;
class String;

// Holds the host between commands and nothing else: every object of a command lives inside
// the call.
class CvService : public CvObject, public Quor::IProjectFilterPlugin3 {
public:
    CV_DECLARE_TYPE(CvService, CvObject)
    CV_REFCOUNT_METHODS(CvObject)

    CvService() = default;

    tresult queryInterface(const FUID& iid, void** object) override;

    tresult initialize(FUnknown* context) override;
    tresult terminate() override { return kResultOk; }

    tresult getFilterFlags(uint32* flags) override;
    // The save dialog, the remembered folder, the work folder beside the target, the export
    // under a progress dialog and the package write; every folder it made is removed again.
    tresult exportProject(FUnknown* reserved, FUnknown* target) override;
    // The open dialog, the remembered path, the package read into the folders of the host's
    // project and replayed into it. Without a project folder nothing is read: kResultFalse.
    tresult importProject(FUnknown* reserved, FUnknown* target) override;

    tresult reservedFilter2a(FUnknown*) override { return kResultFalse; }
    tresult reservedFilter2b(FUnknown*) override { return kResultFalse; }
    tresult reservedFilter2c(FUnknown*) override { return kResultFalse; }
    tresult reservedFilter2d(FUnknown*) override { return kResultFalse; }
    tresult reservedFilter2e(FUnknown*) override { return kResultFalse; }
    tresult reservedFilter2f(FUnknown*) override { return kResultFalse; }
    tresult reservedFilter2g(FUnknown*) override { return kResultFalse; }
    tresult reservedFilter2h(FUnknown*) override { return kResultFalse; }
    tresult reservedFilter3a(FUnknown*) override { return kResultFalse; }
    tresult reservedFilter3b(uint32* value) override;
    tresult reservedFilter3c(FUnknown*) override { return kResultFalse; }
    tresult reservedFilter3d(FUnknown*) override { return kResultFalse; }

protected:
    ~CvService() override;

private:
    // The client's four media folders below base, as both commands register them.
    static void registerClientFolders(CvPackageManagerClient& client, const String& base);

    Quor::IHostContext* host_ = nullptr;
};

// The factory's creation function for the service's class row: a new service with one
// reference, or null when memory runs out.
FUnknown* createService(void* context);

} // namespace Halvorn
