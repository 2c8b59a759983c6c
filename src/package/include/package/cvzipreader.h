// CvZipReader: unpacks a whole zip archive into a folder.
#pragma once

#include "corvelle/package.h"
#include "foundation/fstring.h"
#include "model/cvobject.h"
#include "package/packageerror.h"

namespace Halvorn {

// A stack object that groups one operation. Archives are hostile input: a name that is
// absolute, climbs with "..", isn't UTF-8 or is too long is skipped (see ZipEntryName), nothing
// is written outside the folder or through a link, and an entry gives at most the bytes its
// directory record states. Damaged entries are swallowed: what could be read of them stays. Only
// stored and deflated entries are extracted; another method, an encrypted entry, or one whose data
// overlap another's are skipped as if absent. The extraction as a whole fails when a write into
// the folder fails (a full disk) or when it has written more than kInflationFactor times the
// archive's size plus kInflationAllowance, so that a small archive can't fill a disk.
//
// 32-bit archives and archives with Zip64 end records are read. Entries whose sizes stand only in
// a Zip64 extra field (files beyond 4 GiB) are not: the system's minizip 1.1 misreads that field
// on 64-bit platforms, and such an entry fails to open and is skipped like any damaged one.
class CvZipReader : public CvObject {
public:
    CV_DECLARE_TYPE(CvZipReader, CvObject)

    static constexpr uint64 kInflationFactor = 100;
    static constexpr uint64 kInflationAllowance = 100ull << 20;

    struct Options {
        // Extract project.xml at the root and nothing else.
        bool documentOnly = false;
        // Fail with kPackageNoDocument when no project.xml at the root was extracted.
        bool requireDocument = false;
        // Told of every entry skipped and of the cause of a failed extraction; may be null.
        IMediaPackageReadReport* report = nullptr;
    };

    CvZipReader() = default;
    ~CvZipReader() override = default;

    // folder exists and has no trailing "/". Fails when zipPath is missing or no regular file
    // (a FIFO is never opened), empty, no zip archive or one cut short, when a write into the
    // folder fails, or when the inflation bound is passed (what was written then stays for the
    // caller to remove); an archive without entries, or with damaged ones, succeeds.
    [[nodiscard]] PackageError extract(const String& zipPath, const String& folder,
                                       const Options& options) const;
    [[nodiscard]] bool unzipToFolder(const String& zipPath, const String& folder) const {
        return extract(zipPath, folder, Options()).ok();
    }
};

} // namespace Halvorn
