// CvBufferedStream: a write buffer between the XML output layer and the stream of a file.
#pragma once

#include "corvelle/ptr.h"
#include "corvelle/stream.h"
#include "foundation/fobject.h"

#include <string>

namespace Halvorn {

// The output layer writes every small piece of a document on its own; one system call for each
// would cost more than the document itself. This stream collects the pieces and passes them on
// in blocks of kBlockSize. A failed block fails the write that caused it and every write after,
// so the layer goes into its failed state as it would on the file itself. Only writing is
// offered. Lives on the stack of its user, with its one reference.
class CvBufferedStream : public FObject, public IBStream {
public:
    CV_DECLARE_TYPE(CvBufferedStream, FObject)
    CV_REFCOUNT_METHODS(FObject)
    tresult queryInterface(const FUID& iid, void** object) override;

    static constexpr size_t kBlockSize = 64 * 1024;

    // Takes a reference on the target.
    explicit CvBufferedStream(IBStream* target);
    // Drops what wasn't flushed: call flush first.
    ~CvBufferedStream() override = default;

    tresult read(void* buffer, int32 count, int32* done) override;
    tresult write(void* buffer, int32 count, int32* done) override;
    tresult seek(int64 position, int32 mode, int64* result) override;
    tresult tell(int64* position) override;

    // Passes on what is collected; true when everything written so far reached the target.
    [[nodiscard]] bool flush();

private:
    IPtr<IBStream> target_;
    std::string buffer_;
    int64 flushed_ = 0;
    bool failed_ = false;
};

} // namespace Halvorn
