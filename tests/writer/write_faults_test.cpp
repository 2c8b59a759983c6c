// Faults on the write road: a medium that can't be copied whole, partial files of killed
// writes, numbers that no reader could take.
#include "documentwriting.h"
#include "model/cvevent.h"
#include "model/cvparameter.h"
#include "model/cvproject.h"
#include "model/cvtrack.h"
#include "package/cvpackage.h"
#include "package/package_writer.h"
#include "writertestsupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using namespace Halvorn;
using namespace WriterTest;

namespace {

IPtr<CvProject> projectWithTake(const std::string& take) {
    auto project = newObject<CvProject>("App", "1");
    auto track = newObject<CvTrack>(kContentAudio, "t");
    auto clip = newObject<CvClip>(kEventAudio, String());
    auto event = newObject<CvAudioEvent>(String());
    event->setFile(utf16(take).c_str(), false);
    clip->addEvent(event.get());
    track->addClip(clip.get());
    project->addTrack(track.get());
    return project;
}

bool writeTo(CvProject* project, const std::string& target) {
    auto package = newObject<CvPackage>(project);
    return writeProjectPackage(package.get(), utf16(target).c_str()).ok();
}

} // namespace

TEST(WriteFaults, AMediumThatCantBeCopiedWholeFailsTheWriteAndKeepsTheOldTarget) {
    ScratchFolder scratch;
    writeFile(scratch / "take.wav", std::string(300000, 't'));
    auto project = projectWithTake(scratch / "take.wav");
    const std::string target = scratch / "out/song.corvelle";
    writeFile(target, "the user's earlier package");
    bool written = true;
    {
        FileSizeLimit limit(100000);
        ASSERT_TRUE(limit.active());
        written = writeTo(project.get(), target);
    }
    EXPECT_FALSE(written);
    EXPECT_EQ(readFile(target), "the user's earlier package");
    EXPECT_EQ(listTree(scratch / "out"), (std::vector<std::string>{"song.corvelle"}));
}

TEST(WriteFaults, AWriteClearsOnlyThePartialFilesThatKilledWritesLeft) {
    ScratchFolder scratch;
    writeFile(scratch / "take.wav", "take");
    auto project = projectWithTake(scratch / "take.wav");
    const std::string out = scratch / "out";
    writeFile(out + "/.song.corvelle.part", "left by a kill");
    writeFile(out + "/.song.corvelle.part-02", "left by another kill");
    writeFile(out + "/.song.corvelle.part-01", "a write still running");
    writeFile(out + "/.song.corvelle.partial", "the user's");
    writeFile(out + "/.other.corvelle.part", "another target's");
    const int running = open((out + "/.song.corvelle.part-01").c_str(), O_RDONLY);
    ASSERT_GE(running, 0);
    ASSERT_EQ(flock(running, LOCK_EX), 0);

    EXPECT_TRUE(writeTo(project.get(), out + "/song.corvelle"));
    close(running);
    EXPECT_EQ(listTree(out),
              (std::vector<std::string>{".other.corvelle.part", ".song.corvelle.part-01",
                                        ".song.corvelle.partial", "song.corvelle"}));
}

TEST(WriteFaults, ANonFiniteNumberIsWrittenAsZero) {
    ScratchFolder scratch;
    for (double odd : {INFINITY, -INFINITY, NAN}) {
        auto project = newObject<CvProject>("App", "1");
        auto tempo = newObject<CvParameter>(kUnitBpm, String());
        tempo->setValue(odd);
        project->setTempo(tempo.get());
        bool written = false;
        const std::string document =
            writeProjectDocument(project.get(), scratch / "tree", &written);
        EXPECT_TRUE(written);
        EXPECT_FALSE(contains(document, "inf")) << document;
        EXPECT_FALSE(contains(document, "nan")) << document;
        EXPECT_TRUE(contains(document, "<Tempo unit=\"bpm\" value=\"0\" />")) << document;
    }
}
