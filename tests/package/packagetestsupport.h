// Helpers of the package tests: private scratch folders, file access and hand-made zip archives.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace PackageTest {

// A fresh folder below the system's temporary folder, removed with everything in it at the end.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::string& path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

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

void writeFile(const std::string& path, const std::string& bytes);
// The whole file, or an empty string when it can't be read.
std::string readFile(const std::string& path);
bool exists(const std::string& path);
// Relative paths of every file and folder below root, sorted; folders end in "/".
std::vector<std::string> listTree(const std::string& root);

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

// Reads little-endian values out of archive bytes.
uint16_t get16(const std::string& bytes, size_t at);
uint32_t get32(const std::string& bytes, size_t at);

} // namespace PackageTest
