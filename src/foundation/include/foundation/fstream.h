// FStream: a file opened by the file system service, with a byte-count read and write.
#pragma once

#include "corvelle/stream.h"
#include "foundation/fobject.h"

namespace Halvorn {

// Made only by FNFileSystem::createStream and openStream; closed by closeStream or by the
// last release. Answers queryInterface for IBStream, which is how a host or the XML layer is
// handed a file.
class FStream : public FObject, public IBStream {
public:
    CV_DECLARE_TYPE(FStream, FObject)
    CV_REFCOUNT_METHODS(FObject)
    tresult queryInterface(const FUID& iid, void** object) override;

    // Open modes, bit masks. The share bits are accepted and mean nothing here.
    enum Mode : int32 { kRead = 1, kWrite = 2, kShareRead = 4, kShareWrite = 8 };

    // Takes over an open descriptor.
    explicit FStream(int fd);

    // Each gives the number of bytes done: less than count at the end of the file, after an
    // error, on a closed stream or for a negative count.
    int32 read(void* buffer, int32 count);
    int32 write(const void* buffer, int32 count);

    tresult read(void* buffer, int32 count, int32* done) override;
    tresult write(void* buffer, int32 count, int32* done) override;
    tresult seek(int64 position, int32 mode, int64* result) override;
    tresult tell(int64* position) override;

    void close();
    bool isOpen() const { return fd_ >= 0; }

protected:
    ~FStream() override;

private:
    int fd_ = -1;
};

} // namespace Halvorn
