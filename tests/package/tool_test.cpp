// The corvelle tool on the sample package, run as a user would: output, exit codes, extraction.
#include "packagetestsupport.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <sys/wait.h>

using namespace PackageTest;

namespace {

// The tool and the sample package lie in the build tree beside the module.
const std::filesystem::path kBuild =
    std::filesystem::path(CORVELLE_MODULE_PATH).parent_path().parent_path();
const std::string kTool = (kBuild / "tools/corvelle").string();
const std::string kSample = (kBuild / "examples/sample-project/sample.corvelle").string();

struct ToolRun {
    int status;
    std::string out;
    std::string err;
};

ToolRun runTool(const std::string& arguments, const ScratchFolder& scratch) {
    const std::string errFile = scratch / "stderr.txt";
    const std::string command = "'" + kTool + "' " + arguments + " 2>'" + errFile + "'";
    ToolRun run{-1, {}, {}};
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return run;
    char buffer[4096];
    size_t got;
    while ((got = fread(buffer, 1, sizeof buffer, pipe)) > 0)
        run.out.append(buffer, got);
    const int status = pclose(pipe);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.err = readFile(errFile);
    return run;
}

} // namespace

class Tool : public ::testing::Test {
protected:
    void SetUp() override {
        if (!exists(kTool) || !exists(kSample))
            GTEST_SKIP() << "the corvelle tool and the sample package are not built";
    }
    PrivateTempFolder temp;
    ScratchFolder scratch;
};

TEST_F(Tool, InfoSummarisesTheSamplePackage) {
    const ToolRun run = runTool("info '" + kSample + "'", scratch);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "Application:       Corvelle Sample 1.0\n"
                       "Tempo:             120 bpm\n"
                       "Signature:         4/4\n"
                       "Tracks:            5\n"
                       "Clips:             5\n"
                       "Events:            10\n"
                       "Channels:          4\n"
                       "Devices:           2\n"
                       "Automation points: 3\n"
                       "Media files:       1\n");
    EXPECT_TRUE(temp.leftovers().empty());
}

TEST_F(Tool, DumpGivesTheWholeTreeAsJson) {
    const ToolRun run = runTool("dump --json '" + kSample + "'", scratch);
    ASSERT_EQ(run.status, 0);
    const auto tree = nlohmann::json::parse(run.out);
    ASSERT_GE(tree["tracks"].size(), 2u);
    const auto& tone = tree["tracks"][0];
    EXPECT_EQ(tone["name"], "Tone");
    EXPECT_EQ(tone["channel"]["devices"][0]["type"], "Compressor");
    EXPECT_EQ(tone["channel"]["sends"][0]["destination"], "id10");
    EXPECT_EQ(tone["clips"][0]["events"][0]["file"], "audio/tone.wav");
    EXPECT_EQ(tone["automation"][0]["points"].size(), 3u);
    std::vector<int> keys;
    for (const auto& note : tree["tracks"][1]["clips"][0]["events"])
        keys.push_back(note["key"]);
    EXPECT_EQ(keys, (std::vector<int>{60, 64, 67, 72}));
    ASSERT_EQ(tree["channels"].size(), 2u); // those no track holds
    EXPECT_EQ(tree["channels"][0]["role"], "master");
    EXPECT_EQ(tree["channels"][1]["name"], "Echo");

    const ToolRun outline = runTool("dump '" + kSample + "'", scratch);
    EXPECT_EQ(outline.status, 0);
    EXPECT_NE(outline.out.find("  name: Corvelle Sample\n"), std::string::npos);
}

TEST_F(Tool, ExtractCopiesTheMediaAndFailuresSayOneLine) {
    const ToolRun run = runTool("extract '" + kSample + "' '" + (scratch / "out") + "'", scratch);
    EXPECT_EQ(run.status, 0);
    const std::string tone = readFile(scratch / "out/Audio/tone.wav");
    EXPECT_EQ(tone.size(), 44u + 2 * 44100);
    EXPECT_EQ(tone.substr(0, 4), "RIFF");
    EXPECT_NE(run.out.find("1 of 1 media files"), std::string::npos);

    writeFile(scratch / "bad.corvelle", "not a package");
    for (const std::string& path : {scratch / "bad.corvelle", scratch / "missing.corvelle"}) {
        const ToolRun failed = runTool("info '" + path + "'", scratch);
        EXPECT_EQ(failed.status, 1);
        EXPECT_EQ(failed.out, "");
        EXPECT_EQ(failed.err.rfind("corvelle: cannot read package '" + path + "': ", 0), 0u);
        EXPECT_EQ(std::count(failed.err.begin(), failed.err.end(), '\n'), 1);
    }
    for (const char* command : {"info", "dump", "extract"})
        EXPECT_EQ(runTool(std::string(command) + " --help", scratch).status, 0) << command;
    EXPECT_TRUE(temp.leftovers().empty());
}
