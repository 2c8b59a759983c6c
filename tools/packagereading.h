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

// Says each case on stderr as a warning.
void reportCases(const std::vector<ReadCase>& cases);

// True when one of the cases lost a medium that was there: it could not be copied whole.
bool lostMedium(const std::vector<ReadCase>& cases);

// Writes the package file and says on stderr when it can't; kExitSuccess or kExitFailed.
int writePackageFile(Halvorn::IMediaProjectPackage* package, const std::string& path);

} // namespace CorvelleTool
