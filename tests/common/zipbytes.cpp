// Helpers every test suite shares for looking into archive bytes without minizip.
#include "zipbytes.h"

namespace TestSupport {

uint16_t get16(const std::string& bytes, size_t at) {
    return uint16_t(uint8_t(bytes.at(at)) | uint8_t(bytes.at(at + 1)) << 8);
}

uint32_t get32(const std::string& bytes, size_t at) {
    return uint32_t(get16(bytes, at)) | uint32_t(get16(bytes, at + 2)) << 16;
}

std::vector<ZipEntry> readCentralDirectory(const std::string& archive) {
    std::vector<ZipEntry> entries;
    if (archive.size() < 22)
        return entries;
    size_t end = archive.size() - 22;
    while (end > 0 && get32(archive, end) != 0x06054b50)
        --end;
    if (get32(archive, end) != 0x06054b50)
        return entries;
    const uint16_t count = get16(archive, end + 10);
    size_t at = get32(archive, end + 16);
    for (uint16_t i = 0; i < count && at + 46 <= archive.size(); ++i) {
        if (get32(archive, at) != 0x02014b50)
            break;
        ZipEntry entry;
        entry.versionMadeBy = get16(archive, at + 4);
        entry.versionNeeded = get16(archive, at + 6);
        entry.flags = get16(archive, at + 8);
        entry.method = get16(archive, at + 10);
        entry.time = get16(archive, at + 12);
        entry.date = get16(archive, at + 14);
        entry.compressedSize = get32(archive, at + 20);
        entry.size = get32(archive, at + 24);
        const uint16_t nameLength = get16(archive, at + 28);
        entry.extraLength = get16(archive, at + 30);
        entry.commentLength = get16(archive, at + 32);
        entry.internalAttributes = get16(archive, at + 36);
        entry.externalAttributes = get32(archive, at + 38);
        entry.name = archive.substr(at + 46, nameLength);
        entries.push_back(entry);
        at += 46 + nameLength + entry.extraLength + entry.commentLength;
    }
    return entries;
}

} // namespace TestSupport
