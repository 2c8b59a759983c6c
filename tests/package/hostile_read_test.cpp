// Hostile packages on the read road: paths that lead outside, archives that inflate without
// bound or overlap, entries that can't be decoded.
#include "common/filesizelimit.h"
#include "corvelle/package.h"
#include "corvelle/utf8.h"
#include "packagetestsupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <sys/stat.h>
#include <thread>
#include <utility>

using namespace Halvorn;
using namespace PackageTest;

namespace {

constexpr const char* kSecret = "SECRET-BYTES";

// True when some file below root holds the marker.
bool treeHolds(const std::string& root, const std::string& marker) {
    for (const std::string& name : listTree(root))
        if (readFile(root + "/" + name).find(marker) != std::string::npos)
            return true;
    return false;
}

} // namespace

TEST(HostileRead, NoFileFromOutsideReachesAClientFolderOrARepackedPackage) {
    PrivateTempFolder temp;
    ScratchFolder scratch;
    const std::string outside = scratch / "home";
    writeFile(outside + "/secret.wav", kSecret);
    writeFile(outside + "/notes.txt", kSecret);
    writeFile(outside + "/.hidden/take.wav", kSecret);
    writeFile(outside + "/good.WAV", "a medium of the user's");
    ASSERT_EQ(mkfifo((outside + "/pipe.wav").c_str(), 0600), 0);
    // From the extraction folder in the temporary folder up to the root and down again.
    const std::string climb = "../../../../../../../../.." + outside;
    std::string backslashed = climb;
    std::replace(backslashed.begin(), backslashed.end(), '/', '\\');
    const std::string clips =
        audioClip(climb + "/secret.wav") + audioClip(backslashed + "\\secret.wav") +
        audioClip("audio/../../x/secret.wav") + audioClip(outside + "/notes.txt") +
        audioClip(outside + "/notes.txt", true) + audioClip(outside + "/.hidden/take.wav", true) +
        audioClip(outside + "/../home/secret.wav", true) + audioClip(outside + "/pipe.wav", true) +
        audioClip("audio/packed.wav") + audioClip(outside + "/good.WAV", true);
    const std::string package =
        writePackage(scratch, "evil.corvelle",
                     {{"project.xml", documentWith(clips)}, {"audio/packed.wav", "packed medium"}});

    const std::string client = scratch / "client";
    ReportingClient reporting(client);
    const auto read = readWith(package, reporting);
    ASSERT_TRUE(read);
    EXPECT_EQ(listTree(client),
              (std::vector<std::string>{"Audio/", "Audio/good.WAV", "Audio/packed.wav"}));
    EXPECT_FALSE(treeHolds(client, kSecret));
    EXPECT_EQ(reporting.subjects(kReadRefusedPath),
              (std::vector<std::string>{climb + "/secret.wav", backslashed + "\\secret.wav",
                                        "audio/../../x/secret.wav", outside + "/notes.txt"}));
    EXPECT_EQ(reporting.subjects(kReadRefusedExternal),
              (std::vector<std::string>{outside + "/notes.txt", outside + "/.hidden/take.wav",
                                        outside + "/../home/secret.wav"}));
    EXPECT_TRUE(temp.leftovers().empty());

    // Written again, the refused paths stay outside the new package too.
    const std::string repacked = scratch / "repacked.corvelle", unpacked = scratch / "unpacked";
    ASSERT_TRUE(IPtr<IMediaPackageManager>::adopt(CreatePackageManager())
                    ->writePackage(read.get(), toUtf16(repacked).c_str()));
    ASSERT_EQ(mkdir(unpacked.c_str(), 0700), 0);
    ASSERT_TRUE(unzip(repacked, unpacked));
    EXPECT_EQ(listTree(unpacked),
              (std::vector<std::string>{"audio/", "audio/good.WAV", "audio/packed.wav",
                                        "metadata.xml", "project.xml"}));
    EXPECT_FALSE(treeHolds(unpacked, kSecret));
}

TEST(HostileRead, OnlyStoredAndDeflatedEntriesArriveAndOverlapsAreRefused) {
    PrivateTempFolder temp;
    ScratchFolder scratch;
    const std::string clips = audioClip("audio/plain.wav") + audioClip("audio/bzip.wav") +
                              audioClip("audio/locked.wav") + audioClip("audio/copy1.wav");
    RawEntry bzip{"audio/bzip.wav", "BZh91AY&SY raw bzip2 bytes", 12};
    RawEntry locked{"audio/locked.wav", "encrypted bytes", 0, 1};
    // Names of one length and equal data keep minizip's header check content.
    RawEntry shared{"audio/copy1.wav", std::string(20000, 'p'), 8};
    shared.sharesDataWith = 1;
    const std::string package = writePackage(scratch, "odd.corvelle",
                                             {{"project.xml", documentWith(clips)},
                                              {"audio/plain.wav", std::string(20000, 'p')},
                                              bzip,
                                              locked,
                                              shared});
    const std::string client = scratch / "client";
    ReportingClient reporting(client);
    ASSERT_TRUE(readWith(package, reporting));
    EXPECT_EQ(listTree(client + "/Audio"), (std::vector<std::string>{"plain.wav"}));
    EXPECT_EQ(readFile(client + "/Audio/plain.wav"), std::string(20000, 'p'));
    EXPECT_EQ(reporting.subjects(kReadSkippedEntry),
              (std::vector<std::string>{"audio/bzip.wav", "audio/locked.wav"}));
    EXPECT_EQ(reporting.subjects(kReadOverlappingEntry),
              (std::vector<std::string>{"audio/copy1.wav"}));
    EXPECT_TRUE(temp.leftovers().empty());
}

TEST(HostileRead, InflationAndDocumentsAreBoundedAndASummaryUnpacksOnlyTheDocument) {
    PrivateTempFolder temp;
    ScratchFolder scratch;
    // A few hundred kilobytes that claim 400 MiB: far beyond 100 times their size plus 100 MiB.
    RawEntry bomb{"audio/bomb.wav", "", 8};
    bomb.compressed = deflatedZeros(400ull << 20);
    bomb.statedSize = 400ll << 20;
    const std::string package =
        writePackage(scratch, "bomb.corvelle",
                     {{"project.xml", documentWith(audioClip("audio/bomb.wav"))}, bomb});

    const auto start = std::chrono::steady_clock::now();
    ReportingClient reporting(scratch / "client");
    EXPECT_FALSE(readWith(package, reporting));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    EXPECT_EQ(reporting.subjects(kReadInflationLimit),
              (std::vector<std::string>{"audio/bomb.wav"}));
    EXPECT_TRUE(temp.leftovers().empty());
    EXPECT_FALSE(exists(scratch / "client/Audio/bomb.wav"));

    // A document is bounded too, and the read says why it failed.
    const std::string longTag = writePackage(
        scratch, "tag.corvelle",
        {{"project.xml", "<Project version=\"" + std::string((64u << 20) + 1, 'v') + "\"/>"}});
    ReportingClient tagReport("");
    EXPECT_FALSE(readWith(longTag, tagReport));
    EXPECT_EQ(tagReport.subjects(kReadDocumentTooLarge), (std::vector<std::string>{"project.xml"}));

    // A client that wants no media gets the project without the bomb being touched.
    ReportingClient summary("");
    EXPECT_TRUE(readWith(package, summary));
    EXPECT_EQ(summary.reportCount(), 0u);
}

TEST(HostileRead, AFullDiskFailsTheExtractionOrTheCopyAndLeavesNoHalfFile) {
    PrivateTempFolder temp;
    ScratchFolder scratch;
    const std::string external = scratch / "media/outside.wav";
    writeFile(external, noise(3 << 20));
    const std::string clips = audioClip("audio/big.wav") + audioClip(external, true);
    const std::string packed =
        writePackage(scratch, "packed.corvelle",
                     {{"project.xml", documentWith(clips)}, {"audio/big.wav", noise(3 << 20), 0}});
    const std::string small =
        writePackage(scratch, "small.corvelle", {{"project.xml", documentWith(clips)}});

    ReportingClient full(scratch / "full");
    ReportingClient partly(scratch / "partly");
    IPtr<IMediaProjectPackage> partlyRead;
    {
        TestSupport::FileSizeLimit limit(1 << 20);
        ASSERT_TRUE(limit.active());
        EXPECT_FALSE(readWith(packed, full));
        partlyRead = readWith(small, partly);
    }
    EXPECT_EQ(full.subjects(kReadExtractionFailed), (std::vector<std::string>{"audio/big.wav"}));
    EXPECT_FALSE(exists(scratch / "full/Audio/big.wav"));

    // The external medium couldn't be copied: the read goes on, tells it, and keeps no part.
    ASSERT_TRUE(partlyRead);
    EXPECT_EQ(partly.subjects(kReadCopyFailed), (std::vector<std::string>{external}));
    EXPECT_EQ(listTree(scratch / "partly/Audio"), std::vector<std::string>{});
    EXPECT_TRUE(temp.leftovers().empty());
}

TEST(HostileRead, TheManagerTellsItsThreadsLastReasonAndASuccessClearsIt) {
    PrivateTempFolder temp;
    ScratchFolder scratch;
    const auto manager = IPtr<IMediaPackageManager>::adopt(CreatePackageManager());
    const auto last = queryInterface<IMediaPackageLastError>(manager.get());
    ASSERT_TRUE(last);
    using Reason = std::pair<int32, std::string>;
    auto reason = [&] { return Reason{last->getLastError(), toUtf8(last->getLastErrorMessage())}; };
    const std::string good =
        writePackage(scratch, "good.corvelle", {{"project.xml", "<Project/>"}});
    const std::string bad = writePackage(scratch, "bad.corvelle", {{"project.xml", "<Project>"}});

    ReportingClient client("");
    EXPECT_FALSE(readWith(scratch / "missing.corvelle", client));
    EXPECT_EQ(reason(), (Reason{kPackageNotFound, "no such file"}));
    // Another thread keeps a reason of its own, by whichever manager it asks.
    std::thread([&] {
        EXPECT_EQ(reason(), (Reason{kPackageNoError, ""}));
        ReportingClient other("");
        EXPECT_FALSE(readWith(bad, other));
        EXPECT_EQ(reason(),
                  (Reason{kPackageBadDocument, "project.xml line 1, column 10: no element found"}));
    }).join();
    EXPECT_EQ(reason().first, kPackageNotFound);

    const auto read = readWith(good, client);
    ASSERT_TRUE(read);
    EXPECT_EQ(reason(), (Reason{kPackageNoError, ""}));
    const std::string target = scratch / "none/x.corvelle";
    EXPECT_FALSE(manager->writePackage(read.get(), toUtf16(target).c_str()));
    EXPECT_EQ(reason(), (Reason{kPackageWriteFailed,
                                "cannot write " + target + ": no such file or directory"}));
    EXPECT_TRUE(manager->writePackage(read.get(), toUtf16(scratch / "x.corvelle").c_str()));
    EXPECT_EQ(reason(), (Reason{kPackageNoError, ""}));
    EXPECT_TRUE(temp.leftovers().empty());
}
