// The host-free door: the client's table of folders, the package's hold on its project, and
// readPackage putting media into the client's folders, failing, and running in threads.
#include "corvelle/package.h"
#include "corvelle/ptr.h"
#include "model/cvfile.h"
#include "model/cvproject.h"
#include "package/cvpackage.h"
#include "package/cvpackagemanagerclient.h"
#include "packagetestsupport.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace Halvorn;
using namespace PackageTest;

namespace {

// One audio track with four audio events (packed, missing, external, external and missing), a
// device with a state file on its channel, and a video track.
std::string projectDocument(const std::string& externalFile) {
    return "<Project version=\"1.0\"><Application name=\"TestDAW\" version=\"2.5\"/><Structure>"
           "<Track contentType=\"audio\" loaded=\"true\" id=\"t1\" name=\"Drums\">"
           "<Channel role=\"regular\" audioChannels=\"2\" id=\"c1\"><Devices>"
           "<Quor3Plugin id=\"d1\" deviceRole=\"audioFX\" deviceName=\"Verb\">"
           "<Enabled value=\"true\"/><State path=\"plugins/verb.quorpreset\" external=\"false\"/>"
           "</Quor3Plugin></Devices></Channel></Track>"
           "<Track contentType=\"video\" loaded=\"true\" id=\"t2\" name=\"Film\"/>"
           "</Structure>"
           "<Arrangement><Lanes timeUnit=\"seconds\">"
           "<Lanes track=\"t1\"><Clips><Clip time=\"0\" duration=\"4\"><Clips>" +
           audioClip("audio/kick.wav") + audioClip("audio/missing.wav") +
           audioClip(externalFile, true) + audioClip("/no/such/file.wav", true) +
           "</Clips></Clip></Clips></Lanes>"
           "<Lanes track=\"t2\"><Clips><Clip time=\"0\" duration=\"1\"><Video duration=\"1\">"
           "<File path=\"video/film.mp4\" external=\"false\"/></Video></Clip></Clips></Lanes>"
           "</Lanes></Arrangement></Project>\n";
}

std::vector<RawEntry> sampleFiles(const std::string& externalFile) {
    return {{"project.xml", projectDocument(externalFile)},
            {"metadata.xml", "<MetaData/>"},
            {"audio/kick.wav", std::string(50000, 'k')},
            {"video/film.mp4", "film"},
            {"plugins/verb.quorpreset", "state"}};
}

// The files of a read project, in accessor order: type, path, and whether it is external.
std::vector<std::string> filesOf(IMediaProjectPackage* package) {
    std::vector<std::string> files;
    auto* project = fobjectCast<CvProject>(package ? package->getProject() : nullptr);
    if (!project)
        return files;
    for (ICvFileAccessor* accessor : project->getFileAccessors()) {
        CvFile* file = accessor->getFile();
        files.push_back(std::to_string(file->getType()) + " " + String(file->getPath()).text8() +
                        (file->isExternal() ? " external" : ""));
    }
    return files;
}

IPtr<IMediaProjectPackage> read(IMediaPackageManager* manager, const std::string& path,
                                IMediaPackageManagerClient* client) {
    const String text(path.c_str());
    return IPtr<IMediaProjectPackage>::adopt(manager->readPackage(text.text16(), client));
}

IPtr<CvPackageManagerClient> makeClient(const std::string& base, bool wantVideo) {
    auto client = newObject<CvPackageManagerClient>();
    client->setPathForFileType(kCvFileAudio, String((base + "/Audio").c_str()));
    client->setPathForFileType(kCvFilePreset, String((base + "\\Preset").c_str()));
    client->setPathForFileType(kCvFileMidi, String((base + "/Midi").c_str()));
    if (wantVideo)
        client->setPathForFileType(kCvFileVideo, String((base + "/Video").c_str()));
    return client;
}

} // namespace

TEST(PackageManager, CopiesMediaIntoTheClientFoldersAndRemovesTheExtraction) {
    PrivateTempFolder temp;
    ScratchFolder scratch;
    writeFile(scratch / "elsewhere/loop.wav", "external loop");
    const std::string package =
        writePackage(scratch, "song.corvelle", sampleFiles(scratch / "elsewhere/loop.wav"));
    const std::string base = scratch / "host";

    IPtr<IMediaProjectPackage> result;
    {
        auto manager = IPtr<IMediaPackageManager>::adopt(CreatePackageManager());
        ASSERT_TRUE(manager);
        auto client = makeClient(base, false);
        result = read(manager.get(), package, client.get());
        ASSERT_TRUE(result);
        EXPECT_EQ(client->refCount(), 1); // borrowed only
    }
    // The package outlives the manager and keeps its project.
    IMediaProject* project = result->getProject();
    ASSERT_NE(project, nullptr);
    EXPECT_EQ(String(project->getApplicationName()), String("TestDAW"));
    EXPECT_TRUE(temp.leftovers().empty());

    // A medium without a source, and a video when no video folder is wanted, stay unchanged.
    EXPECT_EQ(
        filesOf(result.get()),
        (std::vector<std::string>{"2 " + base + "/Audio/kick.wav", "2 audio/missing.wav",
                                  "2 " + base + "/Audio/loop.wav", "2 /no/such/file.wav external",
                                  "4 video/film.mp4", "1 " + base + "/Preset/verb.quorpreset"}));
    EXPECT_TRUE(readFile(base + "/Audio/kick.wav") == std::string(50000, 'k'));
    EXPECT_EQ(readFile(base + "/Audio/loop.wav"), "external loop");
    EXPECT_EQ(readFile(base + "/Preset/verb.quorpreset"), "state");
    // No file of the project is MIDI, so that folder is never made.
    EXPECT_EQ(listTree(base),
              (std::vector<std::string>{"Audio/", "Audio/kick.wav", "Audio/loop.wav", "Preset/",
                                        "Preset/verb.quorpreset"}));
}

TEST(PackageManager, KeepsExistingTargetsAndStepsAroundATakenTemporaryName) {
    PrivateTempFolder temp;
    ScratchFolder scratch;
    const std::string package = writePackage(scratch, "song.corvelle", sampleFiles("/nothing"));
    const std::string base = scratch / "host";
    writeFile(base + "/Audio/kick.wav", "already here");
    writeFile(temp.path() + "/song/keep.txt", "someone else's");

    auto manager = IPtr<IMediaPackageManager>::adopt(CreatePackageManager());
    auto client = makeClient(base, true);
    auto result = read(manager.get(), package, client.get());
    ASSERT_TRUE(result);
    const auto files = filesOf(result.get());
    ASSERT_EQ(files.size(), 6u);
    EXPECT_EQ(files[0], "2 " + base + "/Audio/kick.wav");
    EXPECT_EQ(readFile(base + "/Audio/kick.wav"), "already here");
    EXPECT_EQ(files[4], "4 " + base + "/Video/film.mp4");
    EXPECT_EQ(temp.leftovers(), (std::vector<std::string>{"song/", "song/keep.txt"}));
    EXPECT_EQ(readFile(temp.path() + "/song/keep.txt"), "someone else's");
}

TEST(PackageManager, UnreadablePackagesGiveNullAndLeaveNothingBehind) {
    PrivateTempFolder temp;
    ScratchFolder scratch;
    auto manager = IPtr<IMediaPackageManager>::adopt(CreatePackageManager());
    auto client = makeClient(scratch / "host", true);
    const String somePath("/x.corvelle");
    EXPECT_EQ(manager->readPackage(nullptr, client.get()), nullptr);
    EXPECT_EQ(manager->readPackage(somePath.text16(), nullptr), nullptr);
    // Missing, foreign and malformed packages are the last-reason and tool tests' to read.
    EXPECT_FALSE(read(manager.get(),
                      writePackage(scratch, "wrongroot.corvelle", {{"project.xml", "<Song/>"}}),
                      client.get()));
    EXPECT_TRUE(temp.leftovers().empty());

    // Every cut of a good package reads or fails cleanly; names that climb out are the zip
    // reader's to skip, tested with it.
    const std::string whole =
        readFile(writePackage(scratch, "whole.corvelle", sampleFiles("/nothing")));
    for (size_t cut = 0; cut < whole.size(); cut += 211) {
        writeFile(scratch / "cut.corvelle", whole.substr(0, cut));
        (void)read(manager.get(), scratch / "cut.corvelle", client.get());
    }
    EXPECT_TRUE(temp.leftovers().empty());
}

TEST(PackageManager, ConcurrentReadsOfOnePackageAreIndependent) {
    PrivateTempFolder temp;
    ScratchFolder scratch;
    const std::string package = writePackage(scratch, "song.corvelle", sampleFiles("/nothing"));
    auto manager = IPtr<IMediaPackageManager>::adopt(CreatePackageManager());
    constexpr int kThreads = 6;
    constexpr int kRounds = 4;
    std::atomic<int> good{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            // Half the threads share one client folder, the others have their own.
            const std::string base = scratch / ("host" + std::to_string(t % 2 ? t : 0));
            auto client = makeClient(base, true);
            for (int round = 0; round < kRounds; ++round) {
                auto result = read(manager.get(), package, client.get());
                const auto files = filesOf(result.get());
                if (files.size() == 6 && files[0] == "2 " + base + "/Audio/kick.wav" &&
                    readFile(base + "/Audio/kick.wav").size() == 50000 &&
                    files[5] == "1 " + base + "/Preset/verb.quorpreset")
                    ++good;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(good.load(), kThreads * kRounds);
    EXPECT_TRUE(temp.leftovers().empty());
}

TEST(PackageClient, KeepsOneRowPerTypeWithTheLatestFolder) {
    CvPackageManagerClient client;
    EXPECT_EQ(client.getPathForFileType(2), nullptr);
    client.setPathForFileType(2, String("/a/Audio"));
    client.setPathForFileType(4, String("/a/Video"));
    client.setPathForFileType(2, String("/b/Audio"));
    EXPECT_EQ(String(client.getPathForFileType(2)), String("/b/Audio"));
    EXPECT_EQ(String(client.getPathForFileType(4)), String("/a/Video"));
    EXPECT_EQ(client.getPathForFileType(3), nullptr);
    EXPECT_EQ(client.getPathForFileType(-1), nullptr);

    auto face = queryInterface<IMediaPackageManagerClient>(static_cast<FObject*>(&client));
    ASSERT_TRUE(face);
    EXPECT_EQ(String(face->getPathForFileType(4)), String("/a/Video"));
}

TEST(Package, HoldsItsProjectUntilItGoes) {
    auto project = newObject<CvProject>(String("App"), String("1"));
    auto* package = new CvPackage(project.get());
    EXPECT_EQ(project->refCount(), 2);
    EXPECT_EQ(package->getProject(), static_cast<IMediaProject*>(project.get()));
    EXPECT_TRUE(queryInterface<IMediaProjectPackage>(static_cast<FObject*>(package)));
    package->release();
    EXPECT_EQ(project->refCount(), 1);

    CvPackage empty(nullptr);
    EXPECT_EQ(empty.getProject(), nullptr);
}
