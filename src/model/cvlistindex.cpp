// The per-thread count of list comparisons.
#include "model/cvlistindex.h"

namespace Halvorn {

uint64& listComparisons() {
    static thread_local uint64 count = 0;
    return count;
}

} // namespace Halvorn
