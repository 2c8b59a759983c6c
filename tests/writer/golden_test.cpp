// Golden documents: a model built in code gives exactly the hand-written project.xml, and the
// media it names are staged once each into the tree.
#include "documentwriting.h"
#include "goldenmodel.h"
#include "writertestsupport.h"

#include <gtest/gtest.h>

using namespace WriterTest;

namespace {

const std::string kGolden = std::string(CORVELLE_TEST_DATA) + "/golden/";

TEST(GoldenDocument, TheGoldenModelGivesTheGoldenProjectAndStagesEachFileOnce) {
    ScratchFolder scratch;
    GoldenMedia media(scratch / "sources");
    auto project = buildGoldenProject(media);
    const std::string tree = scratch / "tree";
    bool written = false;
    const std::string document = writeProjectDocument(project.get(), tree, &written);
    EXPECT_TRUE(written);
    const std::string expected = readFile(kGolden + "project.xml");
    ASSERT_FALSE(expected.empty());
    EXPECT_TRUE(document == expected) << firstDifference(expected, document);

    // One entry per leaf name; the first guitar.wav won, the missing one left no trace.
    EXPECT_EQ(listTree(tree), (std::vector<std::string>{"audio/", "audio/guitar.wav", "plugins/",
                                                        "plugins/reverb.quorpreset", "project.xml",
                                                        "video/", "video/movie.mp4"}));
    EXPECT_EQ(readFile(tree + "/audio/guitar.wav"), readFile(media.guitar));
    EXPECT_EQ(readFile(tree + "/video/movie.mp4"), readFile(media.movie));
    EXPECT_EQ(readFile(tree + "/plugins/reverb.quorpreset"), readFile(media.state));
    EXPECT_EQ(readFile(media.guitarTwin), "RIFF second guitar, never packed")
        << "the sources are only read";
}

TEST(GoldenDocument, MetadataIsTheSameSkeletonForAnyProject) {
    ScratchFolder scratch;
    const std::string expected = readFile(kGolden + "metadata.xml");
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(writeMetaDataDocument(scratch / "one"), expected);
    EXPECT_EQ(writeMetaDataDocument(scratch / "two"), expected);
}

} // namespace
