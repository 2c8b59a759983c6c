// corvelle repack: read a package and write it again, through the host-free door alone.
#include "repack.h"

#include "corvelle/package.h"
#include "packagereading.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>

namespace CorvelleTool {

namespace {

using namespace Halvorn;

// A private folder for the media between read and write, removed with everything in it.
class MediaFolder {
public:
    MediaFolder() {
        std::error_code error;
        std::string pattern =
            (std::filesystem::temp_directory_path(error) / "corvelle-repack-XXXXXX").string();
        if (!error && mkdtemp(pattern.data()))
            path_ = pattern;
    }
    ~MediaFolder() {
        std::error_code ignored;
        if (!path_.empty())
            std::filesystem::remove_all(path_, ignored);
    }
    MediaFolder(const MediaFolder&) = delete;
    MediaFolder& operator=(const MediaFolder&) = delete;

    const std::string& path() const { return path_; }

private:
    std::string path_;
};

} // namespace

int repack(const std::string& in, const std::string& out) {
    MediaFolder media;
    if (media.path().empty()) {
        std::cerr << "corvelle: cannot make a temporary folder for the media\n";
        return 1;
    }
    std::vector<ReadCase> cases;
    const auto package = readPackage(in, media.path(), cases);
    for (const ReadCase& readCase : cases)
        std::cerr << "corvelle: " << describe(readCase) << "\n";
    if (!package || !package->getProject()) {
        std::cerr << "corvelle: cannot read package '" << in << "'\n";
        return 1;
    }
    // A medium that was there but didn't arrive would be missing from the new package.
    for (const ReadCase& readCase : cases)
        if (readCase.what == kReadCopyFailed)
            return 1;
    return writePackageFile(package.get(), out);
}

} // namespace CorvelleTool
