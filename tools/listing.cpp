// Listing a zip archive's central directory with minizip.
#include "listing.h"

#include "conventions.h"

#include <minizip/unzip.h>
#include <nlohmann/json.hpp>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <memory>
#include <vector>

namespace CorvelleTool {

namespace {

using Entry = ArchiveEntry;

struct ArchiveCloser {
    void operator()(void* archive) const { unzClose(archive); }
};
using Archive = std::unique_ptr<void, ArchiveCloser>;

std::string dateText(const tm_unz& date) {
    char text[32];
    std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u", date.tm_year, date.tm_mon + 1,
                  date.tm_mday, date.tm_hour, date.tm_min);
    return text;
}

// The entries in the archive's order; false when the directory can't be walked to its end.
bool readEntries(void* archive, std::vector<Entry>& entries) {
    int status = unzGoToFirstFile(archive);
    std::vector<char> name(65536); // a zip name's length field is 16 bits
    for (; status == UNZ_OK; status = unzGoToNextFile(archive)) {
        unz_file_info64 info{};
        if (unzGetCurrentFileInfo64(archive, &info, name.data(), name.size(), nullptr, 0, nullptr,
                                    0) != UNZ_OK)
            return false;
        entries.push_back({std::string(name.data(), info.size_filename), info.uncompressed_size,
                           info.compressed_size, dateText(info.tmu_date)});
    }
    return status == UNZ_END_OF_LIST_OF_FILE;
}

void printTable(const std::string& path, const std::vector<Entry>& entries) {
    uint64_t total = 0;
    std::printf("Archive:  %s\n  Length      Date    Time    Name\n"
                "---------  ---------- -----   ----\n",
                path.c_str());
    for (const Entry& entry : entries) {
        total += entry.size;
        std::printf("%9llu  %s   %s\n", static_cast<unsigned long long>(entry.size),
                    entry.modified.c_str(), entry.name.c_str());
    }
    std::printf("---------                     -------\n%9llu                     %zu file%s\n",
                static_cast<unsigned long long>(total), entries.size(),
                entries.size() == 1 ? "" : "s");
}

void printJson(const std::string& path, const std::vector<Entry>& entries) {
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const Entry& entry : entries)
        list.push_back({{"name", entry.name},
                        {"size", entry.size},
                        {"compressedSize", entry.compressedSize},
                        {"modified", entry.modified}});
    const nlohmann::ordered_json out = {
        {"format", kJsonFormat}, {"archive", path}, {"entries", list}};
    // Entry names are the archive's bytes, not always UTF-8.
    std::cout << out.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << "\n";
}

int fail(const std::string& path, const char* reason) {
    std::cerr << "corvelle: " << path << ": " << reason << "\n";
    return kExitFailed;
}

// Why path can't be opened as an archive, or null when it is a regular file. Only a regular
// file is opened: a FIFO would block the open forever.
const char* unopenable(const std::string& path) {
    std::error_code error;
    const auto type = std::filesystem::status(path, error).type();
    if (type == std::filesystem::file_type::not_found)
        return "no such file";
    if (type == std::filesystem::file_type::directory)
        return "is a directory";
    if (type != std::filesystem::file_type::regular)
        return "not a regular file";
    return nullptr;
}

} // namespace

bool readArchiveEntries(const std::string& path, std::vector<ArchiveEntry>& entries) {
    const Archive archive(unopenable(path) ? nullptr : unzOpen64(path.c_str()));
    return archive && readEntries(archive.get(), entries);
}

bool readArchiveEntry(const std::string& path, const std::string& name, uint64_t limit,
                      std::string& data) {
    const Archive archive(unopenable(path) ? nullptr : unzOpen64(path.c_str()));
    if (!archive || unzLocateFile(archive.get(), name.c_str(), 1) != UNZ_OK ||
        unzOpenCurrentFile(archive.get()) != UNZ_OK)
        return false;
    char block[1 << 16];
    int read = 0;
    while ((read = unzReadCurrentFile(archive.get(), block, sizeof block)) > 0 &&
           data.size() + size_t(read) <= limit)
        data.append(block, size_t(read));
    return unzCloseCurrentFile(archive.get()) == UNZ_OK && read == 0;
}

int listEntries(const std::string& path, bool json) {
    if (const char* reason = unopenable(path))
        return fail(path, reason);
    const Archive archive(unzOpen64(path.c_str()));
    if (!archive)
        return fail(path, "not a zip archive");
    std::vector<Entry> entries;
    if (!readEntries(archive.get(), entries))
        return fail(path, "damaged zip archive");
    if (json)
        printJson(path, entries);
    else
        printTable(path, entries);
    return kExitSuccess;
}

} // namespace CorvelleTool
