// Checks that an archive made from a folder holds every file of that folder, whole.
#include "package/archivecheck.h"

#include "corvelle/ptr.h"
#include "foundation/ffileiterator.h"
#include "foundation/ffilesystem.h"

#include <map>
#include <string>

namespace Halvorn {

namespace {

constexpr uint32 kEndRecordSignature = 0x06054b50;
constexpr uint32 kEntrySignature = 0x02014b50;
constexpr int32 kEndRecordSize = 22;
constexpr int32 kEntryHeaderSize = 46;
constexpr uint32 kZip64Marker = 0xFFFFFFFF;
// A central directory this large is no package of ours; the check refuses rather than reads.
constexpr uint32 kMaxDirectorySize = 64u << 20;

uint32 get16(const std::string& bytes, size_t at) {
    return static_cast<unsigned char>(bytes[at]) |
           static_cast<uint32>(static_cast<unsigned char>(bytes[at + 1])) << 8;
}

uint32 get32(const std::string& bytes, size_t at) {
    return get16(bytes, at) | get16(bytes, at + 2) << 16;
}

struct OpenFile {
    FStream* stream;
    explicit OpenFile(const String& path)
        : stream(gFNFileSystem->openStream(FUrl(path, false), FStream::kRead)) {}
    ~OpenFile() { gFNFileSystem->closeStream(stream); }

    int64 size() {
        int64 end = -1;
        return stream && stream->seek(0, IBStream::kSeekFromEnd, &end) == kResultOk ? end : -1;
    }
    bool readAt(int64 position, std::string& bytes, uint32 count) {
        bytes.assign(count, '\0');
        return stream->seek(position, IBStream::kSeekFromStart, nullptr) == kResultOk &&
               stream->read(&bytes[0], static_cast<int32>(count)) == static_cast<int32>(count);
    }
};

// Every regular file below folder, by its entry name, with its size.
bool collectFiles(const String& folder, const std::string& prefix,
                  std::map<std::string, int64>& files) {
    FFileIterator iterator{FUrl(folder, true)};
    while (FUrl* raw = iterator.next()) {
        IPtr<FUrl> item = IPtr<FUrl>::adopt(raw);
        const std::string name = prefix + item->getName().text8();
        if (item->isFolder()) {
            if (!collectFiles(item->getPath(), name + "/", files))
                return false;
            continue;
        }
        const int64 size = OpenFile(item->getPath()).size();
        if (size < 0)
            return false;
        files[name] = size;
    }
    return true;
}

} // namespace

bool archiveHoldsFolder(const String& archivePath, const String& folder) {
    std::map<std::string, int64> files;
    if (!collectFiles(folder, "", files))
        return false;
    OpenFile archive(archivePath);
    const int64 size = archive.size();
    std::string end;
    if (size < kEndRecordSize || !archive.readAt(size - kEndRecordSize, end, kEndRecordSize) ||
        get32(end, 0) != kEndRecordSignature)
        return false;
    const uint32 count = get16(end, 10);
    const uint32 directorySize = get32(end, 12);
    const uint32 directoryStart = get32(end, 16);
    // An archive in the Zip64 form (past 65535 entries or 4 GiB) is taken as it stands.
    if (count == 0xFFFF || directoryStart == kZip64Marker || directorySize == kZip64Marker)
        return true;
    if (count != files.size() || directorySize > kMaxDirectorySize ||
        static_cast<int64>(directoryStart) + directorySize + kEndRecordSize != size)
        return false;
    std::string directory;
    if (!archive.readAt(directoryStart, directory, directorySize))
        return false;
    size_t at = 0;
    for (uint32 i = 0; i < count; ++i) {
        if (at + kEntryHeaderSize > directory.size() || get32(directory, at) != kEntrySignature)
            return false;
        const uint32 entrySize = get32(directory, at + 24);
        const size_t nameLength = get16(directory, at + 28);
        const size_t extra = get16(directory, at + 30) + get16(directory, at + 32);
        if (at + kEntryHeaderSize + nameLength > directory.size())
            return false;
        const auto file = files.find(directory.substr(at + kEntryHeaderSize, nameLength));
        if (file == files.end() || (entrySize != kZip64Marker && entrySize != file->second))
            return false;
        files.erase(file);
        at += kEntryHeaderSize + nameLength + extra;
    }
    return files.empty();
}

} // namespace Halvorn
