// Helpers every test suite shares: private scratch folders and plain file access.
#pragma once

#include "support/scratchfolder.h"

#include <string>
#include <vector>

namespace TestSupport {

using CorvelleSupport::ScratchFolder;

// Makes the parent folders too.
void writeFile(const std::string& path, const std::string& bytes);
// The whole file, or an empty string when it can't be read.
std::string readFile(const std::string& path);
bool exists(const std::string& path);
// Relative paths of every file and folder below root, sorted; folders end in "/".
std::vector<std::string> listTree(const std::string& root);

} // namespace TestSupport
