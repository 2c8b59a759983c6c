// DeflateAhead: helper threads deflate an archive's files into memory ahead of its writer.
#pragma once

#include "corvelle/ptr.h"
#include "foundation/furl.h"
#include "package/deflatedfile.h"

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <thread>
#include <vector>

namespace Halvorn {

// Deflating is the work of writing an archive; the writing itself is little beside it. So while
// the writer takes the files in order, helpers (one fewer than the cores, four at most) deflate
// the next few into memory, and the writer itself deflates ahead rather than wait. A file
// nobody has taken up when the writer comes to it, or one too large to hold, the writer streams
// itself. At most a few files of kHeldBytes each are held at a time.
class DeflateAhead {
public:
    // Files larger than this are streamed by the writer.
    static constexpr uint64_t kHeldBytes = 8u << 20;

    // The files must outlive this object.
    explicit DeflateAhead(const std::vector<IPtr<FUrl>>& files);
    // Stops the helpers once they finish the file in hand, and joins them.
    ~DeflateAhead();
    DeflateAhead(const DeflateAhead&) = delete;
    DeflateAhead& operator=(const DeflateAhead&) = delete;

    // For i = 0, 1, 2... in turn, each followed by release(i): file i deflated, or null when
    // the writer is to stream it itself.
    const DeflatedFile* take(size_t i);
    // The writer is done with file i; its memory goes.
    void release(size_t i);

private:
    struct Slot {
        DeflatedFile deflated;
        bool isDeflated = false;
        bool done = false; // deflated, or found unfit to hold
    };

    void helpOut();
    // Takes up the next file and deflates it, when one is within reach of the writer; false
    // when none is. The lock is held on entry and on return.
    bool deflateNext(std::unique_lock<std::mutex>& lock);

    const std::vector<IPtr<FUrl>>& files_;
    std::vector<Slot> slots_;
    const size_t reach_; // how many files from the writer's own on may be taken up
    std::vector<std::thread> helpers_;
    std::mutex mutex_;
    std::condition_variable changed_;
    size_t next_ = 0;     // the first file nobody has taken up
    size_t released_ = 0; // files the writer is done with
    bool stopping_ = false;
};

} // namespace Halvorn
