// The checks an archive entry's name passes before it is joined to an extraction folder.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {

// Entry names are handled in buffers of this size. A name longer than kMaxEntryNameLength
// (2047 bytes or more) is left out on both reading and writing, so that every package this
// system makes reads back whole.
constexpr uint32 kEntryNameBufferBytes = 2048;
constexpr uint32 kMaxEntryNameLength = 2046;

// An entry name in the form that may be joined below an extraction folder: "/" separators,
// no empty, "." or ".." component, no leading "/".
struct ZipEntryName {
    char8 text[kEntryNameBufferBytes];
    bool isFolder; // the archive's name ended in a separator
};

// Checks the raw name of an archive entry (length bytes, not zero-terminated) and gives its safe
// form. False for a name to skip: empty, longer than kMaxEntryNameLength, holding a zero byte,
// not valid UTF-8, absolute, or with a ".." component. "\\" counts as a separator, since
// archives made on other platforms use it; "." and empty components are dropped.
[[nodiscard]] bool makeZipEntryName(const char8* raw, uint64 length, ZipEntryName& out);

} // namespace Halvorn
