// Helpers of the writer tests: scratch folders, files, expat checks and zip central directories.
#pragma once

#include "corvelle/base.h"

#include <cstdint>
#include <string>
#include <vector>

namespace WriterTest {

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

// Makes the parent folders too.
void writeFile(const std::string& path, const std::string& bytes);
// The whole file, or an empty string when it can't be read.
std::string readFile(const std::string& path);
bool exists(const std::string& path);
// Relative paths of every file and folder below root, sorted; folders end in "/".
std::vector<std::string> listTree(const std::string& root);
std::u16string utf16(const std::string& utf8);

// True when expat takes the bytes as a whole, well-formed document; else the message says why.
bool isWellFormed(const std::string& document, std::string* message = nullptr);

// One entry of an archive's central directory, with what the format fixes for it.
struct ZipEntry {
    std::string name;
    uint16_t versionMadeBy = 0;
    uint16_t versionNeeded = 0;
    uint16_t flags = 0;
    uint16_t method = 0;
    uint16_t time = 0;
    uint16_t date = 0;
    uint32_t compressedSize = 0;
    uint32_t size = 0;
    uint16_t extraLength = 0;
    uint16_t commentLength = 0;
    uint32_t externalAttributes = 0;
};

// The central directory in stored order; empty for bytes that hold none.
std::vector<ZipEntry> readCentralDirectory(const std::string& archive);

} // namespace WriterTest
