// corvelle repack: read a package and write it again, through the host-free door alone.
#include "repack.h"

#include "conventions.h"
#include "corvelle/package.h"
#include "mediaplacement.h"
#include "modelwalk.h"
#include "packagereading.h"

#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>

namespace CorvelleTool {

namespace {

using namespace Halvorn;

// A private folder for the media between read and write, removed with everything in it.
class MediaFolder {
public:
    MediaFolder() {
        const char* variable = std::getenv("TMPDIR");
        base_ = variable && variable[0] ? variable : "/tmp";
        std::string pattern = base_ + "/corvelle-repack-XXXXXX";
        if (mkdtemp(pattern.data()))
            path_ = pattern;
        else
            error_ = errno;
    }
    ~MediaFolder() {
        std::error_code ignored;
        if (!path_.empty())
            std::filesystem::remove_all(path_, ignored);
    }
    MediaFolder(const MediaFolder&) = delete;
    MediaFolder& operator=(const MediaFolder&) = delete;

    const std::string& path() const { return path_; }
    // Why there is no folder, in the library's words for the same failure.
    std::string failure() const {
        std::string text = std::strerror(error_);
        text[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(text[0])));
        return "cannot create a folder in the temporary folder " + base_ + ": " + text;
    }

private:
    std::string base_;
    std::string path_;
    int error_ = 0;
};

} // namespace

int repack(const std::string& in, const std::string& out) {
    MediaFolder media;
    if (media.path().empty()) {
        std::cerr << "corvelle: " << in << ": " << media.failure() << "\n";
        return kExitFailed;
    }
    std::vector<ReadCase> cases;
    const auto package = readPackage(in, media.path(), cases);
    IMediaProject* project = projectOf(package, in, cases);
    if (!project)
        return kExitFailed;
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
