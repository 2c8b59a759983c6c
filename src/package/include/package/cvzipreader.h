// CvZipReader: unpacks a whole zip archive into a folder.
#pragma once

#include "foundation/fstring.h"
#include "model/cvobject.h"

namespace Halvorn {

// A stack object that groups one operation. Archives are hostile input: a name that is
// absolute, climbs with "..", isn't UTF-8 or is too long is skipped (see ZipEntryName), nothing
// is written outside the folder or through a link, and an entry gives at most the bytes its
// directory record states. Failures of single entries are swallowed: what could be read stays.
//
// 32-bit archives and archives with Zip64 end records are read. Entries whose sizes stand only in
// a Zip64 extra field (files beyond 4 GiB) are not: the system's minizip 1.1 misreads that field
// on 64-bit platforms, and such an entry fails to open and is skipped like any damaged one.
class CvZipReader : public CvObject {
public:
    CV_DECLARE_TYPE(CvZipReader, CvObject)

    CvZipReader() = default;
    ~CvZipReader() override = default;

    // folder exists and has no trailing "/". False only when the archive can't be opened; an
    // archive without entries, or with damaged ones, gives true.
    [[nodiscard]] bool unzipToFolder(const String& zipPath, const String& folder) const;
};

} // namespace Halvorn
