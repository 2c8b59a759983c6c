// Scratch folder and checks of the fuzz targets.
#include "fuzzsupport.h"

#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <ftw.h>
#include <sys/stat.h>
#include <unistd.h>

namespace CorvelleFuzz {

namespace {

std::string makeScratchFolder() {
    const char* base = std::getenv("TMPDIR");
    std::string pattern = std::string(base && *base ? base : "/tmp") + "/corvelle-fuzz-XXXXXX";
    if (!mkdtemp(pattern.data()))
        std::abort();
    const std::string temp = pattern + "/temp";
    if (mkdir(temp.c_str(), 0700) != 0)
        std::abort();
    setenv("TMPDIR", temp.c_str(), 1);
    return pattern;
}

// Gone when the fuzzer ends normally (time or run limit); a crash leaves it for inspection.
void removeScratchFolder() { removeTree(scratchFolder()); }

} // namespace

const std::string& scratchFolder() {
    static const std::string folder = makeScratchFolder();
    // Registered after the folder's own destructor, so it runs before that.
    static const bool removedAtExit = std::atexit(removeScratchFolder) == 0;
    (void)removedAtExit;
    return folder;
}

bool writeInput(const uint8_t* data, size_t size, const std::string& name) {
    std::FILE* file = std::fopen((scratchFolder() + "/" + name).c_str(), "wb");
    if (!file)
        return false;
    const bool written = std::fwrite(data, 1, size, file) == size;
    return std::fclose(file) == 0 && written;
}

size_t countEntries(const std::string& folder) {
    DIR* dir = opendir(folder.c_str());
    if (!dir)
        return 0;
    size_t count = 0;
    while (const dirent* entry = readdir(dir)) {
        const std::string name = entry->d_name;
        count += name != "." && name != ".." ? 1 : 0;
    }
    closedir(dir);
    return count;
}

void removeTree(const std::string& folder) {
    nftw(
        folder.c_str(),
        [](const char* path, const struct stat*, int, struct FTW*) { return std::remove(path); },
        16, FTW_DEPTH | FTW_PHYS);
}

} // namespace CorvelleFuzz
