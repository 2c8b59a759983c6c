// FUrl: path normalising, name parts, special folders and the free-name search.
#include "foundation/furl.h"

#include "foundation/ffilesystem.h"
#include "foundation/specialfolders.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

namespace Halvorn {
namespace {

// Joins part to path with one "/" between them; an empty part changes nothing.
void joinPath(String& path, const String& part) {
    if (part.isEmpty())
        return;
    if (!path.isEmpty() && path.getChar8(path.length() - 1) != '/')
        (void)path.append("/");
    (void)path.append(part);
}

bool nothingAt(const String& path) {
    struct stat info;
    return lstat(path.text8(), &info) != 0 && errno == ENOENT;
}

// A trailing "-" and at least two digits, as makeUnique writes them: where it starts, or end.
int32 numberSuffixStart(const char8* text, int32 from, int32 end) {
    int32 i = end;
    while (i > from && text[i - 1] >= '0' && text[i - 1] <= '9')
        --i;
    if (end - i >= 2 && i > from && text[i - 1] == '-')
        return i - 1;
    return end;
}

} // namespace

FUrl::FUrl(const String& path, bool isFolder) : isFolder_(isFolder) { setPath(path); }

FUrl::FUrl(const String& name, int32 specialFolder, bool isFolder, const String& subFolder,
           bool create)
    : isFolder_(isFolder) {
    String path;
    if (specialFolder == kTemporaryFolder)
        path = getTemporaryFolderPath();
    else if (specialFolder == kDocumentsFolder)
        path = getDocumentsFolderPath();
    else
        return;
    joinPath(path, subFolder);
    joinPath(path, name);
    setPath(path);
    if (create)
        (void)gFNFileSystem->createFolder(*this);
}

FUrl::FUrl(const FUrl& other) : FObject(), path_(other.path_), isFolder_(other.isFolder_) {}

FUrl& FUrl::operator=(const FUrl& other) {
    path_ = other.path_;
    isFolder_ = other.isFolder_;
    return *this;
}

void FUrl::setPath(const String& path) {
    String p(path);
    p.replace(String("\\"), String("/"));
    p.text8();
    int32 n = p.length();
    while (n > 1 && p.getChar8(n - 1) == '/')
        --n;
    path_.assign(p.text8(), n);
}

String FUrl::getName() const {
    const char8* text = path_.text8();
    const char8* slash = std::strrchr(text, '/');
    return String(slash ? slash + 1 : text);
}

int32 FUrl::extensionStart() const {
    const char8* text = path_.text8();
    int32 length = path_.length();
    if (isFolder_)
        return length;
    const char8* slash = std::strrchr(text, '/');
    const char8* name = slash ? slash + 1 : text;
    const char8* dot = std::strrchr(name, '.');
    if (!dot || dot == name || std::strchr(dot, ' '))
        return length;
    return int32(dot - text);
}

String FUrl::getNameWithoutExtension() const {
    const char8* text = path_.text8();
    const char8* slash = std::strrchr(text, '/');
    int32 nameStart = slash ? int32(slash - text) + 1 : 0;
    return String(text + nameStart, extensionStart() - nameStart);
}

String FUrl::getExtension() const {
    int32 dot = extensionStart();
    return dot < path_.length() ? String(path_.text8() + dot + 1) : String();
}

String FUrl::getFolderPath() const {
    const char8* text = path_.text8();
    const char8* slash = std::strrchr(text, '/');
    if (!slash)
        return String();
    return slash == text ? String("/") : String(text, int32(slash - text));
}

bool FUrl::makeUnique(const FreeNameTest& isFree) {
    auto isNameFree = [&isFree](const String& path) {
        return isFree ? isFree(path) : nothingAt(path);
    };
    if (!path_.isEmpty() && isNameFree(path_))
        return true;

    const char8* text = path_.text8();
    const char8* slash = std::strrchr(text, '/');
    int32 nameStart = slash ? int32(slash - text) + 1 : 0;
    int32 baseEnd = extensionStart();
    String prefix(text, numberSuffixStart(text, nameStart, baseEnd));
    String extension(text + baseEnd);
    bool formable = baseEnd > nameStart;
    String candidate;
    auto fail = [this] {
        path_.assign("");
        return false;
    };
    auto form = [&](uint32 number) {
        return formable && candidate.printf("%s-%02u%s", prefix.text8(), number, extension.text8());
    };

    // Double until a free number turns up, then bisect down to the lowest free one above a
    // taken one.
    uint32 taken = 0;
    uint32 number = 1;
    for (;;) {
        if (!form(number))
            return fail();
        if (isNameFree(candidate))
            break;
        taken = number;
        if (number > 0xFFFFFFFFu / 2)
            return fail();
        number *= 2;
    }
    while (number - taken > 1) {
        uint32 middle = taken + (number - taken) / 2;
        if (!form(middle))
            return fail();
        if (isNameFree(candidate))
            number = middle;
        else
            taken = middle;
    }
    if (!form(number))
        return fail();
    path_ = candidate;
    return true;
}

} // namespace Halvorn
