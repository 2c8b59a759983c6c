// The built tools as their tests find and run them: in the build tree beside the module.
#pragma once

#include "packagetestsupport.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace PackageTest {

inline const std::filesystem::path kBuildTree =
    std::filesystem::path(CORVELLE_MODULE_PATH).parent_path().parent_path();
inline const std::string kTool = (kBuildTree / "tools/corvelle").string();
inline const std::string kHost = (kBuildTree / "refhost/corvelle-host").string();
inline const std::string kSample =
    (kBuildTree / "examples/sample-project/sample.corvelle").string();

struct ToolRun {
    int status;
    std::string out;
    std::string err;
};

// Each test with a private temporary folder, so that it sees what a run leaves behind there.
class Tool : public ::testing::Test {
protected:
    void SetUp() override {
        if (!exists(kTool) || !exists(kHost) || !exists(kSample))
            GTEST_SKIP() << "the corvelle tool, the reference host and the sample are not built";
    }
    // setup is shell text run before the tool in the same shell (variables, limits).
    ToolRun runTool(const std::string& arguments, const std::string& setup = "",
                    const std::string& tool = kTool) const {
        const std::string errFile = scratch / "stderr.txt";
        ToolRun run{-1, {}, {}};
        run.out = TestSupport::runCommand(
            setup + "'" + tool + "' " + arguments + " 2>'" + errFile + "'", run.status);
        run.err = readFile(errFile);
        return run;
    }

    PrivateTempFolder temp;
    ScratchFolder scratch;
};

} // namespace PackageTest
