// Helpers every test suite shares: private scratch folders and plain file access.
#pragma once

#include "support/scratchfolder.h"

#include <optional>
#include <string>
#include <vector>

namespace TestSupport {

using CorvelleSupport::ScratchFolder;

// Sets an environment variable (or unsets it, given null) for one scope and puts the old value
// back.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const char* value);
    ~ScopedVariable();
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    const char* name_;
    std::optional<std::string> old_;
};

// Makes the parent folders too.
void writeFile(const std::string& path, const std::string& bytes);
// The whole file, or an empty string when it can't be read.
std::string readFile(const std::string& path);
bool exists(const std::string& path);
// Relative paths of every file and folder below root, sorted; folders end in "/".
std::vector<std::string> listTree(const std::string& root);
// Runs a shell command and gives back what it wrote to stdout; status is its exit code, or -1
// when it could not start or did not exit.
std::string runCommand(const std::string& command, int& status);

} // namespace TestSupport
