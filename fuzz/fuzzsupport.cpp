// Scratch folder and checks of the fuzz targets.
#include "fuzzsupport.h"

#include "support/scratchfolder.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>

namespace CorvelleFuzz {

const std::string& scratchFolder() {
    // Gone when the fuzzer ends normally (time or run limit); a crash leaves it for inspection.
    static const CorvelleSupport::ScratchFolder folder;
    static const bool temporaryInside = [] {
        const std::string temp = folder / "temp";
        return mkdir(temp.c_str(), 0700) == 0 && setenv("TMPDIR", temp.c_str(), 1) == 0;
    }();
    if (!temporaryInside)
        std::abort();
    return folder.path();
}

bool writeInput(const uint8_t* data, size_t size, const std::string& name) {
    std::FILE* file = std::fopen((scratchFolder() + "/" + name).c_str(), "wb");
    if (!file)
        return false;
    const bool written = std::fwrite(data, 1, size, file) == size;
    return std::fclose(file) == 0 && written;
}

size_t countEntries(const std::string& folder) {
    std::error_code ignored;
    const std::filesystem::directory_iterator entries(folder, ignored);
    return ignored ? 0 : size_t(std::distance(entries, std::filesystem::directory_iterator()));
}

void removeTree(const std::string& folder) {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored); // removes links, never follows them
}

} // namespace CorvelleFuzz
