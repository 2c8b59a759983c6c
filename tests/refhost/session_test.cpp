// Session files: the example round trip, and clear refusals of bad and hostile files.
#include "hostfixture.h"

#include <sys/stat.h>

namespace Halvorn {
namespace RefHostTest {

using nlohmann::json;

TEST_F(HostTest, TheExampleSessionIsWrittenBackAsItWasRead) {
    json example = exampleSession();
    EXPECT_EQ(station->toJson(), example) << station->toJson().dump(2);
    std::string error;
    ASSERT_TRUE(station->save(folder->path() + "/again.json", error)) << error;
    auto again = RefHost::Workstation::load(folder->path() + "/again.json", error);
    ASSERT_TRUE(again) << error;
    EXPECT_EQ(again->toJson(), example);
    EXPECT_TRUE(again->close().clean());
}

// The conversion itself, ill-formed pieces included, is the published helper's, tested there.
TEST_F(HostTest, TextCrossesAsUtf16BothWays) {
    json session = exampleSession();
    session["project"]["tracks"][2]["name"] = "Dr\u00fcms \U0001F941";
    load(session);
    auto timeline = queryInterface<IHostTimelineObject>(children(project())[2]);
    EXPECT_EQ(std::u16string(timeline->getName()), u"Dr\u00fcms \U0001F941");
    EXPECT_EQ(station->toJson()["project"]["tracks"][2]["name"], "Dr\u00fcms \U0001F941");
}

TEST_F(HostTest, BadSessionsAreRefusedWithTheirPlace) {
    // Media that would make the host wait forever.
    ASSERT_EQ(mkfifo((folder->path() + "/media/pipe.wav").c_str(), 0600), 0);
    ASSERT_EQ(mkfifo((folder->path() + "/media/pipe.mp4").c_str(), 0600), 0);
    struct Case {
        const char* pointer;
        json value;
        const char* where;
    };
    const Case cases[] = {
        {"/mixer/channels/4/volume", "loud", "$.mixer.channels[4].volume"},
        {"/mixer/channels/4/sends/0/to", "nowhere", "$.mixer.channels[4].sends[0].to"},
        {"/mixer/channels/4/output", "plate", "$.mixer.channels[4].output"},
        {"/project/tracks/2/items/0/media", "ghost", "$.project.tracks[2].items[0].media"},
        {"/project/tracks/2/channel", "keys-channel", "$.project.tracks[2].channel"},
        {"/project/tracks/3/id", "drums", "$.project.tracks[3].id"},
        {"/project/tracks/2/type", "harp", "$.project.tracks[2].type"},
        {"/project/tracks/2/items/0/kind", "note", "$.project.tracks[2].items[0].kind"},
        {"/project/tracks/2/automation/1/parameter", "#3",
         "$.project.tracks[2].automation[1].parameter"},
        {"/media/0/path", "media/missing.wav", "$.media[0].path"},
        {"/plugins/1/cid", "5A1D3C2B-7E44-4B1F-9C0D-2B8E6F4A1C35", "$.plugins[1].cid"},
        {"/project/tracks/4/tracks/0/items/0/kind", "tempo",
         "$.project.tracks[4].tracks[0].items[0]"},
        {"/project/tracks", json::object(), "$.project.tracks"},
        {"/media/0/path", "media/pipe.wav", "$.media[0].path"},
        {"/media/1/path", "media/pipe.mp4", "$.media[1].path"},
        {"/media/1/path", "media", "$.media[1].path"},
        {"/project/tracks/2/automation/1/parameter", "#abc",
         "$.project.tracks[2].automation[1].parameter"},
        {"/project/tracks/2/automation/1/parameter", "#-7",
         "$.project.tracks[2].automation[1].parameter"},
        {"/mixer/channels/4/sends/0/to", "drums-channel", "$.mixer.channels[4].sends[0].to"},
        {"/mixer/channels/4/output", "drums-channel", "$.mixer.channels[4].output"},
    };
    for (const Case& bad : cases) {
        json session = exampleSession();
        session[json::json_pointer(bad.pointer)] = bad.value;
        std::string error;
        auto loaded = RefHost::Workstation::fromJson(session, folder->path(), error);
        EXPECT_FALSE(loaded) << bad.pointer;
        EXPECT_EQ(error.rfind(bad.where, 0), 0u) << bad.pointer << " gave " << error;
    }

    std::string error;
    std::string path = folder->path() + "/broken.json";
    writeText(path, "{\"project\": [1, 2");
    EXPECT_FALSE(RefHost::Workstation::load(path, error));
    EXPECT_NE(error.find("not JSON"), std::string::npos) << error;
    EXPECT_FALSE(RefHost::Workstation::load(folder->path() + "/absent.json", error));
    EXPECT_NE(error.find("can't be read"), std::string::npos) << error;
    writeText(path, "[]");
    EXPECT_FALSE(RefHost::Workstation::load(path, error));
    EXPECT_NE(error.find("$: expected an object"), std::string::npos) << error;
    // A number a double can't hold is no parse error to the parser, but still named so.
    writeText(path, "{\"mixer\": {\"maximumGain\": 1e999}}");
    EXPECT_FALSE(RefHost::Workstation::load(path, error));
    EXPECT_EQ(error.rfind(path + ": $: not JSON", 0), 0u) << error;

    // Parts nested without end are refused at the depth of folders, not by the stack.
    json session = exampleSession();
    session["project"]["tracks"][2]["items"][1] = "DEEP";
    std::string text = session.dump();
    std::string deep;
    for (int i = 0; i < 10000; ++i)
        deep += "{\"kind\":\"audioPart\",\"events\":[";
    for (int i = 0; i < 10000; ++i)
        deep += "]}";
    writeText(path, text.replace(text.find("\"DEEP\""), 6, deep));
    EXPECT_FALSE(RefHost::Workstation::load(path, error));
    EXPECT_EQ(error.rfind(path + ": $.project.tracks[2].items[1]", 0), 0u) << error;
    EXPECT_NE(error.find("parts nest too deep"), std::string::npos) << error;
}

} // namespace RefHostTest
} // namespace Halvorn
