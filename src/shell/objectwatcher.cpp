// CvObjectWatcher: the singleton and its locked list.
#include "shell/objectwatcher.h"

#include <mutex>
#include <new>

namespace Halvorn {

namespace {
CvObjectWatcher* gWatcher = nullptr;
}

CvObjectWatcher* CvObjectWatcher::instance() { return gWatcher; }

bool CvObjectWatcher::open() {
    if (!gWatcher)
        gWatcher = new (std::nothrow) CvObjectWatcher;
    return gWatcher != nullptr;
}

void CvObjectWatcher::close() {
    if (gWatcher)
        gWatcher->release();
    gWatcher = nullptr;
}

bool CvObjectWatcher::add(CvObject* object) {
    std::lock_guard<FLock> guard(lock_);
    return objects_.add(object);
}

bool CvObjectWatcher::remove(CvObject* object) {
    std::lock_guard<FLock> guard(lock_);
    return objects_.remove(object);
}

int32 CvObjectWatcher::count() const {
    std::lock_guard<FLock> guard(lock_);
    return objects_.total();
}

} // namespace Halvorn
