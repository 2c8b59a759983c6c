// corvelle repack: read a package and write it again, through the host-free door alone.
#include "repack.h"

#include "conventions.h"
#include "corvelle/package.h"
#include "mediaplacement.h"
#include "modelwalk.h"
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
        return kExitFailed;
    }
    std::vector<ReadCase> cases;
    const auto package = readPackage(in, media.path(), cases);
    reportCases(cases);
    IMediaProject* project = package ? package->getProject() : nullptr;
    if (!project) {
        std::cerr << "corvelle: cannot read package '" << in << "'\n";
        return kExitFailed;
    }
    // A medium that was there but didn't arrive would be missing from the new package.
    if (lostMedium(cases))
        return kExitFailed;
    // A medium the read could not place keeps the document's path, which the write can't find.
    const auto unplaced = unplacedMedia(walkProject(*project, false).summary.mediaFiles, media.path());
    const int written = writePackageFile(package.get(), out);
    if (written != kExitSuccess)
        return written;
    return warnUnplaced(unplaced, in) == kExitSuccess && cases.empty() ? kExitSuccess
                                                                       : kExitWarnings;
}

} // namespace CorvelleTool
