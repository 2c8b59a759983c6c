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

// The project of a package read, after the warnings of what the read refused or skipped; or
// null after the one error line with the library's reason, which says all that matters then.
Halvorn::IMediaProject* projectOf(const Halvorn::IPtr<Halvorn::IMediaProjectPackage>& package,
                                  const std::string& path, const std::vector<ReadCase>& warnings);

// Why the last read or write on this thread failed, as the library tells it, with its place.
std::string lastFailure();

// One line for a case that leaves the read standing, as the tools print it.
std::string describe(const ReadCase& readCase);

// True when one of the cases lost a medium that was there: it could not be copied whole.
bool lostMedium(const std::vector<ReadCase>& cases);

// Writes the package file and says on stderr why when it can't; kExitSuccess or kExitFailed.
int writePackageFile(Halvorn::IMediaProjectPackage* package, const std::string& path);

} // namespace CorvelleTool
