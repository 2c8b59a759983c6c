// deflateFile: the file's size bounds the output, so one buffer of that bound takes it all.
#include "package/deflatedfile.h"

#include "foundation/ffilesystem.h"

#include <new>

namespace Halvorn {
namespace {

// A z_stream set up with the entry parameters, ended with its owner.
class RawDeflater {
public:
    RawDeflater() {
        ready_ = deflateInit2(&stream_, kEntryLevel, Z_DEFLATED, kEntryWindowBits,
                              kEntryMemoryLevel, kEntryStrategy) == Z_OK;
    }
    ~RawDeflater() {
        if (ready_)
            deflateEnd(&stream_);
    }
    RawDeflater(const RawDeflater&) = delete;
    RawDeflater& operator=(const RawDeflater&) = delete;

    z_stream* stream() { return ready_ ? &stream_ : nullptr; }

private:
    z_stream stream_{};
    bool ready_ = false;
};

bool deflateStream(FStream* stream, uint64_t limit, DeflatedFile& out) {
    // A file known to be too large is left at once; one that grows while it is read, below.
    int64 size = 0;
    if (stream->seek(0, IBStream::kSeekFromEnd, &size) != kResultOk ||
        static_cast<uint64_t>(size) > limit ||
        stream->seek(0, IBStream::kSeekFromStart, nullptr) != kResultOk)
        return false;
    RawDeflater deflater;
    z_stream* z = deflater.stream();
    if (!z)
        return false;
    // Enough for the whole file deflated with Z_NO_FLUSH and Z_FINISH alone.
    const uLong bound = deflateBound(z, static_cast<uLong>(size));
    out.bytes.reset(new unsigned char[bound]);
    std::unique_ptr<unsigned char[]> chunk(new unsigned char[kFileChunkBytes]);
    z->next_out = out.bytes.get();
    z->avail_out = static_cast<uInt>(bound);
    uLong crc = crc32(0, nullptr, 0);
    for (;;) {
        const int32 got = stream->read(chunk.get(), kFileChunkBytes);
        if (got <= 0)
            break;
        out.size += static_cast<uint64_t>(got);
        if (out.size > static_cast<uint64_t>(size))
            return false;
        crc = crc32(crc, chunk.get(), static_cast<uInt>(got));
        z->next_in = chunk.get();
        z->avail_in = static_cast<uInt>(got);
        if (deflate(z, Z_NO_FLUSH) != Z_OK || z->avail_in != 0)
            return false;
    }
    if (deflate(z, Z_FINISH) != Z_STREAM_END)
        return false;
    out.length = static_cast<size_t>(bound - z->avail_out);
    out.crc = static_cast<uint32_t>(crc);
    out.text = z->data_type == Z_TEXT;
    return true;
}

} // namespace

bool deflateFile(const FUrl& file, uint64_t limit, DeflatedFile& out) {
    out = DeflatedFile();
    // Helper threads call this, so nothing may escape it.
    FStream* stream = nullptr;
    bool done = false;
    try {
        stream = gFNFileSystem->openStream(file, FStream::kRead);
        done = stream && deflateStream(stream, limit, out);
    } catch (const std::bad_alloc&) {
    }
    if (stream)
        gFNFileSystem->closeStream(stream);
    if (!done)
        out = DeflatedFile();
    return done;
}

} // namespace Halvorn
