// Reading a package through the host-free door, with a client that names the media folders,
// and writing one.
#pragma once

#include "corvelle/package.h"
#include "corvelle/ptr.h"

#include <string>

namespace CorvelleTool {

// Reads the package file. With an empty mediaFolder no media are wanted, so nothing is copied
// anywhere; otherwise they go to mediaFolder/Audio, /Video, /Preset and /Midi. Null when the
// package can't be read.
Halvorn::IPtr<Halvorn::IMediaProjectPackage> readPackage(const std::string& path,
                                                         const std::string& mediaFolder);

// Writes the package file and says on stderr when it can't; kExitSuccess or kExitFailed.
int writePackageFile(Halvorn::IMediaProjectPackage* package, const std::string& path);

} // namespace CorvelleTool
