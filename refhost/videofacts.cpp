// The length of a video file from its movie header (ISO base media: MP4, MOV), without a decoder.
#include "media.h"

#include <cmath>
#include <fstream>

namespace Halvorn {
namespace RefHost {

namespace {
constexpr float kVideoSampleRate = 48000.0f;
constexpr int kMaxDepth = 4;

uint64 bigEndian(const unsigned char* bytes, int count) {
    uint64 value = 0;
    for (int i = 0; i < count; ++i)
        value = value << 8 | bytes[i];
    return value;
}

// Walks the boxes between begin and end for "moov", then "mvhd" inside it; fills timescale and
// duration from the movie header.
bool findMovieHeader(std::ifstream& in, uint64 begin, uint64 end, int depth, uint64& timescale,
                     uint64& duration) {
    uint64 at = begin;
    while (depth < kMaxDepth && at + 8 <= end) {
        unsigned char head[16];
        in.seekg(std::streamoff(at));
        if (!in.read(reinterpret_cast<char*>(head), 8))
            return false;
        uint64 size = bigEndian(head, 4);
        uint64 body = at + 8;
        if (size == 1) {
            if (!in.read(reinterpret_cast<char*>(head + 8), 8))
                return false;
            size = bigEndian(head + 8, 8);
            body = at + 16;
        } else if (size == 0) {
            size = end - at;
        }
        if (size < body - at || size > end - at)
            return false;
        std::string type(reinterpret_cast<char*>(head + 4), 4);
        if (type == "moov")
            return findMovieHeader(in, body, at + size, depth + 1, timescale, duration);
        if (type == "mvhd") {
            // Version and flags, two times, the timescale and the duration: the times and the
            // duration are 32 bits wide in version 0 and 64 in version 1.
            unsigned char fields[32];
            if (!in.read(reinterpret_cast<char*>(fields), 1))
                return false;
            bool wide = fields[0] == 1;
            uint64 need = wide ? 32 : 20;
            if (size - (body - at) < need ||
                !in.read(reinterpret_cast<char*>(fields + 1), std::streamsize(need - 1)))
                return false;
            timescale = bigEndian(fields + (wide ? 20 : 12), 4);
            duration = bigEndian(fields + (wide ? 24 : 16), wide ? 8 : 4);
            return true;
        }
        at += size;
    }
    return false;
}
} // namespace

bool readVideoFacts(const std::string& path, int64& frames, float& sampleRate) {
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    if (!in || !fileExists(path))
        return false;
    auto length = uint64(in.tellg());
    uint64 timescale = 0, duration = 0;
    if (!findMovieHeader(in, 0, length, 0, timescale, duration) || timescale == 0 || duration == 0)
        return false;
    double seconds = double(duration) / double(timescale);
    double count = std::round(seconds * kVideoSampleRate);
    if (!(count >= 1.0 && count < 9.0e18))
        return false;
    frames = int64(count);
    sampleRate = kVideoSampleRate;
    return true;
}

} // namespace RefHost
} // namespace Halvorn
