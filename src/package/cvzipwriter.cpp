// CvZipWriter: a depth-first walk of the folder into minizip entries.
#include "package/cvzipwriter.h"

#include "corvelle/ptr.h"
#include "foundation/ffileiterator.h"
#include "foundation/ffilesystem.h"
#include "package/zipentryname.h"

#include <cerrno>
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

// minizip fails on the system's write, whose errno stands; a failure of its own sets none.
int writeFailure() { return errno != 0 ? errno : EIO; }

// Gives the error number of a failed write to the archive, 0 otherwise: a file that can't be
// read or named merely gets no entry.
int addFileToZip(const FUrl& file, const String& entryName, zipFile zip, char* buffer) {
    FStream* stream = gFNFileSystem->openStream(file, FStream::kRead);
    if (!stream)
        return 0;
    String name(entryName);
    name.toMultiByte(String::kCodePageUtf8);
    const uint32 length = static_cast<uint32>(std::strlen(name.text8()));
    if (length == 0 || length > kMaxEntryNameLength) {
        gFNFileSystem->closeStream(stream);
        return 0;
    }
    char8 utf8Name[kEntryNameBufferBytes] = {};
    std::memcpy(utf8Name, name.text8(), length);

    // An all-zero record: no real time, so equal contents give equal packages.
    zip_fileinfo info;
    std::memset(&info, 0, sizeof info);
    int failure = 0;
    if (zipOpenNewFileInZip4_64(zip, utf8Name, &info, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED,
                                kLevel, 0, kWindowBits, kMemoryLevel, Z_DEFAULT_STRATEGY, nullptr,
                                0, kVersionMadeBy, kFlagUtf8Name, 0) == ZIP_OK) {
        for (;;) {
            const int32 got = stream->read(buffer, kChunkBytes);
            if (got <= 0)
                break;
            if (zipWriteInFileInZip(zip, buffer, static_cast<unsigned>(got)) != ZIP_OK) {
                failure = writeFailure();
                break;
            }
        }
        if (zipCloseFileInZip(zip) != ZIP_OK && failure == 0)
            failure = writeFailure();
    }
    gFNFileSystem->closeStream(stream);
    return failure;
}

// Stops at the first failed write to the archive and gives its error number, else 0.
int addFolderToZip(const FUrl& folder, const String& prefix, zipFile zip, char* buffer) {
    FFileIterator items(folder);
    while (FUrl* raw = items.next()) {
        const IPtr<FUrl> item = IPtr<FUrl>::adopt(raw);
        const String name = joinEntryName(prefix, item->getName());
        if (item->isFolder()) {
            String subPrefix(name);
            subPrefix.append("/");
            if (const int failure = addFolderToZip(*item, subPrefix, zip, buffer))
                return failure;
        } else if (const int failure = addFileToZip(*item, name, zip, buffer)) {
            return failure;
        }
    }
    return 0;
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
    int failure = addFolderToZip(FUrl(folder, true), String(""), zip, buffer.get());
    if (zipClose(zip, nullptr) != ZIP_OK && failure == 0)
        failure = writeFailure();
    errno = failure;
    return failure == 0;
}

} // namespace Halvorn
