// The XML output layer: layout, escaping, the states and their failures, and safe text.
#include "corvelle/stream.h"
#include "documents/xml/utf8xmlwriter.h"
#include "documents/xml/xmltext.h"
#include "support/counted.h"
#include "writertestsupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

using namespace Halvorn;

namespace {

// An IBStream into a string that can be told to fail after a number of bytes.
// It lives on the test's stack: the references others take must all come back.
class TestStream : public Support::Counted<IBStream> {
public:
    // limit: the bytes it takes before every further write fails; -1 for no limit.
    explicit TestStream(long limit = -1) : limit_(limit) {}

    tresult read(void*, int32, int32*) override { return kNotImplemented; }
    tresult write(void* buffer, int32 count, int32* done) override {
        ++writes_;
        const long room =
            limit_ < 0 ? count : std::clamp<long>(limit_ - long(bytes_.size()), 0, count);
        bytes_.append(static_cast<const char*>(buffer), static_cast<size_t>(room));
        if (done)
            *done = static_cast<int32>(room);
        return room == count ? kResultOk : kResultFalse;
    }
    tresult seek(int64, int32, int64*) override { return kNotImplemented; }
    tresult tell(int64* position) override {
        *position = static_cast<int64>(bytes_.size());
        return kResultOk;
    }

    const std::string& bytes() const { return bytes_; }
    int writes() const { return writes_; }
    // References held by others: 0 once everyone let go.
    uint32 references() const { return uint32(count() - 1); }

private:
    std::string bytes_;
    long limit_;
    int writes_ = 0;
};

constexpr const char* kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

// A writer opened on a stream of its own, which it gives back before the stream goes.
struct Opened {
    explicit Opened(int32 flags = Xml::Writer::kIndent, const char* docType = nullptr,
                    long limit = -1)
        : stream(limit) {
        EXPECT_EQ(writer.open(&stream, flags, docType), kResultOk);
    }
    TestStream stream;
    UTF8XmlWriter writer;
};

// The indented layout (tabs, " />", the final line feed) is the golden documents' to check.
TEST(XmlOutputLayout, OptionBitsChangeDeclarationLineEndsAndChecks) {
    Opened flat(Xml::Writer::kNoDeclaration, "Doc");
    EXPECT_EQ(flat.stream.references(), 1u); // held while open, given back at close
    flat.writer.startElement("Doc");
    flat.writer.startElement("A");
    flat.writer.endElement();
    flat.writer.writeText("x<y", true);
    flat.writer.writeText("<b/>", false);
    flat.writer.endElement();
    EXPECT_EQ(flat.writer.close(), kResultOk);
    EXPECT_EQ(flat.stream.references(), 0u);
    EXPECT_EQ(flat.stream.bytes(), "<!DOCTYPE Doc>\n<Doc><A />x&lt;y<b/></Doc>");

    // A refused name fails, and spoils the rest.
    for (const char* bad : {"1st", "a b", "a/b", "a=b", "a?b", "-a", ".a", "a&b"}) {
        Opened names(Xml::Writer::kCheckNames);
        EXPECT_EQ(names.writer.startElement(bad), kResultFalse) << bad;
        EXPECT_EQ(names.writer.startElement("Fine"), kResultFalse) << bad;
    }

    Opened comments(Xml::Writer::kCheckComments);
    UTF8XmlWriter& writer = comments.writer;
    EXPECT_EQ(writer.writeComment("a--b"), kResultFalse);
    EXPECT_EQ(writer.writeComment("end-"), kResultFalse);
    EXPECT_EQ(writer.writeComment("fine"), kResultOk) << "a refused comment writes nothing";
    writer.startElement("R");
    EXPECT_EQ(writer.writeComment("after a start tag"), kResultFalse);
    EXPECT_EQ(writer.close(), kResultFalse);
    EXPECT_EQ(comments.stream.bytes(), std::string(kDeclaration) + "<!--fine-->\n<R");
}

TEST(XmlOutputEscaping, EscapesTheTableAndPassesEverythingElse) {
    Opened out;
    out.writer.startElement("E");
    out.writer.addAttribute("v", "a&b<c>d\"e'f\ng\th\ri \xC3\xA9\xF0\x9F\x8E\xB5");
    out.writer.endElement();
    EXPECT_EQ(out.writer.close(), kResultOk);
    EXPECT_EQ(out.stream.bytes(), std::string(kDeclaration) +
                                      "<E v=\"a&amp;b&lt;c&gt;d&quot;e&apos;f&#10;g\th\ri "
                                      "\xC3\xA9\xF0\x9F\x8E\xB5\" />\n");
}

TEST(XmlOutputEscaping, IndentedTextGoesInPiecesThatNeverSplitACharacter) {
    // 79 ASCII bytes and then a two-byte character that would straddle the 80-byte cut.
    const std::string text = std::string(79, 'a') + "\xC3\xA9" + std::string(10, 'b');
    Opened out;
    out.writer.startElement("T");
    EXPECT_EQ(out.writer.writeText(text.c_str(), true), kResultOk);
    out.writer.endElement();
    EXPECT_EQ(out.writer.close(), kResultOk);
    EXPECT_EQ(out.stream.bytes(), std::string(kDeclaration) + "<T>\n\t" + std::string(79, 'a') +
                                      "\n\t\xC3\xA9" + std::string(10, 'b') + "\n</T>\n");
}

TEST(XmlOutputStates, AnIllegalCallFailsAndSwallowsTheRest) {
    Opened out;
    UTF8XmlWriter& writer = out.writer;
    writer.startElement("Root");
    writer.startElement("Child");
    writer.endElement();
    EXPECT_EQ(writer.addAttribute("late", "x"), kResultFalse) << "the state is idle";
    EXPECT_EQ(writer.getState(), Xml::Writer::kFailed);
    const std::string written = out.stream.bytes();
    EXPECT_EQ(writer.startElement("More"), kResultFalse);
    EXPECT_EQ(writer.endElement(), kResultFalse);
    EXPECT_EQ(writer.close(), kResultFalse);
    EXPECT_EQ(out.stream.bytes(), written) << "nothing is written after the failure";
    EXPECT_EQ(written, std::string(kDeclaration) + "<Root>\n\t<Child />");

    Opened empty;
    empty.writer.startElement("A");
    EXPECT_EQ(empty.writer.addAttribute("name", ""), kResultFalse);
    EXPECT_EQ(empty.writer.addAttribute("other", "x"), kResultFalse);
    EXPECT_EQ(empty.writer.close(), kResultFalse);
    EXPECT_EQ(empty.stream.bytes(), std::string(kDeclaration) + "<A");
}

TEST(XmlOutputStates, OpenCloseAndBalanceRules) {
    UTF8XmlWriter unopened;
    EXPECT_EQ(unopened.startElement("A"), kNotInitialized);
    EXPECT_EQ(unopened.addAttribute("a", "b"), kNotInitialized);
    EXPECT_EQ(unopened.endElement(), kNotInitialized);
    EXPECT_EQ(unopened.open(nullptr, 1, nullptr), kInvalidArgument);
    EXPECT_EQ(unopened.startElement(nullptr), kInvalidArgument);

    Opened first;
    UTF8XmlWriter& writer = first.writer;
    TestStream second;
    EXPECT_EQ(writer.open(&second, Xml::Writer::kIndent, nullptr), kResultFalse);
    EXPECT_EQ(second.references(), 0u);
    writer.startElement("Root");
    writer.startElement("Open");
    writer.addAttribute("a", "1");
    EXPECT_EQ(writer.close(), kResultOk) << "close ends what is open";
    EXPECT_EQ(second.bytes(), "");
    EXPECT_EQ(first.stream.bytes(),
              std::string(kDeclaration) + "<Root>\n\t<Open a=\"1\" />\n</Root>\n");
    EXPECT_EQ(writer.close(), kResultFalse) << "a closed writer has nothing whole to report";

    // Past the root: a second root, text outside it and an unbalanced end would all be
    // ill-formed, so each fails.
    for (int variant = 0; variant < 3; ++variant) {
        Opened out;
        UTF8XmlWriter& balanced = out.writer;
        balanced.startElement("Root");
        balanced.endElement();
        const tresult result = variant == 0   ? balanced.startElement("Second")
                               : variant == 1 ? balanced.writeText("x", true)
                                              : balanced.endElement();
        EXPECT_EQ(result, kResultFalse) << variant;
        EXPECT_EQ(balanced.close(), kResultFalse);
        EXPECT_TRUE(WriterTest::isWellFormed(out.stream.bytes())) << variant;
    }
}

TEST(XmlOutputStates, AShortWriteFailsTheDocumentAtThatPiece) {
    Opened out(Xml::Writer::kIndent, nullptr, 50); // the declaration and a little more
    EXPECT_EQ(out.writer.startElement("Root"), kResultOk);
    EXPECT_EQ(out.writer.addAttribute("long", "0123456789"), kResultFalse);
    const int writes = out.stream.writes();
    EXPECT_EQ(out.writer.endElement(), kResultFalse);
    EXPECT_EQ(out.writer.close(), kResultFalse);
    EXPECT_EQ(out.stream.writes(), writes) << "a failed writer doesn't touch the stream";

    TestStream tiny(10);
    UTF8XmlWriter declaration;
    EXPECT_EQ(declaration.open(&tiny, Xml::Writer::kIndent, nullptr), kResultFalse);
    EXPECT_EQ(declaration.close(), kResultFalse);
}

TEST(XmlOutputFaces, WholeElementFaceAndQueries) {
    TestStream stream;
    UTF8XmlWriter writer;
    IPtr<IXmlWriter> face = queryInterface<IXmlWriter>(static_cast<IUTF8XmlWriter*>(&writer));
    ASSERT_TRUE(face);
    EXPECT_TRUE(queryInterface<IUTF8XmlWriter>(face.get()));
    ASSERT_EQ(face->open(&stream), kResultOk);
    const char8* names[] = {"a", "b"};
    const char8* values[] = {"1", "2"};
    EXPECT_EQ(face->startElement("Root", 0, nullptr, nullptr, false), kResultOk);
    EXPECT_EQ(face->startElement("Leaf", 2, names, values, true), kResultOk);
    EXPECT_EQ(face->endElement("Leaf"), kInvalidArgument) << "Leaf is closed already";
    EXPECT_EQ(face->reserved(), kNotImplemented);
    EXPECT_EQ(face->endElement("Root"), kResultOk);
    face = nullptr;
    EXPECT_EQ(writer.close(), kResultOk);
    EXPECT_EQ(stream.bytes(),
              std::string(kDeclaration) + "<Root>\n\t<Leaf a=\"1\" b=\"2\" />\n</Root>\n");
    EXPECT_EQ(writer.refCount(), 1);
}

TEST(XmlSafeText, ReplacesWhatXmlRefusesAndKeepsEverythingElse) {
    const char16 lone[] = {u'a', 0xD800, u'b', 0xDC00, 0};
    EXPECT_EQ(Xml::toXmlUtf8(lone), "a\xEF\xBF\xBD"
                                    "b\xEF\xBF\xBD");
    const char16 pair[] = {0xD83C, 0xDFB5, 0};
    EXPECT_EQ(Xml::toXmlUtf8(pair), "\xF0\x9F\x8E\xB5");
    const char16 controls[] = {0x01, u'\t', u'\n', u'\r', 0x1F, 0xFFFE, 0xFFFF, 0xE9, 0};
    EXPECT_EQ(Xml::toXmlUtf8(controls),
              "\xEF\xBF\xBD\t\n\r\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xC3\xA9");
    EXPECT_EQ(Xml::toXmlUtf8(static_cast<const char16*>(nullptr)), "");
    // Ill-formed UTF-8: a stray continuation, an overlong form, an encoded surrogate, a cut end.
    EXPECT_EQ(Xml::toXmlUtf8("a\x80"
                             "b\xC0\xAF"
                             "c\xED\xA0\x80"
                             "d\xE2\x82"),
              "a\xEF\xBF\xBD"
              "b\xEF\xBF\xBD\xEF\xBF\xBD"
              "c\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"
              "d\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(Xml::toXmlUtf8("ok \xE2\x82\xAC\x07"), "ok \xE2\x82\xAC\xEF\xBF\xBD");

    // Whatever comes in, the attribute that carries it parses.
    Opened out;
    out.writer.startElement("R");
    out.writer.addAttribute("a", Xml::toXmlUtf8(lone).c_str());
    out.writer.addAttribute("b", Xml::toXmlUtf8(controls).c_str());
    out.writer.addAttribute("c", Xml::toXmlUtf8("\xFF\xFE<&>").c_str());
    ASSERT_EQ(out.writer.close(), kResultOk);
    std::string message;
    EXPECT_TRUE(WriterTest::isWellFormed(out.stream.bytes(), &message)) << message;
}

} // namespace
