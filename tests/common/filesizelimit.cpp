// FileSizeLimit: RLIMIT_FSIZE with SIGXFSZ ignored, restored at the end.
#include "common/filesizelimit.h"

namespace TestSupport {

FileSizeLimit::FileSizeLimit(rlim_t bytes) {
    if (getrlimit(RLIMIT_FSIZE, &previous_) != 0)
        return;
    previousSignal_ = signal(SIGXFSZ, SIG_IGN);
    rlimit limited = previous_;
    limited.rlim_cur = bytes;
    active_ = setrlimit(RLIMIT_FSIZE, &limited) == 0;
}

FileSizeLimit::~FileSizeLimit() {
    if (active_)
        setrlimit(RLIMIT_FSIZE, &previous_);
    signal(SIGXFSZ, previousSignal_);
}

} // namespace TestSupport
