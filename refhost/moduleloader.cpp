// LoadedModule: dlopen, the entry functions, InitDll and ExitDll.
#include "moduleloader.h"

#include <dlfcn.h>

namespace Halvorn {
namespace RefHost {

LoadedModule::~LoadedModule() { finish(); }

bool LoadedModule::open(const std::string& path, std::ostream& err) {
    handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle_) {
        err << "corvelle-host: can't load the module " << path << ": " << dlerror() << "\n";
        return false;
    }
    auto initDll = reinterpret_cast<EntryFunction>(dlsym(handle_, "InitDll"));
    exitDll_ = reinterpret_cast<EntryFunction>(dlsym(handle_, "ExitDll"));
    getFactory_ = reinterpret_cast<IPluginFactory* (*)()>(dlsym(handle_, "GetPluginFactory"));
    if (!initDll || !exitDll_ || !getFactory_) {
        err << "corvelle-host: " << path << " lacks InitDll, ExitDll or GetPluginFactory\n";
        exitDll_ = nullptr;
        dlclose(handle_);
        handle_ = nullptr;
        return false;
    }
    initResult_ = initDll();
    return true;
}

IPluginFactory* LoadedModule::factory() { return getFactory_ ? getFactory_() : nullptr; }

IMediaPackageManager* LoadedModule::createPackageManager() {
    using Create = IMediaPackageManager* (*)();
    auto create = handle_ ? reinterpret_cast<Create>(dlsym(handle_, "CreatePackageManager"))
                          : nullptr;
    return create ? create() : nullptr;
}

bool LoadedModule::finish() {
    if (!handle_)
        return false;
    bool result = exitDll_ ? exitDll_() : false;
    dlclose(handle_);
    handle_ = nullptr;
    exitDll_ = nullptr;
    getFactory_ = nullptr;
    return result;
}

} // namespace RefHost
} // namespace Halvorn
