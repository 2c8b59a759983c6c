// The reader's compact element tree: names interned per document, values in shared blocks,
// children linked by index.
#include "documents/cvxmltree.h"
#include "documenttest.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Halvorn {
namespace {

// Opens an element with the attributes given as name, value, name, value...
void open(CvXmlTree& tree, const std::string& name, const std::vector<std::string>& pairs = {}) {
    std::vector<const char8*> list;
    for (const std::string& text : pairs)
        list.push_back(text.c_str());
    list.push_back(nullptr);
    tree.open(name.c_str(), list.data(), int32(pairs.size() / 2));
}

std::string names(const std::vector<CvXmlElement>& elements) {
    std::string result;
    for (const CvXmlElement& element : elements)
        result += std::string(element.getName()) + "=" +
                  (element.findAttributeValue("n") ? element.findAttributeValue("n") : "-") + " ";
    return result;
}

TEST(XmlTree, TwoDocumentsInternTheirNamesApart) {
    // The names come in another order in each document, so their numbers differ; every
    // question comes with a text of its own, never one of the tree's.
    CvXmlTree first;
    open(first, "Project");
    open(first, "Track", {"n", "1", "id", "t"});
    open(first, "Clip", {"n", "2"});
    first.close();
    first.close();
    open(first, "Clip", {"n", "3"});
    first.close();
    first.close();

    CvXmlTree second;
    open(second, "Project");
    open(second, "Clip", {"n", "4"});
    second.close();
    open(second, "Track", {"n", "5", "n2", ""});
    second.close();
    EXPECT_FALSE(second.root()); // still open
    second.close();

    const std::string clip = "Clip";
    const std::string track = "Track";
    const CvXmlElement a = first.root();
    const CvXmlElement b = second.root();
    EXPECT_EQ(names(a.getChildrenByName(clip.c_str())), "Clip=3 ");
    EXPECT_EQ(names(a.getDescendantsByName(clip.c_str())), "Clip=2 Clip=3 ");
    EXPECT_EQ(names(b.getChildrenByName(clip.c_str())), "Clip=4 ");
    EXPECT_EQ(names(b.getChildren()), "Clip=4 Track=5 ");
    EXPECT_STREQ(a.findChild(track.c_str()).findAttributeValue(std::string("id").c_str()), "t");
    EXPECT_STREQ(b.findDescendant(track.c_str()).findAttributeValue("n2"), ""); // empty, present
    EXPECT_EQ(b.findChild(track.c_str()).findAttributeValue("id"), nullptr);
    EXPECT_EQ(a.findDescendant(clip.c_str()).findAttributeValue("n"), std::string("2"));
    EXPECT_FALSE(a.findChild("Marker"));
    EXPECT_TRUE(a.getDescendantsByName("Marker").empty());
    EXPECT_FALSE(CvXmlElement().findChild(clip.c_str()));

    first.clear();
    EXPECT_FALSE(first.root());
    EXPECT_EQ(names(b.getChildren()), "Clip=4 Track=5 "); // the other tree stands
}

TEST(XmlTree, ManyChildrenAndLongValuesKeepTheirOrderAndText) {
    CvXmlTree tree;
    open(tree, "Notes");
    const std::string longValue(200000, 'x');
    for (int i = 0; i < 10000; ++i) {
        open(tree, i % 1000 == 0 ? "Long" : "Note",
             {"n", std::to_string(i), "v", i % 1000 == 0 ? longValue : "short"});
        tree.close();
    }
    tree.close();
    const std::vector<CvXmlElement> notes = tree.root().getChildrenByName("Note");
    const std::vector<CvXmlElement> longs = tree.root().getChildrenByName("Long");
    ASSERT_EQ(notes.size(), 9990u);
    ASSERT_EQ(longs.size(), 10u);
    EXPECT_STREQ(notes.front().findAttributeValue("n"), "1");
    EXPECT_STREQ(notes.back().findAttributeValue("n"), "9999");
    for (const CvXmlElement& element : longs)
        EXPECT_EQ(std::string(element.findAttributeValue("v")), longValue);
    EXPECT_STREQ(notes[4095].findAttributeValue("v"), "short");
}

TEST(XmlTree, OneReaderReadsTwoDocumentsWithTheirOwnNames) {
    const std::string tracks =
        "<Structure><Track contentType=\"audio\" id=\"a\" name=\"First\"/>"
        "<Track contentType=\"notes\" id=\"b\" name=\"Second\"/></Structure>";
    const std::string lanes = "<Arrangement><Lanes><Lanes track=\"b\"><Clips><Clip time=\"1\" "
                              "duration=\"2\"/></Clips></Lanes></Lanes></Arrangement>";
    IPtr<CvXmlReader> reader = newObject<CvXmlReader>();
    for (const std::string& xml :
         {DocumentTest::project(tracks + lanes), DocumentTest::project(lanes + tracks)}) {
        MemoryStream stream(const_cast<char*>(xml.data()), xml.size());
        const auto project = IPtr<CvProject>::adopt(reader->readProject(&stream));
        ASSERT_TRUE(project);
        ASSERT_EQ(project->getTrackCount(), 2u);
        EXPECT_EQ(DocumentTest::utf8(project->getAllTracks()[0]->getName()), "First");
        EXPECT_EQ(project->getTrack(0)->getClipCount(), 0u);
        EXPECT_EQ(project->getTrack(1)->getClipCount(), 1u);
    }
}

} // namespace
} // namespace Halvorn
