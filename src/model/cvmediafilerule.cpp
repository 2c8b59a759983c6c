// The media path rules: extensions per file type and the checks on a path's form.
#include "model/cvmediafilerule.h"

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <string>
#include <sys/stat.h>

namespace Halvorn {
namespace {

using Extensions = std::initializer_list<const char8*>;

const Extensions kAudio = {"wav", "wave", "bwf", "rf64", "w64",  "aif", "aiff", "aifc",
                           "caf", "flac", "ogg", "oga",  "opus", "mp3", "m4a"};
const Extensions kVideo = {"mp4", "m4v", "mov", "avi", "mkv", "webm", "mxf"};
const Extensions kPreset = {"quorpreset"};
const Extensions kMidi = {"mid", "midi"};

const Extensions* extensionsOf(CvFileType type) {
    switch (type) {
    case kCvFileAudio:
        return &kAudio;
    case kCvFileVideo:
        return &kVideo;
    case kCvFilePreset:
        return &kPreset;
    case kCvFileMidi:
        return &kMidi;
    }
    return nullptr;
}

std::string slashed(const String& path) {
    std::string text(path.isEmpty() ? "" : path.text8());
    std::replace(text.begin(), text.end(), '\\', '/');
    return text;
}

// Calls visit with each component between separators; stops at the first it refuses.
template <class Visit> bool allComponents(const std::string& path, Visit visit) {
    size_t start = 0;
    while (start <= path.size()) {
        size_t slash = path.find('/', start);
        if (slash == std::string::npos)
            slash = path.size();
        if (!visit(path.substr(start, slash - start)))
            return false;
        start = slash + 1;
    }
    return true;
}

bool hasExtensionOf(CvFileType type, const std::string& path) {
    const Extensions* extensions = extensionsOf(type);
    const size_t dot = path.rfind('.');
    if (!extensions || dot == std::string::npos || path.find('/', dot) != std::string::npos)
        return false;
    std::string extension = path.substr(dot + 1);
    for (char8& c : extension)
        c = static_cast<char8>(std::tolower(static_cast<unsigned char>(c)));
    return std::any_of(extensions->begin(), extensions->end(),
                       [&extension](const char8* known) { return extension == known; });
}

} // namespace

bool isAcceptableOutsideMedium(CvFileType type, const String& path) {
    const std::string text = slashed(path);
    if (text.empty() || text[0] != '/' || !hasExtensionOf(type, text))
        return false;
    // The leading "/" gives one empty component; any other empty one is harmless.
    const bool visible = allComponents(
        text.substr(1), [](const std::string& part) { return part.empty() || part[0] != '.'; });
    struct stat status;
    return visible && stat(text.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool isPackageRelativePath(const String& path) {
    const std::string text = slashed(path);
    return !text.empty() && text[0] != '/' &&
           allComponents(text, [](const std::string& part) { return part != ".."; });
}

} // namespace Halvorn
