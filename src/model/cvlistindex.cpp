// The per-thread count of list comparisons and the lists' tags.
#include "model/cvlistindex.h"

#include <atomic>

namespace Halvorn {

uint64& listComparisons() {
    static thread_local uint64 count = 0;
    return count;
}

// Never wraps: a tag given twice would make one list take another's elements for its own.
uint32 nextListTag() {
    static std::atomic<uint32> next{kInNoList + 1};
    uint32 tag = next.load(std::memory_order_relaxed);
    do {
        if (tag == kInSeveralLists)
            return tag;
    } while (!next.compare_exchange_weak(tag, tag + 1, std::memory_order_relaxed));
    return tag;
}

} // namespace Halvorn
