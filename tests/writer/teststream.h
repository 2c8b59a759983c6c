// TestStream: an IBStream into a string that can be told to fail after a number of bytes.
#pragma once

#include "corvelle/stream.h"
#include "support/counted.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace WriterTest {

using namespace Halvorn;

// It lives on the test's stack: the references others take must all come back.
class TestStream : public Support::Counted<IBStream> {
public:
    // limit: the bytes it takes before every further write fails; -1 for no limit.
    explicit TestStream(long limit = -1) : limit_(limit) {}

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
    uint32 references() const { return uint32(count() - 1); }

private:
    std::string bytes_;
    long limit_;
    int writes_ = 0;
};

} // namespace WriterTest
