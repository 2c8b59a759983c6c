// Writes the sample project's audio: one second of a 440 Hz sine, 16-bit mono PCM at 44.1 kHz.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace {

void put16(std::vector<unsigned char>& out, uint32_t value) {
    out.push_back(value & 0xFF);
    out.push_back((value >> 8) & 0xFF);
}

void put32(std::vector<unsigned char>& out, uint32_t value) {
    put16(out, value & 0xFFFF);
    put16(out, value >> 16);
}

void putText(std::vector<unsigned char>& out, const char* text) {
    for (; *text; ++text)
        out.push_back(static_cast<unsigned char>(*text));
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: maketone OUT.wav\n");
        return 1;
    }
    constexpr uint32_t kRate = 44100;
    constexpr uint32_t kFrames = kRate;
    constexpr double kPi = 3.14159265358979323846;
    std::vector<unsigned char> wav;
    putText(wav, "RIFF");
    put32(wav, 36 + kFrames * 2);
    putText(wav, "WAVEfmt ");
    put32(wav, 16);
    put16(wav, 1); // PCM
    put16(wav, 1); // mono
    put32(wav, kRate);
    put32(wav, kRate * 2);
    put16(wav, 2);
    put16(wav, 16);
    putText(wav, "data");
    put32(wav, kFrames * 2);
    for (uint32_t i = 0; i < kFrames; ++i) {
        const double sample = 0.5 * std::sin(2.0 * kPi * 440.0 * i / kRate);
        put16(wav, static_cast<uint16_t>(static_cast<int16_t>(std::lround(sample * 32767.0))));
    }
    std::FILE* file = std::fopen(argv[1], "wb");
    const bool written = file && std::fwrite(wav.data(), 1, wav.size(), file) == wav.size();
    if (file && std::fclose(file) != 0)
        return 1;
    if (!written) {
        std::fprintf(stderr, "maketone: cannot write %s\n", argv[1]);
        return 1;
    }
    return 0;
}
