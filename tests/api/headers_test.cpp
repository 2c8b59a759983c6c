// Every published header compiles on its own, warning-free: an outside caller may include any
// one of them first.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

// The headers present when the program starts, written and generated, so that new ones are
// covered without a change.
std::vector<std::string> publishedHeaders() {
    std::vector<std::string> names;
    for (const char* root : {CORVELLE_INCLUDE_DIR, CORVELLE_GENERATED_INCLUDE_DIR}) {
        std::error_code error;
        for (const auto& entry :
             std::filesystem::directory_iterator(std::string(root) + "/corvelle", error))
            if (entry.path().extension() == ".h")
                names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

// The compiler's output and exit status for a translation unit that includes only header.
// The unit comes through stdin, so nothing is written to disk.
std::string compileAlone(const std::string& header, int& status) {
    std::string command = "printf '#include \"corvelle/" + header +
                          "\"\\n' | c++ -std=c++17 -fsyntax-only -Wall -Wextra -Werror -I'" +
                          CORVELLE_INCLUDE_DIR + "' -I'" + CORVELLE_GENERATED_INCLUDE_DIR +
                          "' -x c++ - 2>&1";
    std::string output;
    status = -1;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return "could not start the compiler";
    char buffer[4096];
    size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0)
        output.append(buffer, n);
    status = pclose(pipe);
    return output;
}

class PublishedHeader : public testing::TestWithParam<std::string> {};

} // namespace

TEST(PublishedHeaders, FolderHoldsTheBaseHeaders) {
    std::vector<std::string> names = publishedHeaders();
    for (const char* expected :
         {"base.h", "factory.h", "ptr.h", "package.h", "utf8.h", "version.h"})
        EXPECT_NE(std::find(names.begin(), names.end(), expected), names.end()) << expected;
}

TEST_P(PublishedHeader, CompilesAloneWithoutWarnings) {
    int status = 0;
    std::string output = compileAlone(GetParam(), status);
    EXPECT_EQ(status, 0) << output;
    EXPECT_EQ(output, "");
}

INSTANTIATE_TEST_SUITE_P(Include, PublishedHeader, testing::ValuesIn(publishedHeaders()),
                         [](const testing::TestParamInfo<std::string>& info) {
                             std::string name = info.param;
                             for (char& c : name)
                                 if (!std::isalnum(static_cast<unsigned char>(c)))
                                     c = '_';
                             return name;
                         });
