// Reading a package through the host-free door, with a client that names the media folders,
// and writing one.
#pragma once

#include "corvelle/package.h"
#include "corvelle/ptr.h"

#include <string>
#include <vector>

namespace CorvelleTool {

// One case the library reported during a read (a Halvorn::PackageReadCase and its subject).
struct ReadCase {
    Halvorn::int32 what;
    std::string subject;
};

// Reads the package file. With an empty mediaFolder no media are wanted, so only the document
// is unpacked and nothing is copied anywhere; otherwise they go to mediaFolder/Audio, /Video,
// /Preset and /Midi. Null when the package can't be read. The cases met are added to cases.
Halvorn::IPtr<Halvorn::IMediaProjectPackage>
readPackage(const std::string& path, const std::string& mediaFolder, std::vector<ReadCase>& cases);

// One line for a case, as the tools print it.
std::string describe(const ReadCase& readCase);

// Writes the package file and says on stderr when it can't; the tool's exit code, 0 or 2.
int writePackageFile(Halvorn::IMediaProjectPackage* package, const std::string& path);

} // namespace CorvelleTool
