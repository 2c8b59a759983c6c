// The "corvelle-host export" and "corvelle-host import" commands.
#include "filterrunner.h"

#include "corvelle/filter.h"
#include "corvelle/ptr.h"
#include "moduleloader.h"
#include "text.h"
#include "workstation.h"

#include <cstring>

namespace Halvorn {
namespace RefHost {

namespace {

// The service of the module's project filter class, initialized with the host; empty when the
// module has none.
IPtr<IProjectFilterPlugin> createFilter(IPluginFactory& factory, Workstation& station) {
    int32 count = factory.countClasses();
    for (int32 index = 0; index < count; ++index) {
        ClassInfo info{};
        if (factory.getClassInfo(index, &info) != kResultOk ||
            std::strncmp(info.category, "Project Filter", sizeof info.category) != 0)
            continue;
        void* object = nullptr;
        if (factory.createInstance(info.cid, IPluginBase::iid, &object) != kResultOk || !object)
            return {};
        auto base = IPtr<IPluginBase>::adopt(static_cast<IPluginBase*>(object));
        if (base->initialize(station.context()) != kResultOk)
            return {};
        return queryInterface<IProjectFilterPlugin>(base.get());
    }
    return {};
}

// Why the module's last package read or write on this thread failed; empty when none did.
std::string lastPackageFailure(LoadedModule& module) {
    const auto manager = IPtr<IMediaPackageManager>::adopt(module.createPackageManager());
    const auto last = manager ? queryInterface<IMediaPackageLastError>(manager.get())
                              : IPtr<IMediaPackageLastError>();
    return last && last->getLastError() != kPackageNoError ? toUtf8(last->getLastErrorMessage())
                                                           : std::string();
}

} // namespace

int runFilterCommand(const FilterRequest& request, std::ostream& out, std::ostream& err) {
    const bool importing = request.command == FilterRequest::Command::kImport;
    const char* name = importing ? "import" : "export";
    std::string error;
    auto station = Workstation::load(request.sessionPath, error);
    if (!station) {
        err << "corvelle-host: " << error << "\n";
        return 1;
    }
    if (request.cancel)
        station->dialogs.answers.emplace_back(std::nullopt);
    else
        station->dialogs.answers.emplace_back(toUtf16(request.target));
    LoadedModule module;
    if (!module.open(request.modulePath, err))
        return 1;
    tresult result = kNoInterface;
    {
        auto factory = IPtr<IPluginFactory>::adopt(module.factory());
        auto filter = factory ? createFilter(*factory, *station) : IPtr<IProjectFilterPlugin>();
        if (!filter) {
            err << "corvelle-host: the module offers no project filter service\n";
            return 1;
        }
        FUnknown* target = station->project->itemFace();
        result = importing ? filter->importProject(nullptr, target)
                           : filter->exportProject(nullptr, target);
    }
    const std::string failure = result == kResultOk ? std::string() : lastPackageFailure(module);
    bool saved = request.sessionOut.empty() || station->save(request.sessionOut, error);
    LedgerReport report = station->close();
    module.finish();
    out << name << ": " << name << "Project gave " << resultText(result) << "\n";
    if (!saved) {
        err << "corvelle-host: " << error << "\n";
        return 1;
    }
    if (!report.clean()) {
        err << "corvelle-host: the host's objects were not given back as they should be: "
            << report.text();
        return 1;
    }
    if (!failure.empty()) {
        // The write's cause names its target already; the read's names only what went wrong.
        err << "corvelle-host: " << (importing ? request.target + ": " : "") << failure << "\n";
        return 1;
    }
    if (result != kResultOk) {
        err << "corvelle-host: the " << name << " did not complete ("
            << (request.cancel ? "cancelled" : resultText(result)) << ")\n";
        return 1;
    }
    return 0;
}

} // namespace RefHost
} // namespace Halvorn
