// CvObjectWatcher: the process-wide list of watched objects, alive while the module is open.
#pragma once

#include "foundation/flock.h"
#include "foundation/tarray.h"
#include "model/cvobject.h"

namespace Halvorn {

// A list of objects that callers choose to follow, guarded for use from any thread. Nothing in
// the system registers objects with it, so no behaviour depends on it.
class CvObjectWatcher : public FObject {
public:
    CV_DECLARE_TYPE(CvObjectWatcher, FObject)

    // The watcher between the first InitDll and the last ExitDll, else null; borrowed.
    static CvObjectWatcher* instance();
    // Creates the watcher when there is none; false when memory runs out.
    [[nodiscard]] static bool open();
    // Releases the module's reference on the watcher and forgets it.
    static void close();

    // Both lock the list; false when it can't grow or the object isn't in it.
    [[nodiscard]] bool add(CvObject* object);
    [[nodiscard]] bool remove(CvObject* object);
    int32 count() const;

protected:
    ~CvObjectWatcher() override = default;

private:
    CvObjectWatcher() = default;

    TArray<CvObject*> objects_{10};
    mutable FLock lock_;
};

} // namespace Halvorn
