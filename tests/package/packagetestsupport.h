// Helpers of the package tests: a private temporary folder and hand-made zip archives.
#pragma once

#include "common/testfiles.h"
#include "common/zipbytes.h"
#include "corvelle/package.h"
#include "corvelle/ptr.h"
#include "support/counted.h"

#include <cstdint>
#include <string>
#include <vector>

namespace PackageTest {

using TestSupport::exists;
using TestSupport::get16;
using TestSupport::get32;
using TestSupport::listTree;
using TestSupport::readFile;
using TestSupport::ScratchFolder;
using TestSupport::writeFile;

// Points the system's temporary folder ($TMPDIR) at a private scratch folder while it lives, so
// that a test can see what a read leaves behind.
class PrivateTempFolder {
public:
    const std::string& path() const { return scratch_.path(); }
    // Names of everything below the folder, relative and sorted.
    std::vector<std::string> leftovers() const { return listTree(path()); }

private:
    ScratchFolder scratch_;
    TestSupport::ScopedVariable tmpdir_{"TMPDIR", scratch_.path().c_str()};
};

// One entry of a hand-made archive.
struct RawEntry {
    std::string name;
    std::string data;
    uint16_t method = 8; // 0 stored, 8 deflate
    uint16_t flags = 0;
    // When set, the size that both headers state for the uncompressed data.
    int64_t statedSize = -1;
    // When not empty, the bytes as they stand in the archive, taken instead of data's.
    std::string compressed = {};
    // When set, the index of an earlier entry whose local header and data this entry's
    // directory record points at (an overlap, as in a zip bomb).
    int sharesDataWith = -1;
};

enum class ZipForm {
    kClassic,      // 32-bit records only
    kZip64,        // Zip64 end records and locator, entries in 32-bit form
    kZip64Entries, // as kZip64, and every entry's sizes and offset in a Zip64 extra field
};

// Builds a zip archive byte by byte, independent of minizip.
std::string buildZip(const std::vector<RawEntry>& entries, ZipForm form = ZipForm::kClassic);

// Writes the archive of the entries as scratch/name and gives its path.
std::string writePackage(const ScratchFolder& scratch, const std::string& name,
                         const std::vector<RawEntry>& entries);

// Raw deflate of size zero bytes, made in pieces so that no buffer of that size is needed.
std::string deflatedZeros(uint64_t size);

// Bytes that don't compress, the same for the same size.
std::string noise(size_t size);

// A document of one audio track, id t1, holding the given clips; audioClip makes a clip whose
// one event refers to path.
std::string audioClip(const std::string& path, bool external = false);
std::string documentWith(const std::string& clips);

// A client that puts each file type into a folder below base (or wants none when base is
// empty) and keeps what the read reports.
class ReportingClient : public Halvorn::Support::Counted<Halvorn::IMediaPackageManagerClient,
                                                         Halvorn::IMediaPackageReadReport> {
public:
    explicit ReportingClient(const std::string& base);

    const Halvorn::char16* getPathForFileType(Halvorn::int32 type) override;
    Halvorn::tresult report(Halvorn::int32 what, const Halvorn::char16* subject) override;

    // The subjects reported for one case, in order.
    std::vector<std::string> subjects(Halvorn::int32 what) const;
    size_t reportCount() const { return reports_.size(); }

private:
    std::u16string folders_[5];
    std::vector<std::pair<Halvorn::int32, std::string>> reports_;
};

// Reads a package through a fresh manager; null when the read fails.
Halvorn::IPtr<Halvorn::IMediaProjectPackage> readWith(const std::string& package,
                                                      ReportingClient& client);

// The archive layer alone: folder to archive and back.
bool zip(const std::string& folder, const std::string& archive);
bool unzip(const std::string& archive, const std::string& folder);

} // namespace PackageTest
