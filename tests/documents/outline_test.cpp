// Whole documents of every element family, read and compared with their expected outlines.
//
// Each tests/data/documents/NAME.xml says in its comments what it checks; NAME.txt is the
// model it must give by the format's rules, every node with all its fields.
#include "documenttest.h"
#include "modeloutline.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace Halvorn {
namespace {

using namespace DocumentTest;

std::string readData(const std::string& name) {
    std::ifstream file(std::string(CORVELLE_TEST_DATA) + "/documents/" + name, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

class DocumentOutline : public ::testing::TestWithParam<const char*> {};

TEST_P(DocumentOutline, ReadsAsWritten) {
    const std::string name = GetParam();
    const std::string expected = readData(name + ".txt");
    ASSERT_FALSE(expected.empty()) << name;
    IPtr<CvProject> project = read(readData(name + ".xml"));
    ASSERT_TRUE(project) << name;
    EXPECT_EQ(outline(project.get()), expected);
}

INSTANTIATE_TEST_SUITE_P(Families, DocumentOutline,
                         ::testing::Values("structure-tracks", "structure-devices",
                                           "arrangement-lanes", "arrangement-content",
                                           "arrangement-timeline"));

// The tempo of Transport alone converts beats, at any value that can; one that is not finite or
// not above 0 gives way to 120 bpm, so that no time turns infinite or NaN.
TEST(ArrangementReader, BeatsConvertAtTheTempoOfTransport) {
    auto clipStart = [](const std::string& tempo) {
        IPtr<CvProject> project = read(DocumentTest::project(
            "<Transport><Tempo value=\"" + tempo +
            "\"/></Transport><Structure><Track contentType=\"audio\"/></Structure><Arrangement>"
            "<Lanes timeUnit=\"beats\"><Lanes track=\"0\"><Clips><Clip time=\"8\"/></Clips>"
            "</Lanes></Lanes><TempoAutomation><RealPoint value=\"240\"/></TempoAutomation>"
            "</Arrangement>"));
        IMediaClip* clip = project ? project->getTrack(0)->getClip(0) : nullptr;
        return clip ? clip->getTime()->getStart() : -1.0;
    };
    EXPECT_DOUBLE_EQ(clipStart("60"), 8.0);
    EXPECT_DOUBLE_EQ(clipStart("90"), 60.0 / 90.0 * 8.0);
    EXPECT_DOUBLE_EQ(clipStart("240"), 2.0);
    for (const char* unusable : {"0", "-90", "1e999", "-1e999", "nan", "inf"})
        EXPECT_DOUBLE_EQ(clipStart(unusable), 4.0) << unusable;
    EXPECT_DOUBLE_EQ(clipStart("1e-310"), 0.0) << "8 beats at this tempo overflow";
}

} // namespace
} // namespace Halvorn
