// MemoryStream: an IBStream on a block of memory, owned and growing or borrowed and fixed.
#pragma once

#include "corvelle/stream.h"
#include "foundation/fobject.h"

#include <cstddef>

namespace Halvorn {

// An owned block grows in multiples of 4096 bytes. A borrowed block never grows: a write that
// would pass its size writes nothing and sets a lasting failure flag, after which every write
// gives kOutOfMemory. May live on the stack when nobody keeps a reference beyond its scope.
class MemoryStream : public FObject, public IBStream {
public:
    CV_DECLARE_TYPE(MemoryStream, FObject)
    CV_REFCOUNT_METHODS(FObject)
    tresult queryInterface(const FUID& iid, void** object) override;

    static constexpr size_t kGrowth = 4096;

    MemoryStream() = default;
    // Borrows memory of size bytes, readable and writable within that size; the stream's size
    // starts at size. A null memory gives an empty borrowed stream.
    MemoryStream(void* memory, size_t size);
    ~MemoryStream() override;

    tresult read(void* buffer, int32 count, int32* done) override;
    tresult write(void* buffer, int32 count, int32* done) override;
    tresult seek(int64 position, int32 mode, int64* result) override;
    tresult tell(int64* position) override;

    // Borrowed: valid until the next write. Null while nothing has been written.
    const char8* getData() const { return data_; }
    size_t getSize() const { return size_; }
    size_t getCapacity() const { return capacity_; }
    bool hasFailed() const { return failed_; }

private:
    [[nodiscard]] bool reserve(size_t needed);

    char8* data_ = nullptr;
    size_t size_ = 0;
    size_t capacity_ = 0;
    int64 position_ = 0;
    bool borrowed_ = false;
    bool failed_ = false;
};

} // namespace Halvorn
