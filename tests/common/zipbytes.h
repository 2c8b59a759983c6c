// Helpers every test suite shares for looking into archive bytes without minizip.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace TestSupport {

// Little-endian values out of archive bytes.
uint16_t get16(const std::string& bytes, size_t at);
uint32_t get32(const std::string& bytes, size_t at);

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
    uint16_t internalAttributes = 0;
    uint32_t externalAttributes = 0;
};

// The central directory in stored order; empty for bytes that hold none.
std::vector<ZipEntry> readCentralDirectory(const std::string& archive);

} // namespace TestSupport
