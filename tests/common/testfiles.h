// Helpers every test suite shares: private scratch folders and plain file access.
#pragma once

#include <string>
#include <vector>

namespace TestSupport {

// A fresh folder below the system's temporary folder, removed with everything in it at the end.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::string& path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

// Makes the parent folders too.
void writeFile(const std::string& path, const std::string& bytes);
// The whole file, or an empty string when it can't be read.
std::string readFile(const std::string& path);
bool exists(const std::string& path);
// Relative paths of every file and folder below root, sorted; folders end in "/".
std::vector<std::string> listTree(const std::string& root);

} // namespace TestSupport
