// Fuzz target: any bytes as a reference-host session, loaded, written back, and closed with the
// reference check; a session that loads must also load again from what it wrote.
#include "support/scratchfolder.h"
#include "workstation.h"

#include <sndfile.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <sys/stat.h>

namespace {

// A folder with the media the example session names, so that its seeds load whole; gone when
// the fuzzer ends normally.
const std::string& mediaFolder() {
    static const CorvelleSupport::ScratchFolder folder;
    static const std::string media = [] {
        const std::string path = folder / "media";
        mkdir(path.c_str(), 0700);
        SF_INFO format{};
        format.samplerate = 44100;
        format.channels = 1;
        format.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
        SNDFILE* wav = sf_open((path + "/loop.wav").c_str(), SFM_WRITE, &format);
        const short samples[64] = {};
        sf_writef_short(wav, samples, 64);
        sf_close(wav);
        if (FILE* film = std::fopen((path + "/clip.mp4").c_str(), "wb"))
            std::fclose(film);
        return folder.path();
    }();
    return media;
}

void closeCleanly(std::unique_ptr<Halvorn::RefHost::Workstation>& station) {
    if (!station->close().clean())
        std::abort(); // a leak or an over-release of the host's own objects
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace Halvorn::RefHost;
    const nlohmann::json session =
        nlohmann::json::parse(data, data + size, nullptr, /*allow_exceptions=*/false);
    if (session.is_discarded())
        return 0;
    std::string error;
    auto station = Workstation::fromJson(session, mediaFolder(), error);
    if (!station) {
        if (error.rfind("$", 0) != 0)
            std::abort(); // every refusal names its place
        return 0;
    }
    const nlohmann::json written = station->toJson();
    closeCleanly(station);
    auto again = Workstation::fromJson(written, mediaFolder(), error);
    if (!again)
        std::abort();
    closeCleanly(again);
    return 0;
}
