// ScratchFolder: made with mkdtemp, emptied without following links.
#include "support/scratchfolder.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace fs = std::filesystem;

namespace CorvelleSupport {

ScratchFolder::ScratchFolder() {
    // Taken once, before a test points $TMPDIR elsewhere.
    static const fs::path base = fs::temp_directory_path();
    std::string pattern = (base / "corvelle-scratch-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error("no scratch folder");
    path_ = pattern;
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    // Folders a test made read-only must open again to be emptied.
    for (auto it = fs::recursive_directory_iterator(path_, ignored);
         it != fs::recursive_directory_iterator(); it.increment(ignored))
        if (it->is_directory(ignored) && !it->is_symlink(ignored))
            fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    fs::remove_all(path_, ignored);
}

} // namespace CorvelleSupport
