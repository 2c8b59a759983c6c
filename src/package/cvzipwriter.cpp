// CvZipWriter: a depth-first walk of the folder into minizip entries.
#include "package/cvzipwriter.h"

#include "corvelle/ptr.h"
#include "foundation/ffileiterator.h"
#include "foundation/ffilesystem.h"
#include "package/deflateahead.h"
#include "package/zipentryname.h"

#include <cerrno>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>
#include <zip.h>

namespace Halvorn {
namespace {

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

// The files below folder in the walk's order, those whose names can be entries, with their
// UTF-8 entry names.
void collectFiles(const FUrl& folder, const String& prefix, std::vector<IPtr<FUrl>>& files,
                  std::vector<std::string>& names) {
    FFileIterator items(folder);
    while (FUrl* raw = items.next()) {
        IPtr<FUrl> item = IPtr<FUrl>::adopt(raw);
        const String name = joinEntryName(prefix, item->getName());
        if (item->isFolder()) {
            String subPrefix(name);
            subPrefix.append("/");
            collectFiles(*item, subPrefix, files, names);
            continue;
        }
        String utf8(name);
        utf8.toMultiByte(String::kCodePageUtf8);
        const size_t length = std::strlen(utf8.text8());
        if (length == 0 || length > kMaxEntryNameLength)
            continue;
        files.push_back(item);
        names.emplace_back(utf8.text8(), length);
    }
}

// Opens an entry for minizip to deflate, or, raw, for bytes deflated already, with the text bit
// their deflating found. The record is all zero otherwise: no real time, so equal contents give
// equal packages.
bool openEntry(zipFile zip, const std::string& name, bool raw, bool text) {
    zip_fileinfo info;
    std::memset(&info, 0, sizeof info);
    info.internal_fa = text ? 1 : 0;
    return zipOpenNewFileInZip4_64(zip, name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr,
                                   Z_DEFLATED, kEntryLevel, raw ? 1 : 0, kEntryWindowBits,
                                   kEntryMemoryLevel, kEntryStrategy, nullptr, 0, kVersionMadeBy,
                                   kFlagUtf8Name, 0) == ZIP_OK;
}

// Each gives the error number of a failed write to the archive, 0 otherwise: a file that can't
// be read merely gets no entry.
int streamEntry(zipFile zip, const FUrl& file, const std::string& name, char* buffer) {
    FStream* stream = gFNFileSystem->openStream(file, FStream::kRead);
    if (!stream)
        return 0;
    int failure = 0;
    if (openEntry(zip, name, false, false)) {
        for (;;) {
            const int32 got = stream->read(buffer, kFileChunkBytes);
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

int writeDeflatedEntry(zipFile zip, const DeflatedFile& deflated, const std::string& name) {
    if (!openEntry(zip, name, true, deflated.text))
        return 0;
    int failure = 0;
    if (zipWriteInFileInZip(zip, deflated.bytes.get(), static_cast<unsigned>(deflated.length)) !=
        ZIP_OK)
        failure = writeFailure();
    if (zipCloseFileInZipRaw64(zip, deflated.size, deflated.crc) != ZIP_OK && failure == 0)
        failure = writeFailure();
    return failure;
}

// Stops at the first failed write to the archive and gives its error number, else 0.
int writeEntries(zipFile zip, const std::vector<IPtr<FUrl>>& files,
                 const std::vector<std::string>& names, char* buffer) {
    DeflateAhead ahead(files);
    for (size_t i = 0; i < files.size(); ++i) {
        const DeflatedFile* deflated = ahead.take(i);
        const int failure = deflated ? writeDeflatedEntry(zip, *deflated, names[i])
                                     : streamEntry(zip, *files[i], names[i], buffer);
        ahead.release(i);
        if (failure)
            return failure;
    }
    return 0;
}

} // namespace

bool CvZipWriter::zipFolder(const String& folder, const String& zipPath) const {
    std::unique_ptr<char[]> buffer(new (std::nothrow) char[kFileChunkBytes]);
    if (!buffer)
        return false;
    String archive(zipPath);
    zipFile zip = zipOpen64(archive.text8(), APPEND_STATUS_CREATE);
    if (!zip)
        return false;
    int failure = 0;
    try {
        std::vector<IPtr<FUrl>> files;
        std::vector<std::string> names;
        collectFiles(FUrl(folder, true), String(""), files, names);
        failure = writeEntries(zip, files, names, buffer.get());
    } catch (const std::bad_alloc&) {
        failure = ENOMEM; // the archive is still closed, and the caller removes it
    }
    if (zipClose(zip, nullptr) != ZIP_OK && failure == 0)
        failure = writeFailure();
    errno = failure;
    return failure == 0;
}

} // namespace Halvorn
