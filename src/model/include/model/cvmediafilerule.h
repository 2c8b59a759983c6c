// Which paths may stand for a medium read from outside a package or taken into one.
#pragma once

#include "foundation/fstring.h"
#include "model/cvfile.h"

namespace Halvorn {

// A package from a stranger must not make the system copy an arbitrary file of the user's (a
// key, a note) into a client's folder or a new package. A file outside a package is therefore
// taken only when its path is absolute, it is a regular file, no component of its path begins
// with "." (no hidden folder, no "." or ".."), and its extension is one of its type's media
// extensions, compared without regard to case. "\" counts as "/".
[[nodiscard]] bool isAcceptableOutsideMedium(CvFileType type, const String& path);

// A path inside a package: relative, and with no ".." component once "\" is read as "/".
[[nodiscard]] bool isPackageRelativePath(const String& path);

} // namespace Halvorn
