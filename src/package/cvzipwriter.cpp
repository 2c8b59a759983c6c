// CvZipWriter: a depth-first walk of the folder into minizip entries.
#include "package/cvzipwriter.h"

#include "corvelle/ptr.h"
#include "foundation/ffileiterator.h"
#include "foundation/ffilesystem.h"
#include "package/zipentryname.h"

#include <cstring>
#include <memory>
#include <new>
#include <zip.h>

namespace Halvorn {
namespace {

// Large enough that reading costs few system calls beside the deflating, small enough to stay in
// the cache between the read and the deflate.
constexpr int32 kChunkBytes = 256 * 1024;

// The entry parameters that fix a package's bytes.
constexpr int kLevel = Z_DEFAULT_COMPRESSION;
constexpr int kWindowBits = -MAX_WBITS;
constexpr int kMemoryLevel = 8;
constexpr uLong kVersionMadeBy = 0;
constexpr uLong kFlagUtf8Name = 2048;

// The entry name of an item: the prefix and the item's name, with a "/" between them unless
// the prefix is empty or ends in one.
String joinEntryName(const String& prefix, const String& name) {
    String joined(prefix);
    if (!prefix.isEmpty() && !prefix.endsWith(String("/")))
        joined.append("/");
    joined.append(name);
    return joined;
}

void addFileToZip(const FUrl& file, const String& entryName, zipFile zip, char* buffer) {
    FStream* stream = gFNFileSystem->openStream(file, FStream::kRead);
    if (!stream)
        return;
    String name(entryName);
    name.toMultiByte(String::kCodePageUtf8);
    const uint32 length = static_cast<uint32>(std::strlen(name.text8()));
    if (length == 0 || length > kMaxEntryNameLength) {
        gFNFileSystem->closeStream(stream);
        return;
    }
    char8 utf8Name[kEntryNameBufferBytes] = {};
    std::memcpy(utf8Name, name.text8(), length);

    // An all-zero record: no real time, so equal contents give equal packages.
    zip_fileinfo info;
    std::memset(&info, 0, sizeof info);
    if (zipOpenNewFileInZip4_64(zip, utf8Name, &info, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED,
                                kLevel, 0, kWindowBits, kMemoryLevel, Z_DEFAULT_STRATEGY, nullptr,
                                0, kVersionMadeBy, kFlagUtf8Name, 0) == ZIP_OK) {
        for (;;) {
            const int32 got = stream->read(buffer, kChunkBytes);
            if (got <= 0 || zipWriteInFileInZip(zip, buffer, static_cast<unsigned>(got)) != ZIP_OK)
                break;
        }
        zipCloseFileInZip(zip);
    }
    gFNFileSystem->closeStream(stream);
}

void addFolderToZip(const FUrl& folder, const String& prefix, zipFile zip, char* buffer) {
    FFileIterator items(folder);
    while (FUrl* raw = items.next()) {
        const IPtr<FUrl> item = IPtr<FUrl>::adopt(raw);
        const String name = joinEntryName(prefix, item->getName());
        if (item->isFolder()) {
            String subPrefix(name);
            subPrefix.append("/");
            addFolderToZip(*item, subPrefix, zip, buffer);
        } else {
            addFileToZip(*item, name, zip, buffer);
        }
    }
}

} // namespace

bool CvZipWriter::zipFolder(const String& folder, const String& zipPath) const {
    std::unique_ptr<char[]> buffer(new (std::nothrow) char[kChunkBytes]);
    if (!buffer)
        return false;
    String archive(zipPath);
    zipFile zip = zipOpen64(archive.text8(), APPEND_STATUS_CREATE);
    if (!zip)
        return false;
    addFolderToZip(FUrl(folder, true), String(""), zip, buffer.get());
    // Its result isn't part of the answer: the archive was made.
    zipClose(zip, nullptr);
    return true;
}

} // namespace Halvorn
