// Helpers of the writer tests: UTF-16 text and expat checks, beside the shared file helpers.
#pragma once

#include "common/testfiles.h"
#include "common/zipbytes.h"
#include "corvelle/base.h"
#include "corvelle/ptr.h"

#include <csignal>
#include <string>
#include <sys/resource.h>
#include <vector>

namespace WriterTest {

using TestSupport::exists;
using TestSupport::listTree;
using TestSupport::readCentralDirectory;
using TestSupport::readFile;
using TestSupport::ScratchFolder;
using TestSupport::writeFile;
using TestSupport::ZipEntry;

inline bool contains(const std::string& document, const std::string& text) {
    return document.find(text) != std::string::npos;
}

std::u16string utf16(const std::string& utf8);

// Caps the size of the files this process writes while it lives, with the signal a breach would
// raise ignored, so that the write that crosses the cap fails instead.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

    // False when the cap could not be set.
    bool active() const { return active_; }

private:
    rlimit previous_{};
    void (*previousSignal_)(int) = SIG_DFL;
    bool active_ = false;
};

// True when expat takes the bytes as a whole, well-formed document; else the message says why.
bool isWellFormed(const std::string& document, std::string* message = nullptr);

} // namespace WriterTest
