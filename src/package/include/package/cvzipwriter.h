// CvZipWriter: packs a whole folder into a zip archive with the fixed entry parameters.
#pragma once

#include "foundation/fstring.h"
#include "model/cvobject.h"

namespace Halvorn {

// A stack object that groups one operation. Every entry is deflated at zlib's default level
// (raw stream, window 15, memory level 8, default strategy) with only the UTF-8 flag (bit 11)
// set, version made by 0, needed 20, an all-zero date record (time 0, date 0x0020), no extras
// or comments, and no Zip64 request. The attributes passed are zero; minizip itself sets bit 0
// of the internal ones for data that zlib takes for text. Entries come in the foundation's
// sorted walk order, so the same folder always gives the same bytes. Folders get no entries of
// their own, and links and other special files are left out. Files are deflated ahead on
// helper threads where there are cores for them (joined before zipFolder returns); the bytes
// are those of one thread.
//
// A file of 4 GiB or more gets its sizes in a Zip64 extra field from minizip, which the
// system's minizip can't read back (see CvZipReader).
class CvZipWriter : public CvObject {
public:
    CV_DECLARE_TYPE(CvZipWriter, CvObject)

    CvZipWriter() = default;
    ~CvZipWriter() override = default;

    // Replaces a file at zipPath. True when the archive could be created and written; false
    // with errno telling why when it couldn't (a full disk stops the walk). A file that can't be
    // read, or whose name is too long for an entry (see ZipEntryName), gets no entry and
    // doesn't stop the rest. A folder that doesn't exist gives an archive without entries.
    [[nodiscard]] bool zipFolder(const String& folder, const String& zipPath) const;
};

} // namespace Halvorn
