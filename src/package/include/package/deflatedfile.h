// DeflatedFile: one file deflated into memory, ready to go into an archive as a raw entry.
#pragma once

#include "foundation/furl.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <zlib.h>

namespace Halvorn {

// The deflate parameters that fix an entry's bytes.
constexpr int kEntryLevel = Z_DEFAULT_COMPRESSION;
constexpr int kEntryWindowBits = -MAX_WBITS; // a raw stream, window 15
constexpr int kEntryMemoryLevel = 8;
constexpr int kEntryStrategy = Z_DEFAULT_STRATEGY;

// Large enough that reading costs few system calls beside the deflating, small enough to stay in
// the cache between the read and the deflate.
constexpr int32 kFileChunkBytes = 256 * 1024;

// Deflating with the archive's entry parameters gives the very bytes minizip's own deflate
// would, so an entry written raw from here is indistinguishable from one minizip deflated.
struct DeflatedFile {
    std::unique_ptr<unsigned char[]> bytes;
    size_t length = 0;
    uint32_t crc = 0;
    uint64_t size = 0;
    bool text = false; // zlib took the data for text: bit 0 of the entry's internal attributes
};

// Deflates the file whole with the entry parameters. False, with nothing to show, when the file
// can't be read, holds more than limit bytes, grows while it is read, or memory runs out: the
// caller streams it instead.
[[nodiscard]] bool deflateFile(const FUrl& file, uint64_t limit, DeflatedFile& out);

} // namespace Halvorn
