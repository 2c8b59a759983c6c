// LoadedModule: the plug-in module opened with dlopen and started as a host starts it.
#pragma once

#include "corvelle/factory.h"
#include "corvelle/package.h"

#include <ostream>
#include <string>

namespace Halvorn {
namespace RefHost {

// Opens the module, checks its entry functions and calls InitDll; ExitDll and dlclose follow
// in finish (or the destructor). The factory is the module's own reference: the caller
// releases it before finish.
class LoadedModule {
public:
    LoadedModule() = default;
    ~LoadedModule();
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;

    // False with a one-line message on err when the module can't be loaded or lacks an entry.
    [[nodiscard]] bool open(const std::string& path, std::ostream& err);
    bool initResult() const { return initResult_; }
    // One reference, the caller releases; null when the module gives none.
    IPluginFactory* factory();
    // A package manager from the module's host-free door, one reference; null when the module
    // has none.
    IMediaPackageManager* createPackageManager();
    // Calls ExitDll and closes the module; gives ExitDll's answer.
    bool finish();

private:
    using EntryFunction = bool (*)();
    void* handle_ = nullptr;
    EntryFunction exitDll_ = nullptr;
    IPluginFactory* (*getFactory_)() = nullptr;
    bool initResult_ = false;
};

} // namespace RefHost
} // namespace Halvorn
