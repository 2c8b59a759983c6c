// FXmlParser2: the events it forwards, its block loop, and where it leaves the stream.
#include "documents/fxmlparser2.h"
#include "foundation/fobject.h"
#include "foundation/memorystream.h"

#include <expat.h>
#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <vector>

namespace Halvorn {
namespace {

// Writes each event as one line; can stop or suspend the parse at a given element.
class Recorder : public FObject, public INewXmlHandler {
public:
    CV_REFCOUNT_METHODS(FObject)
    tresult queryInterface(const FUID& iid, void** object) override {
        CV_QUERY(iid, object, INewXmlHandler)
        return FObject::queryInterface(iid, object);
    }

    void startElement(FXmlParser2* parser, const char8* name, const char8** attributes) override {
        std::string line = std::string("start ") + name;
        for (int i = 0; attributes[i]; i += 2)
            line += std::string(" ") + attributes[i] + "=" + attributes[i + 1];
        events.push_back(line);
        if (stopAt == name)
            parser->stop();
        if (suspendAt == name)
            parser->suspend();
    }
    void endElement(FXmlParser2*, const char8* name) override {
        events.push_back(std::string("end ") + name);
    }
    void characterData(FXmlParser2*, const char8* text, int32 length) override {
        characters += std::string(text, static_cast<size_t>(length));
    }
    void comment(FXmlParser2*, const char8* text) override {
        events.push_back(std::string("comment ") + text);
    }

    std::vector<std::string> events;
    std::string characters;
    std::string stopAt;
    std::string suspendAt;
};

struct Parse {
    IPtr<Recorder> recorder = newObject<Recorder>();
    bool ok = false;
    bool tooLarge = false;
    int32 error = 0;
    int64 position = -1;
    // Processor time, so that a loaded machine doesn't count against the parse.
    double seconds = 0;

    explicit Parse(const std::string& xml, const char8* encoding = "UTF-8",
                   const std::string& stopAt = {}) {
        recorder->stopAt = stopAt;
        MemoryStream stream(const_cast<char*>(xml.data()), xml.size());
        FXmlParser2 parser(recorder.get(), encoding);
        const std::clock_t start = std::clock();
        ok = parser.parse(&stream);
        seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
        tooLarge = parser.wasTooLarge();
        error = parser.getErrorCode();
        stream.tell(&position);
    }
};

TEST(XmlParser, ForwardsEveryEventWithItsArguments) {
    Parse parse("<?xml version=\"1.0\"?>\n<a x=\"1\" y=\"&lt;2&gt;\"><!--note--><b/>text<c "
                "z=\"\"/></a>");
    ASSERT_TRUE(parse.ok);
    std::vector<std::string> expected = {"start a x=1 y=<2>", "comment note", "start b", "end b",
                                         "start c z=",        "end c",        "end a"};
    EXPECT_EQ(parse.recorder->events, expected);
    EXPECT_EQ(parse.recorder->characters, "text");
    // The parser let go of its reference to the handler.
    EXPECT_EQ(parse.recorder->refCount(), 1);
}

TEST(XmlParser, StopsBehindTheDocumentAndFailsOnMalformedInput) {
    // A second root: success, only the first seen, the stream left at the junk.
    const std::string first = "<a><b/></a>";
    Parse twice(first + "<a><c/></a>");
    ASSERT_TRUE(twice.ok);
    EXPECT_EQ(twice.recorder->events.size(), 4u);
    EXPECT_EQ(twice.position, static_cast<int64>(first.size()));
    // The same when the junk lies in a later block.
    std::string big = "<a>" + std::string(FXmlParser2::kBlockSize, ' ') + "</a>";
    Parse far(big + "junk");
    ASSERT_TRUE(far.ok);
    EXPECT_EQ(far.position, static_cast<int64>(big.size()));

    Parse empty("");
    EXPECT_FALSE(empty.ok);
    EXPECT_EQ(empty.error, static_cast<int32>(XML_ERROR_NO_ELEMENTS));
    EXPECT_FALSE(Parse("<a>").ok);
    EXPECT_FALSE(Parse("<a></b>").ok);
    EXPECT_FALSE(Parse("<a>\xff</a>").ok);
    // The constructor's encoding wins over the declaration.
    EXPECT_FALSE(Parse("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>\xe9</a>").ok);
    Parse latin("<?xml version=\"1.0\" encoding=\"UTF-8\"?><a>\xe9</a>", "ISO-8859-1");
    ASSERT_TRUE(latin.ok);
    EXPECT_EQ(latin.recorder->characters, "\xc3\xa9");
}

TEST(XmlParser, AHandlerCanStopOrSuspendAndTheHandlerCanChange) {
    Parse stopped("<a><b/><c/></a>", "UTF-8", "b");
    EXPECT_FALSE(stopped.ok);
    EXPECT_EQ(stopped.error, static_cast<int32>(XML_ERROR_ABORTED));
    EXPECT_EQ(stopped.recorder->events.front(), "start a");

    IPtr<Recorder> recorder = newObject<Recorder>();
    recorder->suspendAt = "b";
    std::string xml = "<a><b/><c/></a>";
    MemoryStream stream(const_cast<char*>(xml.data()), xml.size());
    FXmlParser2 parser(nullptr, "UTF-8");
    parser.setHandler(recorder.get());
    EXPECT_TRUE(parser.parse(&stream));
    EXPECT_EQ(recorder->events.back(), "end b");
    EXPECT_TRUE(parser.resume());
    EXPECT_EQ(recorder->events.back(), "end a");

    // Without a handler the events go nowhere, and parsing still judges the document.
    MemoryStream again(const_cast<char*>(xml.data()), xml.size());
    FXmlParser2 silent(nullptr, "UTF-8");
    EXPECT_TRUE(silent.parse(&again));
    EXPECT_FALSE(silent.parse(nullptr));
}

TEST(XmlParser, ALongTokenCostsLinearTimeAndOneOverTheBoundIsRefused) {
    // Fed in fixed blocks, expat rescans an open token with each one: 40 MB took half a minute.
    const Parse accepted("<a v=\"" + std::string(40u << 20, 'v') + "\"/>");
    EXPECT_TRUE(accepted.ok);
    EXPECT_FALSE(accepted.tooLarge);
    EXPECT_EQ(accepted.recorder->events.at(0).size(), (40u << 20) + 10);
    EXPECT_LT(accepted.seconds, 2.0);

    const Parse refused("<a v=\"" + std::string(100u << 20, 'v') + "\"/>");
    EXPECT_FALSE(refused.ok);
    EXPECT_TRUE(refused.tooLarge);
    EXPECT_LT(refused.seconds, 2.0);
    const Parse unclosed("<a v=\"" + std::string(100u << 20, 'v'));
    EXPECT_TRUE(unclosed.tooLarge);

    // Text comes in pieces, but a run of it is bounded all the same.
    const Parse text("<a>" + std::string((64u << 20) + 1, 't') + "</a>");
    EXPECT_FALSE(text.ok);
    EXPECT_TRUE(text.tooLarge);
    EXPECT_FALSE(Parse("<a>").tooLarge) << "a malformed document fails for its own cause";
}

} // namespace
} // namespace Halvorn
