// CvBufferedStream: a write buffer between the XML output layer and the stream of a file.
#include "documents/cvbufferedstream.h"

namespace Halvorn {

CvBufferedStream::CvBufferedStream(IBStream* target) : target_(target) {
    buffer_.reserve(kBlockSize);
}

tresult CvBufferedStream::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IBStream)
    return FObject::queryInterface(iid, object);
}

tresult CvBufferedStream::read(void*, int32, int32* done) {
    if (done)
        *done = 0;
    return kNotImplemented;
}

tresult CvBufferedStream::write(void* buffer, int32 count, int32* done) {
    if (done)
        *done = 0;
    if (count < 0 || (count > 0 && !buffer))
        return kInvalidArgument;
    if (failed_ || !target_)
        return kResultFalse;
    buffer_.append(static_cast<const char*>(buffer), static_cast<size_t>(count));
    if (buffer_.size() >= kBlockSize && !flush())
        return kResultFalse;
    if (done)
        *done = count;
    return kResultOk;
}

tresult CvBufferedStream::seek(int64, int32, int64*) { return kNotImplemented; }

tresult CvBufferedStream::tell(int64* position) {
    if (!position)
        return kInvalidArgument;
    *position = flushed_ + static_cast<int64>(buffer_.size());
    return kResultOk;
}

bool CvBufferedStream::flush() {
    if (failed_ || !target_)
        return false;
    if (buffer_.empty())
        return true;
    // Blocks stay far below the 32-bit count of a write.
    const auto count = static_cast<int32>(buffer_.size());
    int32 done = 0;
    failed_ = target_->write(&buffer_[0], count, &done) != kResultOk || done != count;
    flushed_ += done;
    buffer_.clear();
    return !failed_;
}

} // namespace Halvorn
