// writePackage's algorithm: a project into a package file, through a tree beside the target.
#pragma once

#include "corvelle/package.h"
#include "package/packageerror.h"

namespace Halvorn {

// Writes the package's project to a package file at path (UTF-16, "/" or "\" separators; a bare
// name lies in the current folder). The documents and media are staged in a fresh folder
// "corvtmp" (or "corvtmp-01" and so on, when that name is taken) beside the target, packed into
// a temporary file there, and only a complete archive is renamed over the target: a failed
// write leaves an existing file at the target as it was. Nothing is ever deleted but that tree
// and that temporary file, which this call made itself.
//
// Fails for a null argument, a target folder that doesn't exist or can't take the tree, a
// document that can't be written whole, an archive that can't be made or put in place, and a
// tree that can't be removed; the message names the target and the system's cause. A media
// file that can't be read is no failure: the document leaves it out.
[[nodiscard]] PackageError writeProjectPackage(IMediaProjectPackage* package, const char16* path);

} // namespace Halvorn
