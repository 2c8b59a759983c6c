// IBStream: the byte stream that crosses to the host, for plug-in state and documents.
//
// A host hands one to a plug-in to save or load its state; the library hands one to the XML
// writer. The library's file stream and memory stream both implement it.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {
namespace Quor {

struct IBStream : FUnknown {
    // Modes of seek: where the position counts from.
    enum SeekMode : int32 { kSeekFromStart = 0, kSeekFromCurrent = 1, kSeekFromEnd = 2 };

    // Reads up to count bytes into buffer; done (may be null) receives the number read, which
    // is less than count only at the end. A negative count or a null buffer with a positive
    // count gives kInvalidArgument.
    virtual tresult read(void* buffer, int32 count, int32* done) = 0;
    // Writes count bytes from buffer at the position; done (may be null) receives the number
    // written.
    virtual tresult write(void* buffer, int32 count, int32* done) = 0;
    // Moves the position; result (may be null) receives the new one. An unknown mode or a
    // position before the start gives kInvalidArgument and leaves the position as it was.
    // A position past the end is allowed: reading there gives nothing, writing fills the gap
    // with zeros.
    virtual tresult seek(int64 position, int32 mode, int64* result) = 0;
    // The position from the start; a null argument gives kInvalidArgument.
    virtual tresult tell(int64* position) = 0;

    static constexpr FUID iid = FUID::make(0xC3BF6EA2, 0x3099, 0x4752, 0x9B6B, 0xF9901EE33E9B);
};

} // namespace Quor
} // namespace Halvorn
