// Fuzz target: any bytes as a project document walked by `corvelle check`; it must never crash
// and every finding must carry a code and a place.
#include "documentcheck.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const CorvelleTool::DocumentCheck check =
        CorvelleTool::checkDocument(std::string(reinterpret_cast<const char*>(data), size));
    for (const CorvelleTool::Finding& finding : check.findings)
        if (finding.code.empty() || finding.place.empty())
            std::abort();
    return 0;
}
