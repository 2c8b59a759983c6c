// Helpers of the package tests: a private temporary folder and hand-made zip archives.
#pragma once

#include "common/testfiles.h"
#include "common/zipbytes.h"

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
    PrivateTempFolder();
    ~PrivateTempFolder();

    const std::string& path() const { return scratch_.path(); }
    // Names of everything below the folder, relative and sorted.
    std::vector<std::string> leftovers() const;

private:
    ScratchFolder scratch_;
    std::string previous_;
    bool hadPrevious_;
};

// One entry of a hand-made archive.
struct RawEntry {
    std::string name;
    std::string data;
    uint16_t method = 8; // 0 stored, 8 deflate
    uint16_t flags = 0;
    // When set, the size that both headers state for the uncompressed data.
    int64_t statedSize = -1;
};

enum class ZipForm {
    kClassic,      // 32-bit records only
    kZip64,        // Zip64 end records and locator, entries in 32-bit form
    kZip64Entries, // as kZip64, and every entry's sizes and offset in a Zip64 extra field
};

// Builds a zip archive byte by byte, independent of minizip.
std::string buildZip(const std::vector<RawEntry>& entries, ZipForm form = ZipForm::kClassic);

} // namespace PackageTest
