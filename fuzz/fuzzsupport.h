// What the fuzz targets share: a private scratch folder and the checks made after each input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace CorvelleFuzz {

// A folder of this process, made on first use and removed at a normal exit; $TMPDIR points
// into it, so that the system's temporary folder is watched too.
const std::string& scratchFolder();

// Writes the input to scratchFolder()/input; false when it can't be written.
bool writeInput(const uint8_t* data, size_t size, const std::string& name);

// Names directly in a folder, "." and ".." left out.
size_t countEntries(const std::string& folder);

// Empties and removes a folder below the scratch folder; links are removed, never followed.
void removeTree(const std::string& folder);

} // namespace CorvelleFuzz
