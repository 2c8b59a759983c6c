// Helpers of the package tests: a zip builder without minizip.
#include "packagetestsupport.h"

#include "corvelle/utf8.h"
#include "package/cvzipreader.h"
#include "package/cvzipwriter.h"

#include <zlib.h>

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <random>
#include <utility>

namespace PackageTest {

namespace {

// Little-endian fields, each a value and its width in bytes.
void put(std::string& out, std::initializer_list<std::pair<uint64_t, int>> fields) {
    for (const auto& [value, width] : fields)
        for (int byte = 0; byte < width; ++byte)
            out += char((value >> (8 * byte)) & 0xFF);
}

// Raw deflate of the first size bytes of piece repeated, made piece by piece so that no buffer
// of that size is needed.
std::string deflateRepeated(const std::string& piece, uint64_t size, int level) {
    z_stream stream{};
    deflateInit2(&stream, level, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY);
    std::string out;
    char buffer[1 << 16];
    for (uint64_t left = size;;) {
        const uInt taken = uInt(std::min<uint64_t>(left, piece.size()));
        left -= taken;
        stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(piece.data()));
        stream.avail_in = taken;
        do {
            stream.next_out = reinterpret_cast<Bytef*>(buffer);
            stream.avail_out = sizeof buffer;
            deflate(&stream, left == 0 ? Z_FINISH : Z_NO_FLUSH);
            out.append(buffer, sizeof buffer - stream.avail_out);
        } while (stream.avail_out == 0);
        if (left == 0)
            break;
    }
    deflateEnd(&stream);
    return out;
}

constexpr uint32_t kMax32 = 0xFFFFFFFF;

} // namespace

std::string buildZip(const std::vector<RawEntry>& entries, ZipForm form) {
    const bool zip64 = form == ZipForm::kZip64Entries;
    const uint64_t needed = form == ZipForm::kClassic ? 20 : 45;
    std::string archive;
    std::string directory;
    std::vector<uint64_t> offsets;
    for (const RawEntry& entry : entries) {
        const std::string stored =
            !entry.compressed.empty() ? entry.compressed
            : entry.method == 8
                ? deflateRepeated(entry.data, entry.data.size(), Z_DEFAULT_COMPRESSION)
                : entry.data;
        const uint64_t size =
            entry.statedSize >= 0 ? uint64_t(entry.statedSize) : entry.data.size();
        const uint32_t crc = crc32(0, reinterpret_cast<const Bytef*>(entry.data.data()),
                                   static_cast<uInt>(entry.data.size()));
        const uint64_t offset =
            entry.sharesDataWith >= 0 ? offsets.at(size_t(entry.sharesDataWith)) : archive.size();
        offsets.push_back(offset);
        // The fields from the flags to the extra field's length, alike in both headers.
        auto putShared = [&](std::string& out, const std::string& extra) {
            put(out, {{entry.flags, 2},
                      {entry.method, 2},
                      {0, 2},
                      {0x0021, 2},
                      {crc, 4},
                      {zip64 ? kMax32 : stored.size(), 4},
                      {zip64 ? kMax32 : size, 4},
                      {entry.name.size(), 2},
                      {extra.size(), 2}});
        };
        std::string localExtra;
        std::string centralExtra;
        if (zip64) {
            put(localExtra, {{1, 2}, {16, 2}, {size, 8}, {stored.size(), 8}});
            put(centralExtra, {{1, 2}, {24, 2}, {size, 8}, {stored.size(), 8}, {offset, 8}});
        }
        // An entry that shares another's data has a directory record and nothing else.
        if (entry.sharesDataWith < 0) {
            put(archive, {{0x04034b50, 4}, {needed, 2}});
            putShared(archive, localExtra);
            archive += entry.name + localExtra + stored;
        }
        put(directory, {{0x02014b50, 4}, {needed, 2}, {needed, 2}});
        putShared(directory, centralExtra);
        // Comment length, disk, internal and external attributes, the local header's offset.
        put(directory, {{0, 2}, {0, 2}, {0, 2}, {0, 4}, {zip64 ? kMax32 : offset, 4}});
        directory += entry.name + centralExtra;
    }
    const uint64_t directoryOffset = archive.size();
    archive += directory;
    const bool records64 = form != ZipForm::kClassic;
    if (records64) {
        // The Zip64 end record and its locator.
        const uint64_t recordOffset = archive.size();
        put(archive, {{0x06064b50, 4},
                      {44, 8},
                      {45, 2},
                      {45, 2},
                      {0, 4},
                      {0, 4},
                      {entries.size(), 8},
                      {entries.size(), 8},
                      {directory.size(), 8},
                      {directoryOffset, 8}});
        put(archive, {{0x07064b50, 4}, {0, 4}, {recordOffset, 8}, {1, 4}});
    }
    const uint64_t count = records64 ? 0xFFFF : entries.size();
    put(archive, {{0x06054b50, 4},
                  {0, 2},
                  {0, 2},
                  {count, 2},
                  {count, 2},
                  {records64 ? kMax32 : directory.size(), 4},
                  {records64 ? kMax32 : directoryOffset, 4},
                  {0, 2}});
    return archive;
}

std::string writePackage(const ScratchFolder& scratch, const std::string& name,
                         const std::vector<RawEntry>& entries) {
    const std::string path = scratch / name;
    writeFile(path, buildZip(entries));
    return path;
}

std::string deflatedZeros(uint64_t size) {
    return deflateRepeated(std::string(1 << 20, '\0'), size, Z_BEST_COMPRESSION);
}

std::string noise(size_t size) {
    std::independent_bits_engine<std::mt19937, 8, unsigned> random(11);
    std::string bytes(size, '\0');
    std::generate(bytes.begin(), bytes.end(), std::ref(random));
    return bytes;
}

std::string audioClip(const std::string& path, bool external) {
    return "<Clip time=\"0\" duration=\"1\"><Audio sampleRate=\"44100\" channels=\"1\" "
           "duration=\"1\"><File path=\"" +
           path + "\" external=\"" + (external ? "true" : "false") + "\"/></Audio></Clip>";
}

std::string documentWith(const std::string& clips) {
    return "<Project version=\"1.0\"><Application name=\"A\" version=\"1\"/>"
           "<Structure><Track contentType=\"audio\" id=\"t1\" name=\"T\"/></Structure>"
           "<Arrangement><Lanes timeUnit=\"seconds\"><Lanes track=\"t1\"><Clips>" +
           clips + "</Clips></Lanes></Lanes></Arrangement></Project>";
}

ReportingClient::ReportingClient(const std::string& base) {
    if (base.empty())
        return;
    const char* names[5] = {nullptr, "Preset", "Audio", "Midi", "Video"};
    for (int type = 1; type <= 4; ++type)
        folders_[type] = Halvorn::toUtf16(base + "/" + names[type]);
}

const Halvorn::char16* ReportingClient::getPathForFileType(Halvorn::int32 type) {
    return type >= 1 && type <= 4 && !folders_[type].empty() ? folders_[type].c_str() : nullptr;
}

Halvorn::tresult ReportingClient::report(Halvorn::int32 what, const Halvorn::char16* subject) {
    reports_.emplace_back(what, Halvorn::toUtf8(subject));
    return Halvorn::kResultOk;
}

std::vector<std::string> ReportingClient::subjects(Halvorn::int32 what) const {
    std::vector<std::string> found;
    for (const auto& [kind, subject] : reports_)
        if (kind == what)
            found.push_back(subject);
    return found;
}

Halvorn::IPtr<Halvorn::IMediaProjectPackage> readWith(const std::string& package,
                                                      ReportingClient& client) {
    using namespace Halvorn;
    const auto manager = IPtr<IMediaPackageManager>::adopt(CreatePackageManager());
    return IPtr<IMediaProjectPackage>::adopt(
        manager->readPackage(toUtf16(package).c_str(), &client));
}

bool zip(const std::string& folder, const std::string& archive) {
    return Halvorn::CvZipWriter().zipFolder(Halvorn::String(folder.c_str()),
                                            Halvorn::String(archive.c_str()));
}

bool unzip(const std::string& archive, const std::string& folder) {
    return Halvorn::CvZipReader().unzipToFolder(Halvorn::String(archive.c_str()),
                                                Halvorn::String(folder.c_str()));
}

} // namespace PackageTest
