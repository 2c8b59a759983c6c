// Hostile sessions: media that would block, parts nested without end, numbers a double can't
// hold, references that aren't numbers, channels routed into themselves.
#include "hostfixture.h"

#include <sys/stat.h>

namespace Halvorn {
namespace RefHostTest {

using nlohmann::json;

TEST_F(HostTest, HostileSessionsAreRefusedWithFileAndPlace) {
    ASSERT_EQ(mkfifo((folder->path() + "/media/pipe.wav").c_str(), 0600), 0);
    ASSERT_EQ(mkfifo((folder->path() + "/media/pipe.mp4").c_str(), 0600), 0);
    struct Case {
        const char* pointer;
        json value;
        const char* where;
    };
    const Case cases[] = {
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
        EXPECT_FALSE(RefHost::Workstation::fromJson(session, folder->path(), error)) << bad.pointer;
        EXPECT_EQ(error.rfind(bad.where, 0), 0u) << bad.pointer << " gave " << error;
    }

    // Through files: the message names the file, then the place.
    const std::string path = folder->path() + "/hostile.json";
    json session = exampleSession();
    session["project"]["tracks"][2]["items"][1] = "DEEP";
    std::string text = session.dump();
    std::string deep;
    for (int i = 0; i < 10000; ++i)
        deep += "{\"kind\":\"audioPart\",\"events\":[";
    for (int i = 0; i < 10000; ++i)
        deep += "]}";
    writeText(path, text.replace(text.find("\"DEEP\""), 6, deep));
    std::string error;
    EXPECT_FALSE(RefHost::Workstation::load(path, error));
    EXPECT_EQ(error.rfind(path + ": $.project.tracks[2].items[1]", 0), 0u) << error;
    EXPECT_NE(error.find("parts nest too deep"), std::string::npos) << error;

    writeText(path, "{\"mixer\": {\"maximumGain\": 1e999}}");
    EXPECT_FALSE(RefHost::Workstation::load(path, error));
    EXPECT_EQ(error.rfind(path + ": $: not JSON", 0), 0u) << error;
}

} // namespace RefHostTest
} // namespace Halvorn
