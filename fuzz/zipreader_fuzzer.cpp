// Fuzz target: CvZipReader::unzipToFolder on arbitrary bytes. Beyond the sanitizers it checks
// that nothing lands beside the extraction folder.
#include "fuzzsupport.h"
#include "package/cvzipreader.h"

#include <cstdlib>
#include <sys/stat.h>

using namespace CorvelleFuzz;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // The scratch folder holds "temp", "input" and "out" and nothing else.
    if (!writeInput(data, size, "input"))
        return 0;
    const std::string out = scratchFolder() + "/out";
    if (mkdir(out.c_str(), 0700) != 0)
        std::abort();
    Halvorn::CvZipReader reader;
    (void)reader.unzipToFolder(Halvorn::String((scratchFolder() + "/input").c_str()),
                               Halvorn::String(out.c_str()));
    if (countEntries(scratchFolder()) != 3 || countEntries(scratchFolder() + "/temp") != 0)
        std::abort();
    removeTree(out);
    return 0;
}
