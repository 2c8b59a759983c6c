// ScratchFolder: a private folder below the system's temporary folder, removed with everything
// in it at the end. For tests and benches.
#pragma once

#include <string>

namespace CorvelleSupport {

class ScratchFolder {
public:
    // Throws std::runtime_error when no folder can be made.
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::string& path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

} // namespace CorvelleSupport
