// Entry name checks for extraction: length, UTF-8, absolute paths and climbing components.
#include "package/zipentryname.h"

#include "foundation/fstring.h"

#include <cstring>

namespace Halvorn {

bool makeZipEntryName(const char8* raw, uint64 length, ZipEntryName& out) {
    out.text[0] = 0;
    out.isFolder = false;
    if (!raw || length == 0 || length > kMaxEntryNameLength)
        return false;
    if (std::memchr(raw, 0, length) || !isValidUtf8(raw, static_cast<int32>(length)))
        return false;
    if (raw[0] == '/' || raw[0] == '\\')
        return false;

    uint32 written = 0;
    uint32 start = 0;
    for (uint32 i = 0; i <= length; ++i) {
        if (i < length && raw[i] != '/' && raw[i] != '\\')
            continue;
        const uint32 size = i - start;
        const char8* component = raw + start;
        start = i + 1;
        if (size == 0 || (size == 1 && component[0] == '.'))
            continue;
        if (size == 2 && component[0] == '.' && component[1] == '.')
            return false;
        if (written > 0)
            out.text[written++] = '/';
        std::memcpy(out.text + written, component, size);
        written += size;
    }
    if (written == 0)
        return false;
    out.text[written] = 0;
    out.isFolder = raw[length - 1] == '/' || raw[length - 1] == '\\';
    return true;
}

} // namespace Halvorn
