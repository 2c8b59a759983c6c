// corvelle repack: read a package and write it again, through the host-free door alone.
#pragma once

#include <string>

namespace CorvelleTool {

// Reads the package at in, with its media in a temporary folder of its own, and writes the
// project to a package at out. kExitSuccess; kExitWarnings, after the write, when a media file
// could not be carried over; otherwise one line on stderr and kExitFailed. An existing file at
// out is replaced only by a whole package.
int repack(const std::string& in, const std::string& out);

} // namespace CorvelleTool
