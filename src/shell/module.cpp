// The module's four entry functions and its open counter.
#include "corvelle/factory.h"
#include "corvelle/package.h"
#include "package/cvpackagemanager.h"
#include "shell/cvpluginfactory.h"
#include "shell/objectwatcher.h"

#include <exception>
#include <new>

using namespace Halvorn;

namespace {
// Read and written without a lock: the host calls InitDll and ExitDll one at a time.
int32 gOpenCount = 0;
} // namespace

extern "C" CORVELLE_EXPORT bool InitDll() {
    // Without memory there is no watcher, and nothing depends on it.
    if (++gOpenCount == 1)
        (void)CvObjectWatcher::open();
    return true;
}

extern "C" CORVELLE_EXPORT bool ExitDll() {
    if (--gOpenCount == 0)
        CvObjectWatcher::close();
    return gOpenCount >= 0;
}

extern "C" CORVELLE_EXPORT IPluginFactory* GetPluginFactory() {
    try {
        if (gPluginFactory) {
            gPluginFactory->addRef();
            return gPluginFactory;
        }
        gPluginFactory = CvPluginFactory::make();
        return gPluginFactory;
    } catch (const std::exception&) {
        // No exception may cross into the host: out of memory (or a failed once-only
        // initialisation) gives no factory.
        return nullptr;
    }
}

extern "C" CORVELLE_EXPORT IMediaPackageManager* CreatePackageManager() {
    // Null when memory runs out; the caller owns the one reference.
    return new (std::nothrow) CvPackageManager;
}
