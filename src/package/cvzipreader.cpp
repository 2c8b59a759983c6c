// CvZipReader: walks the archive's directory with minizip and extracts each acceptable entry.
#include "package/cvzipreader.h"

#include "foundation/ffilesystem.h"
#include "package/confinedfolder.h"
#include "package/readreport.h"
#include "package/zipentryname.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <map>
#include <sys/stat.h>
#include <unistd.h>
#include <unzip.h>

namespace Halvorn {
namespace {

constexpr uint32 kChunkBytes = 4096;
constexpr uLong kMethodStored = 0;
constexpr uLong kMethodDeflated = 8;
constexpr uLong kFlagEncrypted = 1;
constexpr const char8* kDocumentName = "project.xml";

// What one run over an archive carries from entry to entry.
struct Extraction {
    const ConfinedFolder& target;
    const CvZipReader::Options& options;
    const String& folder;
    uint64 budget;                   // bytes that may still be written
    std::map<uint64, uint64> ranges; // archive data already extracted: start to end
    PackageError error;
    bool failed = false;
    bool documentFound = false;

    // errorNumber is the write's; 0 for the inflation bound.
    void fail(PackageReadCase cause, const char8* entry, int errorNumber) {
        failed = true;
        tellReport(options.report, cause, String(entry));
        String lead;
        if (errorNumber == 0) {
            lead.printf("extraction stopped at %s: it would inflate beyond the bound for the "
                        "package's size",
                        entry);
            error = packageError(kPackageExtractionFailed, lead);
            return;
        }
        String where(folder);
        lead.printf("cannot extract %s into %s", entry, where.text8());
        error = packageError(kPackageExtractionFailed, lead, errorNumber);
    }
    // Claims the data range of the entry just opened; false when it overlaps one claimed before.
    bool claimRange(uint64 start, uint64 size) {
        if (size == 0)
            return true;
        const uint64 end = start + size;
        auto next = ranges.lower_bound(start);
        if (next != ranges.end() && next->first < end)
            return false;
        if (next != ranges.begin() && std::prev(next)->second > start)
            return false;
        ranges.emplace(start, end);
        return true;
    }
};

// Copies the current entry's data into the file, never more than the directory states. Stops
// the extraction when a write fails or the budget is spent; a damaged entry keeps what was read.
void copyCurrentEntry(unzFile zip, int file, uint64 statedSize, Extraction& run,
                      const char8* entry) {
    char buffer[kChunkBytes];
    uint64 remaining = statedSize;
    while (remaining > 0) {
        const int got = unzReadCurrentFile(zip, buffer, kChunkBytes);
        if (got <= 0)
            return;
        const uint32 keep = static_cast<uint64>(got) < remaining ? static_cast<uint32>(got)
                                                                 : static_cast<uint32>(remaining);
        if (keep > run.budget)
            return run.fail(kReadInflationLimit, entry, 0);
        if (!writeAll(file, buffer, keep))
            return run.fail(kReadExtractionFailed, entry, errno);
        run.budget -= keep;
        remaining -= keep;
    }
}

// Only what this reader can decode truly arrives; anything else would be raw compressed bytes.
bool isDecodable(const unz_file_info64& info) {
    return (info.compression_method == kMethodStored ||
            info.compression_method == kMethodDeflated) &&
           (info.flag & kFlagEncrypted) == 0;
}

void extractOpenEntry(unzFile zip, const unz_file_info64& info, const ZipEntryName& name,
                      Extraction& run) {
    if (!run.claimRange(unzGetCurrentFileZStreamPos64(zip), info.compressed_size))
        return tellReport(run.options.report, kReadOverlappingEntry, String(name.text));
    const int file = run.target.createFile(name.text);
    if (file < 0)
        return;
    copyCurrentEntry(zip, file, info.uncompressed_size, run, name.text);
    if (close(file) != 0 && !run.failed)
        run.fail(kReadExtractionFailed, name.text, errno);
    run.documentFound = run.documentFound || std::strcmp(name.text, kDocumentName) == 0;
}

// Gives false when the directory record can't be read or the extraction failed, which ends
// the walk.
[[nodiscard]] bool extractCurrentEntry(unzFile zip, Extraction& run) {
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
    if (run.options.documentOnly && (name.isFolder || std::strcmp(name.text, kDocumentName) != 0))
        return true;
    if (name.isFolder) {
        (void)run.target.createFolder(name.text);
        return true;
    }
    if (!isDecodable(info)) {
        tellReport(run.options.report, kReadSkippedEntry, String(name.text));
        return true;
    }
    if (unzOpenCurrentFile(zip) != UNZ_OK)
        return true;
    extractOpenEntry(zip, info, name, run);
    // Its result carries the CRC check; a damaged entry keeps what was read of it.
    (void)unzCloseCurrentFile(zip);
    return !run.failed;
}

uint64 inflationBudget(const char8* archivePath) {
    struct stat status;
    const uint64 size = stat(archivePath, &status) == 0 ? static_cast<uint64>(status.st_size) : 0;
    return size * CvZipReader::kInflationFactor + CvZipReader::kInflationAllowance;
}

// Only a regular file is handed to minizip: a FIFO would block it, a folder fails obscurely.
// The file is opened without blocking and looked at through that descriptor.
PackageError checkArchiveFile(const String& path) {
    String native(path);
    const int file = open(native.text8(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file < 0)
        return errno == ENOENT ? packageError(kPackageNotFound, String("no such file"))
                               : packageError(kPackageUnreadable, String("cannot open"), errno);
    struct stat status;
    const int statError = fstat(file, &status) == 0 ? 0 : errno;
    close(file);
    if (statError != 0)
        return packageError(kPackageUnreadable, String("cannot open"), statError);
    if (S_ISDIR(status.st_mode))
        return packageError(kPackageNotRegularFile, String("is a directory"));
    if (!S_ISREG(status.st_mode))
        return packageError(kPackageNotRegularFile, String("not a regular file"));
    if (status.st_size == 0)
        return packageError(kPackageNotZip, String("empty file"));
    return {};
}

// Why minizip refused the archive: one that begins with an entry's header but has no readable
// end record was cut short.
PackageError unopenableArchive(const String& path) {
    FStream* file = gFNFileSystem->openStream(FUrl(path, false), FStream::kRead);
    unsigned char header[4] = {};
    const bool whole = file && file->read(header, sizeof header) == sizeof header;
    gFNFileSystem->closeStream(file);
    const unsigned char entrySignature[4] = {'P', 'K', 3, 4};
    if (whole && std::memcmp(header, entrySignature, 4) == 0)
        return packageError(kPackageTruncated, String("truncated archive"));
    return packageError(kPackageNotZip, String("not a zip archive"));
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

PackageError CvZipReader::extract(const String& zipPath, const String& folder,
                                  const Options& options) const {
    String archive(zipPath);
    PackageError error = checkArchiveFile(archive);
    if (!error.ok())
        return error;
    const PackageError noDocument =
        packageError(kPackageNoDocument, String("no project.xml in the archive"));
    unzFile zip = unzOpen64(archive.text8());
    if (!zip) {
        if (!isEmptyArchive(archive))
            return unopenableArchive(archive);
        return options.requireDocument ? noDocument : PackageError();
    }
    String root(folder);
    const ConfinedFolder target(root.text8());
    Extraction run{target, options, folder, inflationBudget(archive.text8()), {}, {}};
    if (!target.isOpen()) {
        String lead("cannot open ");
        lead.append(folder);
        error = packageError(kPackageExtractionFailed, lead, errno);
    }
    bool more = target.isOpen() && unzGoToFirstFile(zip) == UNZ_OK;
    while (more)
        more = extractCurrentEntry(zip, run) && unzGoToNextFile(zip) == UNZ_OK;
    unzClose(zip);
    if (run.failed)
        return run.error;
    if (error.ok() && options.requireDocument && !run.documentFound)
        return noDocument;
    return error;
}

} // namespace Halvorn
