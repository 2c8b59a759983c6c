// The whole road through the service: the example session exported, the package imported into
// an empty project, and that project exported again. The two packages' models agree on all the
// format carries both ways, except for the differences that docs/import.md lists.
#include "importfixture.h"

#include "common/model_compare.h"
#include "shell/cvservice.h"

#include <algorithm>
#include <map>
#include <regex>

using namespace Halvorn;
using namespace Halvorn::HostImportTest;

namespace {

class WholeRoadTest : public ImportTest {
protected:
    void SetUp() override { HostTest::SetUp(); } // the example session
    // Runs one command of a new service on the present workstation, its dialog answering path.
    tresult command(bool importing, const std::string& path) {
        auto filter = RefHostTest::startService(host());
        station->dialogs.answers.emplace_back(RefHost::toUtf16(path));
        FUnknown* target = station->project->itemFace();
        return importing ? filter->importProject(nullptr, target)
                         : filter->exportProject(nullptr, target);
    }
};

TEST_F(WholeRoadTest, ExportImportExportKeepsWhatTheFormatCarries) {
    std::string first = folder->path() + "/first.corvelle";
    std::string second = folder->path() + "/second.corvelle";
    ASSERT_EQ(command(false, first), kResultOk);
    std::filesystem::create_directories(projectFolder());
    load(emptySession());
    ASSERT_EQ(command(true, first), kResultOk);
    ASSERT_EQ(command(false, second), kResultOk);

    // The imported project is a session like any other: it is written and read back whole.
    nlohmann::json written = station->toJson();
    std::string error;
    auto again = RefHost::Workstation::fromJson(written, folder->path(), error);
    ASSERT_TRUE(again) << error;
    EXPECT_EQ(again->toJson(), written);
    EXPECT_TRUE(again->close().clean());

    auto a = RefHostTest::readPackage(first, folder->path() + "/a");
    auto b = RefHostTest::readPackage(second, folder->path() + "/b");
    ASSERT_TRUE(a && b);
    ModelCompare::Options options;
    options.fileLeafNamesOnly = true;
    // Every difference is one of those docs/import.md lists, and each of them shows.
    const std::vector<std::pair<std::string, std::regex>> byDesign = {
        {"new ids", std::regex(R"(: (id|target|destination) id\d+ != id\d+$)")},
        {"state file names",
         std::regex(R"(: statePath [0-9A-F-]+\.quorpreset != [0-9A-F-]+\.quorpreset$)")},
        {"point at 0", std::regex(R"(automation\[\d+\]: points count (\d+) != (\d+)$)")},
        {"strip devices", std::regex(R"(channel(\[\d+\])?: devices count \d+ != \d+$)")},
        {"note channel", std::regex(R"(: midi\.channel \d+ != 0$)")},
        {"velocity", std::regex(R"(: (midi\.data2 \d+ != \d+|velocity [0-9.]+ != [0-9.]+)$)")}};
    std::map<std::string, int> seen;
    for (const std::string& line :
         ModelCompare::differences(a->getProject(), b->getProject(), options)) {
        auto kind = std::find_if(byDesign.begin(), byDesign.end(), [&line](const auto& entry) {
            return std::regex_search(line, entry.second);
        });
        ASSERT_NE(kind, byDesign.end()) << "not by design: " << line;
        ++seen[kind->first];
        std::smatch numbers;
        if (std::regex_search(line, numbers, std::regex(R"(points count (\d+) != (\d+)$)"))) {
            EXPECT_EQ(std::stoi(numbers[2]), std::stoi(numbers[1]) + 1) << line;
        }
    }
    for (const auto& entry : byDesign)
        EXPECT_GT(seen[entry.first], 0) << entry.first;
}

TEST_F(WholeRoadTest, TheImportCommandRemembersThePathAndNeedsAProjectFolder) {
    std::string package = folder->path() + "/first.corvelle";
    ASSERT_EQ(command(false, package), kResultOk);
    std::filesystem::create_directories(projectFolder());
    load(emptySession());
    auto remembered = [&] {
        auto defaults = service<IHostDefaults>();
        const char16* text = defaults->getString("Corvelle", "lastImportPath");
        return text ? RefHostTest::utf8(text) : std::string();
    };
    // A null target shows no dialog; a cancel remembers nothing.
    auto filter = RefHostTest::startService(host());
    EXPECT_EQ(filter->importProject(nullptr, nullptr), kResultFalse);
    EXPECT_TRUE(station->dialogs.shown.empty());
    station->dialogs.answers.emplace_back(std::nullopt);
    EXPECT_EQ(filter->importProject(nullptr, station->project->itemFace()), kResultFalse);
    EXPECT_EQ(remembered(), "");
    ASSERT_EQ(station->dialogs.shown.size(), 1u);
    EXPECT_EQ(station->dialogs.shown[0].title, u"Select Corvelle File");

    // Without a project folder nothing is read, and no media folder is made anywhere.
    auto projectUrl = station->project->folder;
    station->project->folder = nullptr;
    EXPECT_EQ(command(true, package), kResultFalse);
    EXPECT_EQ(remembered(), package);
    EXPECT_TRUE(station->history.empty());
    EXPECT_FALSE(std::filesystem::exists(projectFolder() + "/Audio"));

    // The whole path is remembered, and the next dialog starts there.
    station->project->folder = projectUrl;
    ASSERT_EQ(command(true, package), kResultOk);
    EXPECT_EQ(RefHostTest::utf8(station->dialogs.shown.back().startPath.c_str()), package);
    EXPECT_TRUE(std::filesystem::exists(projectFolder() + "/Audio/loop.wav"));
}

} // namespace
