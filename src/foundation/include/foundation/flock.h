// FLock: a recursive mutex with lock, unlock and tryLock.
#pragma once

#include <mutex>

namespace Halvorn {

// The thread that holds it may lock it again; each lock needs its unlock. Meets the
// BasicLockable requirements, so std::lock_guard<FLock> works.
class FLock {
public:
    void lock() { mutex_.lock(); }
    void unlock() { mutex_.unlock(); }
    [[nodiscard]] bool tryLock() { return mutex_.try_lock(); }

private:
    std::recursive_mutex mutex_;
};

} // namespace Halvorn
