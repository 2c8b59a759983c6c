// corvelle repack: read a package and write it again, through the host-free door alone.
#pragma once

#include <string>

namespace CorvelleTool {

// Reads the package at in, with its media in a temporary folder of its own, and writes the
// project to a package at out. kExitSuccess; kExitWarnings, after the write, when a media file
// could not be placed or a path or entry was refused, each said on stderr; otherwise a line on
// stderr and kExitFailed, also when a medium that was there could not be copied whole, as the
// new package would lack it. An existing file at out is replaced only by a whole package.
int repack(const std::string& in, const std::string& out);

} // namespace CorvelleTool
