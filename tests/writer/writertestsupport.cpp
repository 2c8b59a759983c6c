// Helpers of the writer tests: scratch folders, files, expat checks and zip central directories.
#include "writertestsupport.h"

#include <expat.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace WriterTest {

ScratchFolder::ScratchFolder() {
    const char* tmp = std::getenv("TMPDIR");
    std::string pattern = std::string(tmp && *tmp ? tmp : "/tmp") + "/corvelle-writer-XXXXXX";
    if (mkdtemp(pattern.data()))
        path_ = pattern;
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    if (!path_.empty()) {
        // Folders a test made read-only must open again to be emptied.
        for (auto it = fs::recursive_directory_iterator(path_, ignored);
             it != fs::recursive_directory_iterator(); it.increment(ignored))
            if (it->is_directory(ignored) && !it->is_symlink(ignored))
                fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
        fs::remove_all(path_, ignored);
    }
}

void writeFile(const std::string& path, const std::string& bytes) {
    std::error_code ignored;
    fs::create_directories(fs::path(path).parent_path(), ignored);
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

bool exists(const std::string& path) {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(path, ignored));
}

std::vector<std::string> listTree(const std::string& root) {
    std::vector<std::string> names;
    std::error_code ignored;
    for (auto it = fs::recursive_directory_iterator(root, ignored);
         it != fs::recursive_directory_iterator(); it.increment(ignored)) {
        std::string name = fs::relative(it->path(), root, ignored).generic_string();
        if (it->is_directory(ignored))
            name += "/";
        names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::u16string utf16(const std::string& utf8) {
    std::u16string out;
    for (size_t i = 0; i < utf8.size();) {
        const unsigned char lead = static_cast<unsigned char>(utf8[i]);
        char32_t c = lead;
        int extra = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
        if (extra)
            c = lead & (0x3F >> extra);
        for (int k = 1; k <= extra && i + k < utf8.size(); ++k)
            c = (c << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
        i += 1 + extra;
        if (c >= 0x10000) {
            c -= 0x10000;
            out += static_cast<char16_t>(0xD800 + (c >> 10));
            out += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
        } else {
            out += static_cast<char16_t>(c);
        }
    }
    return out;
}

bool isWellFormed(const std::string& document, std::string* message) {
    XML_Parser parser = XML_ParserCreate("UTF-8");
    const bool ok =
        XML_Parse(parser, document.data(), static_cast<int>(document.size()), 1) == XML_STATUS_OK;
    if (!ok && message)
        *message = std::string(XML_ErrorString(XML_GetErrorCode(parser))) + " at line " +
                   std::to_string(XML_GetCurrentLineNumber(parser));
    XML_ParserFree(parser);
    return ok;
}

namespace {

uint16_t get16(const std::string& bytes, size_t at) {
    return static_cast<uint16_t>(static_cast<unsigned char>(bytes[at]) |
                                 static_cast<unsigned char>(bytes[at + 1]) << 8);
}

uint32_t get32(const std::string& bytes, size_t at) {
    return get16(bytes, at) | static_cast<uint32_t>(get16(bytes, at + 2)) << 16;
}

} // namespace

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
        entry.externalAttributes = get32(archive, at + 38);
        entry.name = archive.substr(at + 46, nameLength);
        entries.push_back(entry);
        at += 46 + nameLength + entry.extraLength + entry.commentLength;
    }
    return entries;
}

} // namespace WriterTest
