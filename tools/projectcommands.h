// corvelle info, dump and extract: the commands that read one package into a model.
#pragma once

#include <string>

namespace CorvelleTool {

// What the read refused or skipped is said on stderr, and the command then ends with
// kExitWarnings.

// A short summary: application, tempo, signature and what the project holds, as text or JSON.
int info(const std::string& path, bool json);

// The whole model tree, as an indented outline or JSON.
int dump(const std::string& path, bool json);

// Reads the package with its media sent to folder/Audio, /Video, /Preset and /Midi, lists the
// files placed, and warns of each one that could not be.
int extract(const std::string& path, const std::string& folder);

} // namespace CorvelleTool
