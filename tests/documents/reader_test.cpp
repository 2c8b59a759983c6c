// The document reader's frame: what stops it, Application and Transport, hostile documents.
#include "documenttest.h"

#include "common/testfiles.h"

#include <gtest/gtest.h>

#include <string>

namespace Halvorn {
namespace {

using namespace DocumentTest;

TEST(XmlReader, OnlyARootNamedProjectIsAProject) {
    // What an empty project holds is in the outlines of the documents without Transport.
    EXPECT_TRUE(read("<Project/>"));
    EXPECT_FALSE(read("<project/>"));
    EXPECT_FALSE(read("<Projects/>"));
    EXPECT_FALSE(read("<Structure><Project/></Structure>"));
    // Bytes that aren't UTF-8 are malformed, whatever encoding the declaration names.
    EXPECT_FALSE(read("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><Project><Application "
                      "name=\"Caf\xE9\"/></Project>"));
}

TEST(XmlReader, AFailedReadingSaysWhyAndWhereAndASuccessClearsIt) {
    IPtr<CvXmlReader> reader = newObject<CvXmlReader>();
    auto readWith = [&](std::string xml) {
        MemoryStream stream(xml.data(), xml.size());
        return IPtr<CvProject>::adopt(reader->readProject(&stream));
    };
    EXPECT_FALSE(readWith("<Project>\n  <Structure>\n    </Project>"));
    EXPECT_EQ(reader->lastError().kind, DocumentError::kMalformed);
    EXPECT_STREQ(reader->lastError().message, "mismatched tag");
    EXPECT_EQ(reader->lastError().line, 3);
    EXPECT_EQ(reader->lastError().column, 7);
    EXPECT_FALSE(readWith("<Song/>"));
    EXPECT_EQ(reader->lastError().kind, DocumentError::kNotProject);
    EXPECT_TRUE(readWith("<Project/>"));
    EXPECT_EQ(reader->lastError().kind, DocumentError::kNone);
    EXPECT_EQ(reader->lastError().line, 0);
}

TEST(XmlReader, ReadsUtf8WhateverTheDeclarationSaysAndIgnoresWhatFollowsTheRoot) {
    IPtr<CvProject> project =
        read("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><Project><Application "
             "name=\"Caf\xC3\xA9 &amp; &#x1F3B5;\" version=\"9.2\"/></Project>");
    ASSERT_TRUE(project);
    EXPECT_EQ(String(project->getApplicationName()), String(u"Caf\u00e9 & \U0001F3B5"));
    EXPECT_EQ(utf8(project->getApplicationVersion()), "9.2");

    // A second root, or any junk behind the first, doesn't count as malformed.
    IPtr<CvProject> followed =
        read("<Project><Application name=\"First\"/></Project><Project><Application "
             "name=\"Second\"/></Project>");
    ASSERT_TRUE(followed);
    EXPECT_EQ(utf8(followed->getApplicationName()), "First");
}

TEST(XmlReader, TransportGivesTempoAndSignatureWithTheirDefaults) {
    IPtr<CvProject> full =
        read(project("<Application name=\"Host\" version=\"2.1\"/><Transport>"
                     "<Tempo id=\"t1\" unit=\"bpm\" value=\"92,5\" min=\"20\" max=\"250\"/>"
                     "<TimeSignature id=\"s1\" numerator=\"7\" denominator=\"8\"/></Transport>"));
    ASSERT_TRUE(full);
    EXPECT_EQ(utf8(full->getApplicationName()), "Host");
    CvParameter* tempo = full->getTempo();
    EXPECT_DOUBLE_EQ(tempo->getValue(), 92.5);
    EXPECT_DOUBLE_EQ(tempo->getMin(), 20.0);
    EXPECT_DOUBLE_EQ(tempo->getMax(), 250.0);
    EXPECT_EQ(tempo->getUnit(), static_cast<uint32>(kUnitBpm));
    EXPECT_EQ(utf8(tempo->getId()), "t1");
    EXPECT_EQ(full->getTimeSignature()->getNumerator(), 7);
    EXPECT_EQ(full->getTimeSignature()->getDenominator(), 8);
    EXPECT_EQ(utf8(full->getTimeSignature()->getId()), "s1");

    // Present without attributes: the format's defaults, which differ from the model's.
    IPtr<CvProject> bare =
        read(project("<Application/><Transport><Tempo/><TimeSignature/></Transport>"));
    ASSERT_TRUE(bare);
    EXPECT_EQ(utf8(bare->getApplicationName()), "DAW");
    EXPECT_EQ(utf8(bare->getApplicationVersion()), "1.0");
    // The tempo's other defaults, and the model's own tempo without a Tempo element, are in the
    // outlines.
    EXPECT_DOUBLE_EQ(bare->getTempo()->getValue(), 120.0);
    EXPECT_EQ(utf8(bare->getTimeSignature()->getId()), "0");
    EXPECT_EQ(bare->getTimeSignature()->getNumerator(), 4);

    // Present texts are always parsed: empty is 0, overflow is 0, integers cut to 16 bits.
    IPtr<CvProject> odd = read(
        project("<Application name=\"\"/><Transport><Tempo value=\"\" min=\"1e999\" max=\"nan\"/>"
                "<TimeSignature numerator=\"65543\" denominator=\"x3\"/></Transport>"));
    ASSERT_TRUE(odd);
    EXPECT_EQ(utf8(odd->getApplicationName()), "");
    EXPECT_EQ(odd->getTempo()->getValue(), 0.0);
    EXPECT_EQ(odd->getTempo()->getMin(), 0.0);
    EXPECT_EQ(odd->getTempo()->getMax(), 0.0);
    EXPECT_EQ(odd->getTimeSignature()->getNumerator(), 7);
    EXPECT_EQ(odd->getTimeSignature()->getDenominator(), 3);

    // Only direct children count.
    IPtr<CvProject> nested =
        read(project("<Structure><Transport><Tempo value=\"60\"/></Transport></Structure>"
                     "<Tempo value=\"70\"/>"));
    ASSERT_TRUE(nested);
    EXPECT_DOUBLE_EQ(nested->getTempo()->getValue(), 120.0);
}

TEST(XmlReader, DeepDocumentsAreMalformedWithinBoundedStack) {
    auto nest = [](int depth) {
        std::string xml = "<Project>";
        for (int i = 1; i < depth; ++i)
            xml += "<a>";
        for (int i = 1; i < depth; ++i)
            xml += "</a>";
        return xml + "</Project>";
    };
    EXPECT_TRUE(read(nest(CvXmlReader::kMaxDepth)));
    EXPECT_FALSE(read(nest(CvXmlReader::kMaxDepth + 1)));

    // Far deeper, unclosed or closed: null, and no stack overflow in teardown.
    EXPECT_FALSE(read(nest(100000)));
    std::string open = "<Project>";
    for (int i = 0; i < 100000; ++i)
        open += "<Track contentType=\"tracks\">";
    EXPECT_FALSE(read(open));

    // Deep folder tracks within the bound are read whole.
    std::string tracks;
    const int levels = CvXmlReader::kMaxDepth - 3;
    for (int i = 0; i < levels; ++i)
        tracks += "<Track contentType=\"tracks\" id=\"t" + std::to_string(i) + "\">";
    for (int i = 0; i < levels; ++i)
        tracks += "</Track>";
    IPtr<CvProject> deep = read(project("<Structure>" + tracks + "</Structure>"));
    ASSERT_TRUE(deep);
    EXPECT_EQ(deep->getAllTracks().total(), levels);
    EXPECT_TRUE(deep->findTrack(String(("t" + std::to_string(levels - 1)).c_str())));
}

TEST(XmlReader, HostileContentLeavesOutOnlyWhatItSpoils) {
    // An element's attributes past the bound are not read; those before it are.
    std::string many;
    for (int i = 0; i < 100000; ++i)
        many += " a" + std::to_string(i) + "=\"" + std::to_string(i) + "\"";
    IPtr<CvProject> first = read(project("<Application name=\"Kept\"" + many + "/>"));
    ASSERT_TRUE(first);
    EXPECT_EQ(utf8(first->getApplicationName()), "Kept");
    IPtr<CvProject> last = read(project("<Application" + many + " name=\"Lost\"/>"));
    ASSERT_TRUE(last);
    EXPECT_EQ(utf8(last->getApplicationName()), "DAW");

    // Siblings by the hundred thousand are read whole (the test's time limit catches a quadratic
    // read).
    std::string notes;
    for (int i = 0; i < 100000; ++i)
        notes += "<Note/>";
    IPtr<CvProject> dense = read(
        project("<Structure><Track contentType=\"notes\"/></Structure><Arrangement><Lanes><Lanes "
                "track=\"0\"><Clips><Clip><Notes>" +
                notes + "</Notes></Clip></Clips></Lanes></Lanes></Arrangement>"));
    ASSERT_TRUE(dense);
    EXPECT_EQ(dense->getTrack(0)->getClip(0)->getEventCount(), 100000u);

    // Entity expansion bombs are refused by the parser's amplification limit.
    std::string bomb = "<?xml version=\"1.0\"?><!DOCTYPE Project [<!ENTITY a0 \"xxxxxxxxxx\">";
    for (int i = 1; i < 10; ++i) {
        std::string previous = "&a" + std::to_string(i - 1) + ";";
        std::string ten;
        for (int k = 0; k < 10; ++k)
            ten += previous;
        bomb += "<!ENTITY a" + std::to_string(i) + " \"" + ten + "\">";
    }
    bomb += "]><Project><Application name=\"&a9;\"/></Project>";
    EXPECT_FALSE(read(bomb));
}

TEST(XmlReader, ReadsFilesByPathAndNothingElse) {
    TestSupport::ScratchFolder scratch;
    const std::string& folder = scratch.path();
    const std::string file = scratch / "project.xml";
    TestSupport::writeFile(file, project("<Application name=\"OnDisk\"/>"));

    IPtr<CvXmlReader> reader = newObject<CvXmlReader>();
    IPtr<CvProject> project = IPtr<CvProject>::adopt(reader->readProject(String(file.c_str())));
    ASSERT_TRUE(project);
    EXPECT_EQ(utf8(project->getApplicationName()), "OnDisk");
    // The same reader reads again, and a failure after a success gives null.
    EXPECT_FALSE(
        IPtr<CvProject>::adopt(reader->readProject(String((folder + "/none.xml").c_str()))));
    EXPECT_FALSE(IPtr<CvProject>::adopt(reader->readProject(String(folder.c_str()))));
    IPtr<CvProject> again = IPtr<CvProject>::adopt(reader->readProject(String(file.c_str())));
    ASSERT_TRUE(again);
    EXPECT_NE(again.get(), project.get());
    EXPECT_EQ(reader->refCount(), 1);
}

} // namespace
} // namespace Halvorn
