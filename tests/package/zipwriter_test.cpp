// CvZipWriter: the exact entry parameters, order, names, and the round trip through the reader.
#include "packagetestsupport.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>
#include <zip.h>

using namespace Halvorn;
using namespace PackageTest;

TEST(ZipWriter, WritesSortedEntriesWithTheFixedParametersAndReadsBack) {
    ScratchFolder scratch;
    const std::string tree = scratch / "tree";
    const std::string umlaut = "audio/Gr\xC3\xBC\xC3\x9F"
                               "e.wav";
    writeFile(tree + "/project.xml", "<Project/>");
    writeFile(tree + "/" + umlaut, noise(70000));
    writeFile(tree + "/audio/a.wav", std::string(9000, 'a'));
    writeFile(tree + "/plugins/x/state.quorpreset", "");
    std::filesystem::create_directories(tree + "/empty/inner");
    symlink((scratch / "outside.txt").c_str(), (tree + "/link.txt").c_str());
    writeFile(scratch / "outside.txt", "outside");

    ASSERT_TRUE(zip(tree, scratch / "a.corvelle"));
    const std::string bytes = readFile(scratch / "a.corvelle");
    // Both headers of an entry come from one call: the central directory stands for them. Version
    // made by 0, no external attributes, extras or comments; the internal attributes are 0 but
    // for the text bit that zlib's data detection lets minizip set.
    const size_t end = bytes.size() - 22;
    ASSERT_EQ(get32(bytes, end), 0x06054b50u);
    EXPECT_EQ(get16(bytes, end + 20), 0); // archive comment
    std::vector<std::string> names;
    for (const TestSupport::ZipEntry& entry : TestSupport::readCentralDirectory(bytes)) {
        names.push_back(entry.name);
        EXPECT_EQ(entry.versionMadeBy, 0) << entry.name;
        EXPECT_EQ(entry.versionNeeded, 20) << entry.name;
        EXPECT_EQ(entry.flags, 2048) << entry.name;
        EXPECT_EQ(entry.time, 0) << entry.name;
        EXPECT_EQ(entry.date, 0x0020) << entry.name;
        EXPECT_EQ(entry.extraLength + entry.commentLength, 0) << entry.name;
        EXPECT_EQ(entry.internalAttributes & ~1u, 0u) << entry.name;
        EXPECT_EQ(entry.externalAttributes, 0u) << entry.name;
        EXPECT_EQ(entry.method, 8) << entry.name;
    }
    EXPECT_EQ(names, (std::vector<std::string>{umlaut, "audio/a.wav", "plugins/x/state.quorpreset",
                                               "project.xml"}));

    std::filesystem::create_directory(scratch / "out");
    ASSERT_TRUE(unzip(scratch / "a.corvelle", scratch / "out"));
    EXPECT_EQ(listTree(scratch / "out"),
              (std::vector<std::string>{"audio/", umlaut, "audio/a.wav", "plugins/", "plugins/x/",
                                        "plugins/x/state.quorpreset", "project.xml"}));
    EXPECT_TRUE(readFile(scratch / ("out/" + umlaut)) == noise(70000));
    EXPECT_TRUE(readFile(scratch / "out/audio/a.wav") == std::string(9000, 'a'));
    EXPECT_EQ(readFile(scratch / "out/project.xml"), "<Project/>");
}

TEST(ZipWriter, LeavesOutNamesTooLongAndAnswersForTheArchiveOnly) {
    ScratchFolder scratch;
    const std::string tree = scratch / "tree";
    // 8 levels of 251 bytes with their "/" and a file name: 2046 bytes fit, 2047 don't.
    std::string deep;
    for (int i = 0; i < 8; ++i)
        deep += std::string(250, char('a' + i)) + "/";
    const std::string fits = deep + std::string(2046 - deep.size(), 'f');
    const std::string tooLong = deep + std::string(2047 - deep.size(), 'g');
    writeFile(tree + "/" + fits, "x");
    writeFile(tree + "/" + tooLong, "y");
    writeFile(tree + "/short.txt", "z");

    ASSERT_TRUE(zip(tree, scratch / "long.zip"));
    const auto entries = TestSupport::readCentralDirectory(readFile(scratch / "long.zip"));
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].name, fits);
    EXPECT_EQ(entries[1].name, "short.txt");

    // A missing folder makes an archive without entries, which reads back as empty.
    ASSERT_TRUE(zip(scratch / "missing", scratch / "empty.zip"));
    EXPECT_EQ(readFile(scratch / "empty.zip").size(), 22u);
    std::filesystem::create_directory(scratch / "out");
    EXPECT_TRUE(unzip(scratch / "empty.zip", scratch / "out"));
    EXPECT_TRUE(listTree(scratch / "out").empty());

    // An archive that can't be created is the one failure.
    EXPECT_FALSE(zip(tree, scratch / "no/such/folder/x.zip"));
    EXPECT_FALSE(exists(scratch / "no"));
}

// The archive one thread makes with minizip's own deflate, streamed entry by entry.
std::string minizipArchive(const std::string& tree, const std::vector<std::string>& names,
                           const std::string& path) {
    zipFile zip = zipOpen64(path.c_str(), APPEND_STATUS_CREATE);
    for (const std::string& name : names) {
        zip_fileinfo info{};
        zipOpenNewFileInZip4_64(zip, name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr,
                                Z_DEFLATED, Z_DEFAULT_COMPRESSION, 0, -MAX_WBITS, 8,
                                Z_DEFAULT_STRATEGY, nullptr, 0, 0, 2048, 0);
        const std::string data = readFile(tree + "/" + name);
        for (size_t at = 0; at < data.size(); at += 65536)
            zipWriteInFileInZip(zip, data.data() + at,
                                unsigned(std::min<size_t>(65536, data.size() - at)));
        zipCloseFileInZip(zip);
    }
    zipClose(zip, nullptr);
    return readFile(path);
}

TEST(ZipWriter, DeflatingAheadOnOtherThreadsGivesTheBytesOfOneThread) {
    // Text and noise, empty files, and a file too large to be held, which the writer streams.
    ScratchFolder scratch;
    const std::string tree = scratch / "tree";
    std::vector<std::string> names;
    for (int i = 0; i < 24; ++i) {
        const std::string name = "media/" + std::to_string(10 + i) + (i % 3 ? ".wav" : ".txt");
        writeFile(tree + "/" + name,
                  i % 3 ? noise(size_t(i) * 40000) : std::string(size_t(i) * 3000, 'a' + i % 26));
        names.push_back(name);
    }
    writeFile(tree + "/take.wav", noise(3u << 20) + std::string(7u << 20, 'x'));
    names.push_back("take.wav");

    ASSERT_TRUE(zip(tree, scratch / "ours.zip"));
    const std::string expected = minizipArchive(tree, names, scratch / "theirs.zip");
    EXPECT_TRUE(readFile(scratch / "ours.zip") == expected);
    size_t texts = 0;
    for (const TestSupport::ZipEntry& entry : TestSupport::readCentralDirectory(expected))
        texts += entry.internalAttributes & 1u;
    EXPECT_EQ(texts, 7u) << "the text bit is set where zlib saw text";
}
