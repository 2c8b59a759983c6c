// Media staging: what reaches the package tree, once, and what a file that can't be had does to
// the document.
#include "documentwriting.h"
#include "writertestsupport.h"

#include <gtest/gtest.h>

using namespace Halvorn;
using namespace WriterTest;

namespace {

TEST(MediaStaging, EachFileOnceAndTheFirstOfANameWins) {
    ScratchFolder scratch;
    writeFile(scratch / "one/take.wav", "first");
    writeFile(scratch / "two/take.wav", "second");
    writeFile(scratch / "one/clip.mp4", "film");
    writeFile(scratch / "one/a.quorpreset", "state a");
    writeFile(scratch / "two/a.quorpreset", "state b");
    writeFile(scratch / "one/odd\x01name.wav", "odd");
    auto project = projectOf({scratch / "one/take.wav", scratch / "two/take.wav",
                              scratch / "one/take.wav", scratch / "one/odd\x01name.wav"},
                             {scratch / "one/clip.mp4", scratch / "one/clip.mp4"},
                             {scratch / "one/a.quorpreset", scratch / "two/a.quorpreset"});
    const std::string tree = scratch / "tree";
    // What a tree holds already stays: a second document into the same tree copies nothing.
    const std::string document = writeProjectDocument(project.get(), tree);
    writeFile(scratch / "one/take.wav", "changed later");
    EXPECT_EQ(writeProjectDocument(project.get(), tree), document);

    EXPECT_EQ(listTree(tree),
              (std::vector<std::string>{"audio/", "audio/odd\xEF\xBF\xBDname.wav", "audio/take.wav",
                                        "plugins/", "plugins/a.quorpreset", "project.xml", "video/",
                                        "video/clip.mp4"}));
    EXPECT_EQ(readFile(tree + "/audio/take.wav"), "first");
    EXPECT_EQ(readFile(tree + "/plugins/a.quorpreset"), "state a");
    EXPECT_EQ(readFile(tree + "/video/clip.mp4"), "film");
    EXPECT_EQ(occurrences(document, "<File path=\"audio/take.wav\""), 3u)
        << "every reference points at the one entry";
    EXPECT_TRUE(contains(document, "<State path=\"plugins/a.quorpreset\" external=\"false\" />"));
    EXPECT_EQ(readFile(scratch / "two/take.wav"), "second") << "sources are only read";
    // A name that XML can't carry is staged under the name that the document gives.
    EXPECT_TRUE(contains(document, "<File path=\"audio/odd\xEF\xBF\xBDname.wav\""));
    EXPECT_EQ(readFile(tree + "/audio/odd\xEF\xBF\xBDname.wav"), "odd");
}

TEST(MediaStaging, AFileThatCantBeHadIsLeftOutAndTheDocumentGoesOn) {
    ScratchFolder scratch;
    writeFile(scratch / "folder.wav/inside", "a folder, not a file");
    writeFile(scratch / "good.wav", "good");
    auto project = projectOf(
        {scratch / "folder.wav", scratch / "gone.wav", "", scratch / "..", scratch / "good.wav"},
        {scratch / "gone.mp4"}, {scratch / "gone.quorpreset", "plugins/", ""});
    const std::string tree = scratch / "tree";
    const std::string document = writeProjectDocument(project.get(), tree);
    std::string message;
    EXPECT_TRUE(isWellFormed(document, &message)) << message;

    // Four audio events keep their place as a Clip without child; the fifth has its file.
    const std::string bare = "<Clip contentTimeUnit=\"seconds\" time=\"0\" duration=\"0\" />";
    EXPECT_EQ(occurrences(document, bare), 4u) << document;
    EXPECT_TRUE(contains(document, "<File path=\"audio/good.wav\" external=\"false\" />"));
    EXPECT_FALSE(contains(document, "<Video")) << "a video without its file is left out";
    // A state is written all the same, with the name its file would have had.
    EXPECT_TRUE(
        contains(document, "<State path=\"plugins/gone.quorpreset\" external=\"false\" />"));
    EXPECT_EQ(occurrences(document, "<State path=\"plugins/\" external=\"false\" />"), 2u);
    EXPECT_EQ(listTree(tree), (std::vector<std::string>{"audio/", "audio/good.wav", "plugins/",
                                                        "project.xml", "video/"}));
}

} // namespace
