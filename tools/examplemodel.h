// The example project of "corvelle new": a small model of the tool's own behind IMedia faces.
#pragma once

#include "corvelle/package.h"
#include "corvelle/ptr.h"

#include <string>

namespace CorvelleTool {

// A package whose project is made of the tool's own objects, not the library's: the writer
// reaches any model through its IMedia interfaces alone. It holds a tempo and a signature, a
// notes track with its channel (volume, pan, mute) and a clip of eight notes, and a marker
// track. One reference, the caller's.
Halvorn::IPtr<Halvorn::IMediaProjectPackage> makeExamplePackage();

// corvelle new: writes the example to a package at out. kExitSuccess, or one line on stderr
// and kExitFailed.
int writeExamplePackage(const std::string& out);

} // namespace CorvelleTool
