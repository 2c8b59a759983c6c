// TestStream: an IBStream into a string that can be told to fail after a number of bytes.
#pragma once

#include "corvelle/stream.h"

#include <atomic>
#include <cstring>
#include <string>

namespace WriterTest {

using namespace Halvorn;

class TestStream : public IBStream {
public:
    // limit: the bytes it takes before every further write fails; -1 for no limit.
    explicit TestStream(long limit = -1) : limit_(limit) {}

    tresult queryInterface(const FUID& iid, void** object) override {
        if (iid == IBStream::iid || iid == FUnknown::iid) {
            addRef();
            *object = this;
            return kResultOk;
        }
        *object = nullptr;
        return kNoInterface;
    }
    uint32 addRef() override { return ++count_; }
    uint32 release() override { return --count_; }

    tresult read(void*, int32, int32* done) override {
        if (done)
            *done = 0;
        return kResultFalse;
    }
    tresult write(void* buffer, int32 count, int32* done) override {
        ++writes_;
        long room = limit_ < 0 ? count : std::min<long>(count, limit_ - long(bytes_.size()));
        if (room < 0)
            room = 0;
        bytes_.append(static_cast<const char*>(buffer), static_cast<size_t>(room));
        if (done)
            *done = static_cast<int32>(room);
        return room == count ? kResultOk : kResultFalse;
    }
    tresult seek(int64, int32, int64*) override { return kNotImplemented; }
    tresult tell(int64* position) override {
        *position = static_cast<int64>(bytes_.size());
        return kResultOk;
    }

    const std::string& bytes() const { return bytes_; }
    int writes() const { return writes_; }
    // References held by others: 0 once everyone let go.
    uint32 references() const { return count_; }

private:
    std::string bytes_;
    long limit_;
    int writes_ = 0;
    std::atomic<uint32> count_{0};
};

} // namespace WriterTest
