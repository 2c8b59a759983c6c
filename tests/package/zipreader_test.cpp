// CvZipReader: entry forms, hostile names, links, oversized data and damaged archives.
#include "package/cvzipreader.h"
#include "packagetestsupport.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

using namespace Halvorn;
using namespace PackageTest;

namespace {

// Writes the archive into scratch, extracts it into scratch/out and gives what was extracted.
std::vector<std::string> extract(const ScratchFolder& scratch, const std::string& bytes,
                                 bool* result = nullptr) {
    writeFile(scratch / "in.zip", bytes);
    std::filesystem::remove_all(scratch / "out");
    std::filesystem::create_directory(scratch / "out");
    const bool done = unzip(scratch / "in.zip", scratch / "out");
    if (result)
        *result = done;
    return listTree(scratch / "out");
}

} // namespace

TEST(ZipReader, ExtractsStoredDeflatedAndNestedEntriesFromClassicAndZip64Archives) {
    const std::string umlaut = "audio/Gr\xC3\xBC\xC3\x9F"
                               "e.wav";
    const std::vector<RawEntry> entries = {
        {"project.xml", "<Project/>", 8, 2048},
        {"audio/stored.wav", noise(10000), 0, 0},
        {umlaut, noise(5000), 8, 0}, // UTF-8 without flag bit 11
        {"plugins/deep/state.quorpreset", "state", 8, 2048},
        {"empty/", "", 0, 0},
        {"win\\style.txt", "back", 0, 0},
    };
    for (ZipForm form : {ZipForm::kClassic, ZipForm::kZip64}) {
        SCOPED_TRACE(form == ZipForm::kZip64 ? "zip64" : "classic");
        ScratchFolder scratch;
        bool result = false;
        const auto names = extract(scratch, buildZip(entries, form), &result);
        EXPECT_TRUE(result);
        EXPECT_EQ(names, (std::vector<std::string>{"audio/", umlaut, "audio/stored.wav", "empty/",
                                                   "plugins/", "plugins/deep/",
                                                   "plugins/deep/state.quorpreset", "project.xml",
                                                   "win/", "win/style.txt"}));
        EXPECT_EQ(readFile(scratch / "out/project.xml"), "<Project/>");
        EXPECT_TRUE(readFile(scratch / "out/audio/stored.wav") == noise(10000));
        EXPECT_TRUE(readFile(scratch / ("out/" + umlaut)) == noise(5000));
        EXPECT_EQ(readFile(scratch / "out/win/style.txt"), "back");
    }
}

TEST(ZipReader, SkipsNamesThatAreAbsoluteClimbInvalidOrTooLong) {
    // 2046 bytes is the longest name that fits the buffer with its zero; components stay short.
    std::string longest;
    while (longest.size() < 2046)
        longest += "abcdefghi/";
    longest.resize(2046);
    longest.back() = 'z';
    std::string tooLong = longest + "z";

    ScratchFolder scratch;
    bool result = false;
    const auto names = extract(scratch,
                               buildZip({{"../escape.txt", "x"},
                                         {"/absolute.txt", "x"},
                                         {"\\absolute2.txt", "x"},
                                         {"a/../../climb.txt", "x"},
                                         {"a\\..\\..\\climb2.txt", "x"},
                                         {"..", "x"},
                                         {std::string("bad\xFF.txt"), "x"},
                                         {std::string("over\xC0\xAF.txt"), "x"},
                                         {std::string("nul\0../x", 8), "x"},
                                         {tooLong, "x"},
                                         {longest, "kept"},
                                         {"./dot/./ok.txt", "ok"}}),
                               &result);
    EXPECT_TRUE(result);
    EXPECT_TRUE(exists(scratch / ("out/" + longest)));
    EXPECT_FALSE(exists(scratch / ("out/" + tooLong)));
    EXPECT_EQ(readFile(scratch / "out/dot/ok.txt"), "ok");
    // Nothing landed beside the extraction folder or at the root.
    EXPECT_EQ(listTree(scratch.path()).size(), names.size() + 2); // + "in.zip", "out/"
    EXPECT_FALSE(exists("/absolute.txt"));
    // Only the two acceptable names made anything.
    for (const std::string& name : names)
        EXPECT_TRUE(name.rfind("dot/", 0) == 0 || name.rfind("abcdefghi/", 0) == 0) << name;
}

TEST(ZipReader, NeverWritesThroughALinkInTheFolder) {
    ScratchFolder scratch;
    std::filesystem::create_directory(scratch / "outside");
    writeFile(scratch / "outside/victim.txt", "original");
    std::filesystem::create_directory(scratch / "out");
    symlink((scratch / "outside").c_str(), (scratch / "out/linkdir").c_str());
    symlink((scratch / "outside/victim.txt").c_str(), (scratch / "out/victim.txt").c_str());
    writeFile(scratch / "in.zip", buildZip({{"linkdir/planted.txt", "evil"},
                                            {"victim.txt", "evil"},
                                            {"linkdir/victim.txt", "evil"},
                                            {"fine.txt", "fine"}}));

    EXPECT_TRUE(unzip(scratch / "in.zip", scratch / "out"));
    EXPECT_EQ(readFile(scratch / "outside/victim.txt"), "original");
    EXPECT_EQ(listTree(scratch / "outside"), std::vector<std::string>{"victim.txt"});
    EXPECT_TRUE(std::filesystem::is_symlink(scratch / "out/victim.txt"));
    EXPECT_EQ(readFile(scratch / "out/fine.txt"), "fine");
}

TEST(ZipReader, CutsAnEntryThatInflatesPastItsStatedSize) {
    ScratchFolder scratch;
    const std::string data = noise(20000);
    RawEntry deflated{"deflated.bin", data, 8, 0, 100};
    RawEntry stored{"stored.bin", data, 0, 0, 4097};
    RawEntry empty{"empty.bin", data, 8, 0, 0};
    for (ZipForm form : {ZipForm::kClassic, ZipForm::kZip64}) {
        SCOPED_TRACE(form == ZipForm::kZip64 ? "zip64" : "classic");
        extract(scratch, buildZip({deflated, stored, empty}, form));
        EXPECT_TRUE(readFile(scratch / "out/deflated.bin") == data.substr(0, 100));
        EXPECT_TRUE(readFile(scratch / "out/stored.bin") == data.substr(0, 4097));
        EXPECT_TRUE(exists(scratch / "out/empty.bin"));
        EXPECT_EQ(readFile(scratch / "out/empty.bin"), "");
    }
}

TEST(ZipReader, DamagedArchivesGiveTheDocumentedResultWithoutEscaping) {
    {
        ScratchFolder scratch;
        std::filesystem::create_directory(scratch / "out");
        CvZipReader::Options package;
        package.requireDocument = true;
        auto codeOf = [&](const std::string& name) {
            return CvZipReader()
                .extract(String((scratch / name).c_str()), String((scratch / "out").c_str()),
                         package)
                .code;
        };
        EXPECT_EQ(codeOf("missing.zip"), kPackageNotFound);
        writeFile(scratch / "text.zip", "this is not a zip archive at all");
        EXPECT_EQ(codeOf("text.zip"), kPackageNotZip);
        writeFile(scratch / "zero.zip", "");
        EXPECT_EQ(codeOf("zero.zip"), kPackageNotZip);
        const std::string whole = buildZip({{"project.xml", noise(3000)}});
        writeFile(scratch / "cut.zip", whole.substr(0, whole.size() - 30));
        EXPECT_EQ(codeOf("cut.zip"), kPackageTruncated);
        EXPECT_TRUE(listTree(scratch / "out").empty());
        writeFile(scratch / "bare.zip", buildZip({{"x/project.xml", "not at the root"}}));
        EXPECT_EQ(codeOf("bare.zip"), kPackageNoDocument);
        writeFile(scratch / "none.zip", buildZip({}));
        EXPECT_EQ(codeOf("none.zip"), kPackageNoDocument);
        writeFile(scratch / "whole.zip", whole);
        EXPECT_EQ(codeOf("whole.zip"), kPackageNoError);
    }
    ScratchFolder scratch;
    bool result = false;

    // A flipped byte inside one entry's data spoils only that entry.
    const std::string data = noise(30000);
    std::string archive = buildZip({{"a.bin", data}, {"b.bin", "intact"}});
    archive[30 + 5 + 40] ^= 0x5A;
    extract(scratch, archive, &result);
    EXPECT_TRUE(result);
    EXPECT_EQ(readFile(scratch / "out/b.bin"), "intact");
    EXPECT_LE(readFile(scratch / "out/a.bin").size(), data.size());

    // Every truncation opens or fails cleanly and writes only below the folder.
    // Entries with their sizes in Zip64 extra fields are beyond the system's minizip: skipped.
    EXPECT_TRUE(
        extract(scratch, buildZip({{"big.bin", data}}, ZipForm::kZip64Entries), &result).empty());
    EXPECT_TRUE(result);

    const std::string whole = buildZip({{"x/a.bin", data}, {"b.txt", "b"}}, ZipForm::kZip64);
    for (size_t cut = 0; cut < whole.size();
         cut += (cut < 200 || cut + 200 > whole.size()) ? 1 : 97) {
        extract(scratch, whole.substr(0, cut));
        EXPECT_EQ(listTree(scratch.path()).size(), 2 + listTree(scratch / "out").size());
    }
}
