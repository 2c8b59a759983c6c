// Each published model header compiles on its own, with warnings as errors.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

TEST(PublicHeaders, EachModelHeaderCompilesAlone) {
    if (std::system("c++ --version > /dev/null 2>&1") != 0)
        GTEST_SKIP() << "no C++ compiler on the PATH";
    const char* headers[] = {"mediaobject.h",  "mediaparameter.h",  "mediadevice.h",
                             "mediaclip.h",    "mediaautomation.h", "mediatrack.h",
                             "mediaproject.h", "corvelle.h"};
    for (const char* header : headers) {
        // The source comes through a pipe, so nothing is written to disk.
        std::string command = std::string("printf '#include \"corvelle/") + header +
                              "\"\\nint main() { return 0; }\\n' | c++ -std=c++17 -fsyntax-only "
                              "-Wall -Wextra -Werror -pedantic -I '" CORVELLE_INCLUDE_DIR
                              "' -x c++ - 2>&1";
        EXPECT_EQ(std::system(command.c_str()), 0) << header;
    }
}

} // namespace
