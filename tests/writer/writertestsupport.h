// Helpers of the writer tests: text and expat checks, beside the shared file helpers.
#pragma once

#include "common/filesizelimit.h"
#include "common/testfiles.h"
#include "common/zipbytes.h"
#include "corvelle/base.h"
#include "corvelle/ptr.h"
#include "corvelle/utf8.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace WriterTest {

using TestSupport::FileSizeLimit;
using TestSupport::listTree;
using TestSupport::readCentralDirectory;
using TestSupport::readFile;
using TestSupport::ScratchFolder;
using TestSupport::writeFile;
using TestSupport::ZipEntry;

// Says which text it looked for and, when it is missing, shows the document.
inline ::testing::AssertionResult contains(const std::string& document, const std::string& text) {
    if (document.find(text) != std::string::npos)
        return ::testing::AssertionSuccess() << "found " << text;
    return ::testing::AssertionFailure() << "no " << text << " in\n" << document;
}
// How many times text stands in document, overlaps counted.
inline size_t occurrences(const std::string& document, const std::string& text) {
    size_t n = 0;
    for (size_t at = document.find(text); at != std::string::npos; at = document.find(text, at + 1))
        ++n;
    return n;
}

using Halvorn::toUtf16;

// True when expat takes the bytes as a whole, well-formed document; else the message says why.
bool isWellFormed(const std::string& document, std::string* message = nullptr);

} // namespace WriterTest
