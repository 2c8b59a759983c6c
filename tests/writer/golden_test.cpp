// Golden documents: a model built in code gives exactly the hand-written project.xml and
// metadata.xml (what reaches the tree beside them is the staging tests' to check).
#include "documentwriting.h"
#include "goldenmodel.h"
#include "writertestsupport.h"

#include <gtest/gtest.h>

using namespace WriterTest;

namespace {

const std::string kGolden = std::string(CORVELLE_TEST_DATA) + "/golden/";

// The metadata document is one skeleton, whatever the project.
TEST(GoldenDocument, TheGoldenModelGivesTheGoldenProjectAndTheMetadataSkeleton) {
    ScratchFolder scratch;
    GoldenMedia media(scratch / "sources");
    auto project = buildGoldenProject(media);
    bool written = false;
    const std::string document = writeProjectDocument(project.get(), scratch / "tree", &written);
    EXPECT_TRUE(written);
    const std::string expected = readFile(kGolden + "project.xml");
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(document, expected); // gtest shows the lines that differ
    EXPECT_EQ(writeMetaDataDocument(scratch / "tree"), readFile(kGolden + "metadata.xml"));
}

} // namespace
