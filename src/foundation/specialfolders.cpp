// The temporary and documents folders, from the environment.
#include "foundation/specialfolders.h"

#include "foundation/furl.h"

#include <sys/stat.h>

#include <cstdlib>

namespace Halvorn {
namespace {

const char8* nonEmptyVariable(const char8* name) {
    const char8* value = std::getenv(name);
    return value && *value ? value : nullptr;
}

// "/" form without a trailing "/", as FUrl keeps it.
String folderPath(const String& path) { return FUrl(path, true).getPath(); }

} // namespace

String getTemporaryFolderPath() {
    const char8* tmp = nonEmptyVariable("TMPDIR");
    return folderPath(tmp ? tmp : "/tmp");
}

String getDocumentsFolderPath() {
    if (const char8* documents = nonEmptyVariable("XDG_DOCUMENTS_DIR"))
        return folderPath(documents);
    const char8* home = nonEmptyVariable("HOME");
    if (!home)
        return String("/");
    String candidate = folderPath(home);
    if (!candidate.append("/Documents"))
        return folderPath(home);
    struct stat info;
    if (stat(candidate.text8(), &info) == 0 && S_ISDIR(info.st_mode))
        return candidate;
    return folderPath(home);
}

} // namespace Halvorn
