// The package container: entry names and order, determinism, and what a failed or killed write
// leaves behind (nothing of its own, and everything that was there before).
#include "documentwriting.h"
#include "goldenmodel.h"
#include "package/cvpackage.h"
#include "package/cvzipreader.h"
#include "package/package_writer.h"
#include "writertestsupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fcntl.h>
#include <functional>
#include <random>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

using namespace Halvorn;
using namespace WriterTest;

namespace {

const std::string kGolden = std::string(CORVELLE_TEST_DATA) + "/golden/";

IPtr<CvPackage> packageOf(IMediaProject* project) { return newObject<CvPackage>(project); }

bool write(IMediaProjectPackage* package, const std::string& path) {
    return writeProjectPackage(package, toUtf16(path).c_str()).ok();
}

TEST(PackageContainer, AFailedWriteMakesNothingAndLeavesTheTargetAndForeignFoldersAlone) {
    ScratchFolder scratch;
    GoldenMedia media(scratch / "sources");
    auto package = packageOf(buildGoldenProject(media).get());
    const std::string target = scratch / "out/song.corvelle";
    writeFile(target, "the user's earlier package");
    // A folder of the tree's name that the write didn't make is the user's.
    writeFile(scratch / "out/corvtmp/keep.txt", "the user's own file");
    writeFile(scratch / "out/corvtmp-01/keep.txt", "another");
    // A folder at the target can't be replaced by the archive.
    writeFile(scratch / "out/folder.corvelle/inside", "x");
    const auto before = listTree(scratch.path());

    EXPECT_FALSE(write(nullptr, target));
    EXPECT_FALSE(writeProjectPackage(package.get(), nullptr).ok());
    EXPECT_FALSE(write(package.get(), scratch / "missing/a.corvelle"));
    EXPECT_FALSE(write(package.get(), scratch / "sources/"));
    EXPECT_FALSE(write(package.get(), scratch / "out/folder.corvelle"));
    // A package without a project writes no document, and so no archive.
    EXPECT_FALSE(write(packageOf(nullptr).get(), target));
    EXPECT_EQ(listTree(scratch.path()), before);
    EXPECT_EQ(readFile(target), "the user's earlier package");
    // A folder where nothing may be made, not even by the superuser.
    EXPECT_FALSE(write(package.get(), "/proc/corvelle-test.corvelle"));

    ASSERT_TRUE(write(package.get(), target));
    EXPECT_NE(readFile(target), "the user's earlier package");
    for (const ZipEntry& entry : readCentralDirectory(readFile(target)))
        EXPECT_EQ(entry.name.find("keep"), std::string::npos) << entry.name;
    EXPECT_EQ(listTree(scratch.path()), before);
    EXPECT_EQ(readFile(scratch / "out/corvtmp/keep.txt"), "the user's own file");
}

// The same model gives the same bytes, written at once beside another write or alone elsewhere:
// the documents the golden tests check and the media, in entries sorted by name.
TEST(PackageContainer, TwoWritesIntoOneFolderAtOnceEachGetATreeOfTheirOwnAndTheSameEntries) {
    ScratchFolder scratch;
    GoldenMedia media(scratch / "sources");
    // One model each: reading a model converts its texts in place, so threads don't share one.
    auto first = packageOf(buildGoldenProject(media).get());
    auto second = packageOf(buildGoldenProject(media).get());
    writeFile(scratch / "out/.keep", "");
    bool results[2] = {false, false};
    std::thread one([&] { results[0] = write(first.get(), scratch / "out/one.corvelle"); });
    std::thread two([&] { results[1] = write(second.get(), scratch / "out/two.corvelle"); });
    one.join();
    two.join();
    EXPECT_TRUE(results[0]);
    EXPECT_TRUE(results[1]);
    const std::string bytes = readFile(scratch / "out/one.corvelle");
    EXPECT_TRUE(bytes == readFile(scratch / "out/two.corvelle"));
    EXPECT_EQ(listTree(scratch / "out"),
              (std::vector<std::string>{".keep", "one.corvelle", "two.corvelle"}));
    const std::string alone = scratch / "three.corvelle";
    ASSERT_TRUE(write(first.get(), alone));
    EXPECT_TRUE(bytes == readFile(alone));

    // The entries' fixed fields are the zip writer's, checked with it.
    std::vector<std::string> names;
    for (const ZipEntry& entry : readCentralDirectory(bytes))
        names.push_back(entry.name);
    EXPECT_EQ(names, (std::vector<std::string>{"audio/guitar.wav", "metadata.xml",
                                               "plugins/reverb.quorpreset", "project.xml",
                                               "video/movie.mp4"}));
    const std::string unpacked = scratch / "unpacked";
    writeFile(unpacked + "/.keep", "");
    ASSERT_TRUE(CvZipReader().unzipToFolder(String(alone.c_str()), String(unpacked.c_str())));
    EXPECT_TRUE(readFile(unpacked + "/project.xml") == readFile(kGolden + "project.xml"));
    EXPECT_EQ(readFile(unpacked + "/metadata.xml"), readFile(kGolden + "metadata.xml"));
    EXPECT_EQ(readFile(unpacked + "/audio/guitar.wav"), readFile(media.guitar));
}

// Against the file size limit of the test: a take that can't be copied whole (and would pack
// small if the copy's failure went unseen), and two incompressible ones that each fit but
// whose archive doesn't.
TEST(PackageContainer, AWriteThatCantBeFinishedNeverReplacesTheTarget) {
    std::independent_bits_engine<std::mt19937, 8, unsigned> random(7);
    std::string noise(30000, '\0');
    std::generate(noise.begin(), noise.end(), std::ref(random));
    for (const std::vector<std::string>& contents :
         {std::vector<std::string>{std::string(60000, 't')}, {noise, noise}}) {
        ScratchFolder scratch;
        std::vector<std::string> takes;
        for (const std::string& bytes : contents) {
            takes.push_back(scratch / ("take" + std::to_string(takes.size()) + ".wav"));
            writeFile(takes.back(), bytes);
        }
        auto package = packageOf(projectOf(takes).get());
        const std::string target = scratch / "out/song.corvelle";
        writeFile(target, "the user's earlier package");
        bool written = true;
        {
            FileSizeLimit limit(40000);
            ASSERT_TRUE(limit.active());
            written = write(package.get(), target);
        }
        EXPECT_FALSE(written) << contents.size();
        EXPECT_TRUE(readFile(target) == "the user's earlier package");
        EXPECT_EQ(listTree(scratch / "out"), (std::vector<std::string>{"song.corvelle"}));
        // Without the limit the same package goes through.
        ASSERT_TRUE(write(package.get(), target));
        EXPECT_EQ(readCentralDirectory(readFile(target)).size(), 2u + contents.size());
    }
}

TEST(PackageContainer, AWriteClearsOnlyThePartialFilesThatKilledWritesLeft) {
    ScratchFolder scratch;
    writeFile(scratch / "take.wav", "take");
    auto package = packageOf(projectOf({scratch / "take.wav"}).get());
    const std::string out = scratch / "out";
    writeFile(out + "/.song.corvelle.part", "left by a kill");
    writeFile(out + "/.song.corvelle.part-02", "left by another kill");
    writeFile(out + "/.song.corvelle.part-01", "a write still running");
    writeFile(out + "/.song.corvelle.partial", "the user's");
    writeFile(out + "/.other.corvelle.part", "another target's");
    const int running = open((out + "/.song.corvelle.part-01").c_str(), O_RDONLY);
    ASSERT_GE(running, 0);
    ASSERT_EQ(flock(running, LOCK_EX), 0);

    EXPECT_TRUE(write(package.get(), out + "/song.corvelle"));
    close(running);
    EXPECT_EQ(listTree(out),
              (std::vector<std::string>{".other.corvelle.part", ".song.corvelle.part-01",
                                        ".song.corvelle.partial", "song.corvelle"}));
}

} // namespace
