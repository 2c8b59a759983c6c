// A cap on the size of the files this process writes: a full disk without root.
#pragma once

#include <csignal>
#include <sys/resource.h>

namespace TestSupport {

// Caps the size of the files this process writes while it lives, with the signal a breach would
// raise ignored, so that the write that crosses the cap fails instead.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

    // False when the cap could not be set.
    bool active() const { return active_; }

private:
    rlimit previous_{};
    void (*previousSignal_)(int) = SIG_DFL;
    bool active_ = false;
};

} // namespace TestSupport
