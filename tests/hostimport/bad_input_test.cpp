// Bad input on import: references to nothing, ids used twice and hostile packages leave out what
// depends on them, write nothing outside the project's media folders, and still end the import
// with its one closing step.
#include "importfixture.h"

#include "common/testfiles.h"
#include "package/packagetestsupport.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

using namespace Halvorn;
using namespace Halvorn::HostImportTest;

namespace {

TEST_F(ImportTest, ReferencesToNothingAndRepeatedIdsLeaveOutOnlyTheirItem) {
    std::string structure =
        "<Track contentType=\"audio\" id=\"t\" name=\"One\"><Channel id=\"c\" destination=\"gone\">"
        "<Volume id=\"v\" value=\"1\" unit=\"linear\" min=\"0\" max=\"2\"/>"
        "<Sends><Send id=\"s\" destination=\"gone\"/></Sends></Channel></Track>"
        "<Track contentType=\"audio\" id=\"t\" name=\"Two\"><Channel id=\"c\">"
        "<Volume id=\"v\" value=\"0.5\" unit=\"linear\" min=\"0\" max=\"2\"/></Channel></Track>";
    std::string arrangement =
        "<Lanes timeUnit=\"seconds\"><Lanes track=\"t\"><Clips><Clip time=\"0\" duration=\"1\">"
        "<Clips><Clip><Audio><File path=\"audio/never.wav\"/></Audio></Clip></Clips></Clip>"
        "</Clips>"
        "<Points><Target parameter=\"\"/><RealPoint time=\"1\"/></Points>"
        "<Points><Target parameter=\"nothing\"/><RealPoint time=\"1\"/></Points>"
        "<Points><Target parameter=\"v\"/><RealPoint time=\"1\" value=\"2\"/></Points>"
        "</Lanes></Lanes>";
    ASSERT_TRUE(importPackage(document(structure, arrangement)));

    std::vector<std::string> steps = stepNames();
    EXPECT_EQ(std::count(steps.begin(), steps.end(), "Import Corvelle"), 1);
    EXPECT_EQ(steps.back(), "Import Corvelle");
    RefHost::Track* one = hostTrack(u"One");
    RefHost::Track* two = hostTrack(u"Two");
    ASSERT_TRUE(one && two);
    // The clip whose file is missing is lost, not the track; nothing is routed to nowhere.
    EXPECT_TRUE(one->children().empty());
    EXPECT_EQ(one->channel->destination, station->mixer->channel("main"));
    EXPECT_EQ(dynamic_cast<RefHost::Send*>(one->channel->sends()->children[0].get())->destination,
              nullptr);
    // Of two channels with one id the first takes the lane; the other gets none.
    EXPECT_EQ(one->folder->lanes.size(), 1u);
    EXPECT_TRUE(two->folder->lanes.empty());
}

TEST_F(ImportTest, AHostilePackageWritesOnlyIntoTheMediaFolders) {
    PackageTest::PrivateTempFolder temporary;
    std::string xml = document(
        "<Track contentType=\"audio\" id=\"a\" name=\"A\"><Channel id=\"c\"><Devices>"
        "<Quor3Plugin deviceRole=\"audioFX\" deviceID=\"5A1D3C2B7E444B1F9C0D2B8E6F4A1C35\">"
        "<State path=\"plugins/../../../escape.quorpreset\"/></Quor3Plugin></Devices>"
        "</Channel></Track>",
        "<Lanes timeUnit=\"seconds\"><Lanes track=\"a\"><Clips><Clip duration=\"1\"><Clips>"
        "<Clip><Audio><File path=\"audio/../../escape.wav\"/></Audio></Clip>"
        "<Clip><Audio><File path=\"/tmp/absolute.wav\"/></Audio></Clip>"
        "</Clips></Clip></Clips></Lanes></Lanes>");
    std::string archive = PackageTest::buildZip({{"project.xml", xml},
                                                 {"audio/../../escape.wav", "RIFF"},
                                                 {"/tmp/absolute.wav", "RIFF"},
                                                 {"../escape.quorpreset", "state"},
                                                 {"audio/fine.wav", "RIFF"}});
    std::vector<std::string> before = TestSupport::listTree(folder->path());
    std::string packagePath = folder->path() + "/hostile.corvelle";
    std::ofstream(packagePath, std::ios::binary) << archive;
    ASSERT_TRUE(importFile(packagePath));
    // A broken document is no package at all.
    std::ofstream(packagePath, std::ios::binary)
        << PackageTest::buildZip({{"project.xml", "<Project><Structure>"}});
    EXPECT_FALSE(importFile(packagePath));

    std::vector<std::string> after = TestSupport::listTree(folder->path());
    for (const std::string& entry : after)
        if (std::find(before.begin(), before.end(), entry) == before.end()) {
            EXPECT_TRUE(entry == "hostile.corvelle" || entry.rfind("project/", 0) == 0) << entry;
        }
    for (const std::string& entry : TestSupport::listTree(projectFolder())) {
        EXPECT_TRUE(entry.rfind("Audio/", 0) == 0 || entry.rfind("Preset/", 0) == 0 ||
                    entry.rfind("Video/", 0) == 0 || entry.rfind("Midi/", 0) == 0)
            << entry;
    }
    EXPECT_TRUE(temporary.leftovers().empty());
    EXPECT_EQ(stepNames().back(), "Import Corvelle");
}

TEST_F(ImportTest, AMediaNameThatExistsKeepsTheProjectsFile) {
    std::filesystem::create_directories(projectFolder() + "/Audio");
    RefHostTest::writeWav(projectFolder() + "/Audio/take.wav", 100, 1, 44100);
    RefHostTest::writeWav(folder->path() + "/new.wav", 200, 1, 44100);
    std::ifstream in(folder->path() + "/new.wav", std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    ASSERT_TRUE(importPackage(
        document("<Track contentType=\"audio\" id=\"a\" name=\"A\"/>",
                 "<Lanes timeUnit=\"seconds\"><Lanes track=\"a\"><Clips><Clip duration=\"1\">"
                 "<Clips><Clip><Audio><File path=\"audio/take.wav\"/></Audio></Clip></Clips>"
                 "</Clip></Clips></Lanes></Lanes>"),
        {{"audio/take.wav", bytes}}));
    auto events = itemsOf<RefHost::AudioEvent>(hostTrack(u"A"));
    ASSERT_EQ(events.size(), 1u);
    // The package's file of the same name is not copied: the event plays the one already there.
    EXPECT_EQ(events[0]->clip->facts.frames, 100);
}

} // namespace
