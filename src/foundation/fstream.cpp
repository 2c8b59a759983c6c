// FStream: reading, writing and seeking on an open file descriptor.
#include "foundation/fstream.h"

#include <unistd.h>

#include <cerrno>

namespace Halvorn {
namespace {

// Moves up to count bytes, retrying after signals; failed tells whether the system refused.
template <class Buffer, class Call>
int32 transfer(Buffer buffer, int32 count, Call call, bool& failed) {
    failed = false;
    int32 done = 0;
    while (done < count) {
        ssize_t n = call(buffer + done, size_t(count - done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            failed = true;
        if (n <= 0)
            break;
        done += int32(n);
    }
    return done;
}

} // namespace

FStream::FStream(int fd) : fd_(fd) {}

FStream::~FStream() { close(); }

tresult FStream::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IBStream)
    return FObject::queryInterface(iid, object);
}

void FStream::close() {
    if (fd_ >= 0)
        ::close(fd_);
    fd_ = -1;
}

int32 FStream::read(void* buffer, int32 count) {
    int32 done = 0;
    (void)read(buffer, count, &done);
    return done;
}

int32 FStream::write(const void* buffer, int32 count) {
    int32 done = 0;
    (void)write(const_cast<void*>(buffer), count, &done);
    return done;
}

tresult FStream::read(void* buffer, int32 count, int32* done) {
    if (done)
        *done = 0;
    if (count < 0 || (!buffer && count > 0))
        return kInvalidArgument;
    if (fd_ < 0)
        return kResultFalse;
    bool failed = false;
    int fd = fd_;
    int32 n = transfer(
        static_cast<char*>(buffer), count,
        [fd](char* at, size_t size) { return ::read(fd, at, size); }, failed);
    if (done)
        *done = n;
    return failed ? kResultFalse : kResultOk;
}

tresult FStream::write(void* buffer, int32 count, int32* done) {
    if (done)
        *done = 0;
    if (count < 0 || (!buffer && count > 0))
        return kInvalidArgument;
    if (fd_ < 0)
        return kResultFalse;
    bool failed = false;
    int fd = fd_;
    int32 n = transfer(
        static_cast<const char*>(buffer), count,
        [fd](const char* at, size_t size) { return ::write(fd, at, size); }, failed);
    if (done)
        *done = n;
    return failed || n < count ? kResultFalse : kResultOk;
}

tresult FStream::seek(int64 position, int32 mode, int64* result) {
    static const int kWhence[] = {SEEK_SET, SEEK_CUR, SEEK_END};
    if (mode < kSeekFromStart || mode > kSeekFromEnd)
        return kInvalidArgument;
    if (fd_ < 0)
        return kResultFalse;
    off_t at = lseek(fd_, off_t(position), kWhence[mode]);
    if (at < 0)
        return errno == EINVAL ? kInvalidArgument : kResultFalse;
    if (result)
        *result = at;
    return kResultOk;
}

tresult FStream::tell(int64* position) {
    if (!position)
        return kInvalidArgument;
    return seek(0, kSeekFromCurrent, position);
}

} // namespace Halvorn
