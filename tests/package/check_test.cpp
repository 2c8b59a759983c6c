// corvelle check over the packages this tree makes (clean) and over hostile ones (each class of
// finding once, with its severity's exit code).
#include "toolpaths.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>

using namespace PackageTest;

namespace {

// A small document: the given tracks in Structure, the given lanes in the outer Lanes, and
// what else the Arrangement holds.
std::string document(
    const std::string& tracks, const std::string& lanes = "", const std::string& unit = "seconds",
    const std::string& transport = "<Transport><Tempo unit=\"bpm\" value=\"120\"/></Transport>") {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Project version=\"1.0\">" + transport +
           "<Structure>" + tracks + "</Structure><Arrangement><Lanes timeUnit=\"" + unit + "\">" +
           lanes + "</Lanes></Arrangement></Project>";
}

const std::string kAudio = "<Track contentType=\"audio\" id=\"t\"/>";

} // namespace

class Check : public Tool {
protected:
    struct Findings {
        int status;
        nlohmann::json findings;
    };
    Findings check(const std::string& package) const {
        const ToolRun run = runTool("check --json '" + package + "'");
        return {run.status, nlohmann::json::parse(run.out)["findings"]};
    }
};

TEST_F(Check, PackagesThisTreeWritesAreClean) {
    const std::string fresh = scratch / "new.corvelle", exported = scratch / "session.corvelle";
    ASSERT_EQ(runTool("new '" + fresh + "'").status, 0);
    ASSERT_EQ(runTool("export '" + (kBuildTree / "examples/session/session.json").string() + "' '" +
                          exported + "' --module '" + CORVELLE_MODULE_PATH + "'",
                      "", kHost)
                  .status,
              0);
    // The writer's golden document holds every element the writer writes.
    const std::string golden = writePackage(
        scratch, "golden.corvelle",
        {{"project.xml", readFile(std::string(CORVELLE_TEST_DATA) + "/golden/project.xml")},
         {"audio/guitar.wav", "RIFF"},
         {"video/movie.mp4", "mp4"},
         {"plugins/reverb.quorpreset", "state"}});
    for (const std::string& package : {kSample, fresh, exported, golden}) {
        const Findings run = check(package);
        EXPECT_EQ(run.status, 0) << package;
        EXPECT_EQ(run.findings, nlohmann::json::array()) << package << run.findings.dump(1);
    }
    EXPECT_TRUE(temp.leftovers().empty());
}

TEST_F(Check, EachClassOfFindingHasItsCodeAndExitStatus) {
    struct Case {
        const char* code;
        bool error;
        std::string xml;
        std::vector<RawEntry> more = {};
    };
    const std::string lane = "<Lanes track=\"t\"><Clips><Clip>",
                      endLane = "</Clip></Clips></Lanes>";
    const std::string channel = "<Track contentType=\"audio\" id=\"t\"><Channel id=\"c\">";
    const std::string endChannel = "</Channel></Track>";
    const std::string points = "<Lanes track=\"t\"><Points>", endPoints = "</Points></Lanes>";
    // clang-format off
    const std::vector<Case> cases = {
        {"unknown-attribute", false, document("<Track contentType=\"audio\" loudness=\"3\"/>")},
        {"unknown-element", false, document("<Track contentType=\"audio\"><Gizmo/></Track>")},
        {"track-dropped", true, document("<Track contentType=\"Audio\"/>")},
        {"non-finite-number", false, document(channel + "<Volume value=\"1e999\"/>" + endChannel)},
        {"bad-number", false, document(channel + "<Volume value=\"0,25\"/>" + endChannel)},
        {"out-of-range", false, document(channel + "<Volume value=\"2\"/>" + endChannel)},
        {"bad-boolean", false, document("<Track contentType=\"audio\" loaded=\"TRUE\"/>")},
        {"duplicate-id", false, document(kAudio + kAudio)},
        {"unknown-destination", false, document(channel + endChannel + "<Channel destination=\"x\"/>")},
        {"unknown-device", true, document(channel + "<Devices><Synth/></Devices>" + endChannel)},
        {"unknown-track", true, document(kAudio, "<Lanes track=\"u\"><Clips><Clip><Notes/>" + endLane)},
        {"unknown-target", false, document(kAudio, points + "<Target parameter=\"p\"/><RealPoint/>" + endPoints)},
        {"points-dropped", true, document(kAudio, points + "<RealPoint/>" + endPoints)},
        {"beats-without-tempo", false, document(kAudio, "", "beats", "")},
        {"video-events", false, document("<Track contentType=\"video\" id=\"t\"/>", lane + "<Video/><Video/>" + endLane)},
        {"clip-dropped", true, document("<Track contentType=\"tracks\" id=\"t\"/>", lane + "<Notes/>" + endLane)},
        {"missing-media", false, document(kAudio, lane + "<Wrap><Audio><File path=\"audio/gone.wav\"/></Audio></Wrap>" + endLane)},
        {"refused-path", false, document(kAudio, lane + "<Audio><File path=\"..\\x.wav\"/></Audio>" + endLane)},
        {"external-reference", false, document(kAudio, lane + "<Audio><File path=\"/etc/hostname\" external=\"true\"/></Audio>" + endLane)},
        {"hostile-entry", false, document(kAudio), {{"../evil.txt", "x"}}},
        {"skipped-entry", false, document(kAudio), {{"audio/a.wav", "bzip2", 12}}},
        {"malformed-xml", true, "<Project><Structure></Project>"},
        {"unreadable", true, "<project/>"},
    };
    // clang-format on
    for (const Case& c : cases) {
        std::vector<RawEntry> entries = {{"project.xml", c.xml}};
        entries.insert(entries.end(), c.more.begin(), c.more.end());
        const Findings run =
            check(writePackage(scratch, c.code + std::string(".corvelle"), entries));
        EXPECT_TRUE(std::any_of(run.findings.begin(), run.findings.end(),
                                [&](const auto& finding) { return finding["code"] == c.code; }))
            << c.code << run.findings.dump(1);
        EXPECT_EQ(run.status, c.error ? 1 : 3) << c.code << run.findings.dump(1);
    }
    // Places point into the document, so that a user finds the line.
    const std::string place = writePackage(
        scratch, "place.corvelle",
        {{"project.xml",
          "<Project>\n<Structure>\n  <Track contentType=\"x\"/>\n</Structure></Project>"}});
    EXPECT_EQ(check(place).findings[0]["place"], "project.xml:3:3");
    EXPECT_TRUE(temp.leftovers().empty());
}
