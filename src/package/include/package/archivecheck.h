// Checks that an archive made from a folder holds every file of that folder, whole.
#pragma once

#include "foundation/fstring.h"

namespace Halvorn {

// The zip layer swallows a failure of a single file, and a write that fails near the end can
// leave an archive without its central directory; either would become a package that silently
// lacks data. So the package writer reads the archive's end record and central directory back
// and compares them with the folder: one entry for each regular file, named by its path below
// the folder, with the file's size. Sizes past the 32-bit fields (Zip64) are taken as they
// stand. True when everything matches.
[[nodiscard]] bool archiveHoldsFolder(const String& archivePath, const String& folder);

} // namespace Halvorn
