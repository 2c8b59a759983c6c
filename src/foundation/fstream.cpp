// FStream: reading, writing and seeking on an open file descriptor.
#include "foundation/fstream.h"

#include <unistd.h>

#include <cerrno>

namespace Halvorn {
namespace {

// Moves up to count bytes between the buffer and the descriptor, retrying after signals, and
// reports how many moved; a closed descriptor or the system's refusal gives kResultFalse.
template <class Buffer, class Call>
tresult transfer(int fd, Buffer buffer, int32 count, int32* done, Call call) {
    if (done)
        *done = 0;
    if (count < 0 || (!buffer && count > 0))
        return kInvalidArgument;
    if (fd < 0)
        return kResultFalse;
    bool failed = false;
    int32 moved = 0;
    while (moved < count) {
        ssize_t n = call(fd, buffer + moved, size_t(count - moved));
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            failed = true;
        if (n <= 0)
            break;
        moved += int32(n);
    }
    if (done)
        *done = moved;
    return failed ? kResultFalse : kResultOk;
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
    return transfer(fd_, static_cast<char*>(buffer), count, done, ::read);
}

tresult FStream::write(void* buffer, int32 count, int32* done) {
    int32 moved = 0;
    tresult result = transfer(fd_, static_cast<const char*>(buffer), count, &moved, ::write);
    if (done)
        *done = moved;
    // A short write leaves the file incomplete.
    return result == kResultOk && moved < count ? kResultFalse : result;
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
