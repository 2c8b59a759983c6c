// corvelle check: a package validated the way a careful receiver would read it.
#pragma once

#include <string>

namespace CorvelleTool {

// Reads the package through the library with its media, then walks its archive and its
// document, and prints each finding (as text or JSON). kExitSuccess when clean, kExitWarnings
// when there are only warnings, kExitFailed when there is an error.
int check(const std::string& path, bool json);

} // namespace CorvelleTool
