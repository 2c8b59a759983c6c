// corvelle_makemovie FILE SECONDS: writes a video file that holds only what tells its length, an
// MP4 "ftyp" and a "moov" with its movie header, for hosts that read the length and decode
// nothing.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {
std::string number(std::uint32_t value) {
    return {char(value >> 24), char(value >> 16), char(value >> 8), char(value)};
}

std::string box(const std::string& type, const std::string& body) {
    return number(std::uint32_t(body.size() + 8)) + type + body;
}
} // namespace

int main(int argc, char** argv) {
    if (argc != 3 || std::atof(argv[2]) <= 0.0) {
        std::fprintf(stderr, "usage: corvelle_makemovie FILE SECONDS\n");
        return 1;
    }
    constexpr std::uint32_t kTimescale = 1000;
    auto duration = std::uint32_t(std::atof(argv[2]) * kTimescale);
    // Version and flags, creation and change times, timescale, duration, then the header's rest.
    std::string header = number(0) + number(0) + number(0) + number(kTimescale) +
                         number(duration) + std::string(80, '\0');
    std::ofstream out(argv[1], std::ios::binary);
    out << box("ftyp", "isom" + number(0)) << box("moov", box("mvhd", header));
    if (!out) {
        std::fprintf(stderr, "corvelle_makemovie: %s: can't write\n", argv[1]);
        return 1;
    }
    return 0;
}
