// MemoryStream: reading, writing and seeking on a block of memory.
#include "foundation/memorystream.h"

#include <cstdlib>
#include <cstring>

namespace Halvorn {

MemoryStream::MemoryStream(void* memory, size_t size)
    : data_(static_cast<char8*>(memory)), size_(memory ? size : 0), capacity_(size_),
      borrowed_(true) {}

MemoryStream::~MemoryStream() {
    if (!borrowed_)
        std::free(data_);
}

tresult MemoryStream::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IBStream)
    return FObject::queryInterface(iid, object);
}

bool MemoryStream::reserve(size_t needed) {
    if (needed <= capacity_)
        return true;
    if (borrowed_)
        return false;
    size_t grown = (needed + kGrowth - 1) / kGrowth * kGrowth;
    if (grown < needed)
        return false;
    auto* data = static_cast<char8*>(std::realloc(data_, grown));
    if (!data)
        return false;
    data_ = data;
    capacity_ = grown;
    return true;
}

tresult MemoryStream::read(void* buffer, int32 count, int32* done) {
    if (done)
        *done = 0;
    if (count < 0 || (!buffer && count > 0))
        return kInvalidArgument;
    size_t at = size_t(position_);
    size_t n = at < size_ ? size_ - at : 0;
    if (n > size_t(count))
        n = size_t(count);
    if (n > 0)
        std::memcpy(buffer, data_ + at, n);
    position_ += int64(n);
    if (done)
        *done = int32(n);
    return kResultOk;
}

tresult MemoryStream::write(void* buffer, int32 count, int32* done) {
    if (done)
        *done = 0;
    if (failed_)
        return kOutOfMemory;
    if (count < 0 || (!buffer && count > 0))
        return kInvalidArgument;
    if (count == 0)
        return kResultOk;
    size_t at = size_t(position_);
    size_t end = at + size_t(count);
    if (end < at || !reserve(end)) {
        // Borrowed memory can't grow: that failure lasts. An owned block may grow later.
        failed_ = borrowed_;
        return kOutOfMemory;
    }
    if (at > size_)
        std::memset(data_ + size_, 0, at - size_);
    std::memcpy(data_ + at, buffer, size_t(count));
    if (end > size_)
        size_ = end;
    position_ = int64(end);
    if (done)
        *done = count;
    return kResultOk;
}

tresult MemoryStream::seek(int64 position, int32 mode, int64* result) {
    int64 base;
    if (mode == kSeekFromStart)
        base = 0;
    else if (mode == kSeekFromCurrent)
        base = position_;
    else if (mode == kSeekFromEnd)
        base = int64(size_);
    else
        return kInvalidArgument;
    int64 target;
    if (__builtin_add_overflow(base, position, &target) || target < 0)
        return kInvalidArgument;
    position_ = target;
    if (result)
        *result = target;
    return kResultOk;
}

tresult MemoryStream::tell(int64* position) {
    if (!position)
        return kInvalidArgument;
    *position = position_;
    return kResultOk;
}

} // namespace Halvorn
