// CvZipReader: walks the archive's directory with minizip and extracts each acceptable entry.
#include "package/cvzipreader.h"

#include "foundation/ffilesystem.h"
#include "package/confinedfolder.h"
#include "package/zipentryname.h"

#include <cstring>
#include <unistd.h>
#include <unzip.h>

namespace Halvorn {
namespace {

constexpr uint32 kChunkBytes = 4096;

// Copies the current entry's data into the file, never more than the directory states.
void copyCurrentEntry(unzFile zip, int file, uint64 statedSize) {
    char buffer[kChunkBytes];
    uint64 remaining = statedSize;
    while (remaining > 0) {
        const int got = unzReadCurrentFile(zip, buffer, kChunkBytes);
        if (got <= 0)
            return;
        const uint32 keep = static_cast<uint64>(got) < remaining ? static_cast<uint32>(got)
                                                                 : static_cast<uint32>(remaining);
        if (!writeAll(file, buffer, keep))
            return;
        remaining -= keep;
    }
}

// Gives false when the directory record can't be read, which ends the walk.
[[nodiscard]] bool extractCurrentEntry(unzFile zip, const ConfinedFolder& target) {
    unz_file_info64 info;
    if (unzGetCurrentFileInfo64(zip, &info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK)
        return false;
    // Too long to be accepted anyway: not worth reading.
    if (info.size_filename > kMaxEntryNameLength)
        return true;
    char8 raw[kEntryNameBufferBytes];
    if (unzGetCurrentFileInfo64(zip, &info, raw, sizeof raw, nullptr, 0, nullptr, 0) != UNZ_OK)
        return false;
    ZipEntryName name;
    if (!makeZipEntryName(raw, info.size_filename, name))
        return true;
    if (name.isFolder) {
        (void)target.createFolder(name.text);
        return true;
    }
    if (unzOpenCurrentFile(zip) != UNZ_OK)
        return true;
    const int file = target.createFile(name.text);
    if (file >= 0) {
        copyCurrentEntry(zip, file, info.uncompressed_size);
        close(file);
    }
    // Its result carries the CRC check; a damaged entry keeps what was read of it.
    (void)unzCloseCurrentFile(zip);
    return true;
}

// minizip doesn't find an end record at offset 0, so it can't open an archive without entries;
// such an archive is nothing but that record (and its comment).
bool isEmptyArchive(const String& path) {
    FStream* file = gFNFileSystem->openStream(FUrl(path, false), FStream::kRead);
    if (!file)
        return false;
    unsigned char record[22];
    const bool whole = file->read(record, sizeof record) == sizeof record;
    gFNFileSystem->closeStream(file);
    const unsigned char signature[4] = {'P', 'K', 5, 6};
    // Entries on this disk, entries in all and the directory's size.
    const unsigned char none[8] = {};
    return whole && std::memcmp(record, signature, 4) == 0 && std::memcmp(record + 8, none, 8) == 0;
}

} // namespace

bool CvZipReader::unzipToFolder(const String& zipPath, const String& folder) const {
    String archive(zipPath);
    unzFile zip = unzOpen64(archive.text8());
    if (!zip)
        return isEmptyArchive(archive);
    String root(folder);
    const ConfinedFolder target(root.text8());
    bool more = target.isOpen() && unzGoToFirstFile(zip) == UNZ_OK;
    while (more)
        more = extractCurrentEntry(zip, target) && unzGoToNextFile(zip) == UNZ_OK;
    unzClose(zip);
    return true;
}

} // namespace Halvorn
