// Documents with huge tokens: the cost stays linear, and a token or text over the bound is
// refused with its cause.
#include "documents/fxmlparser2.h"
#include "foundation/fobject.h"
#include "foundation/memorystream.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

namespace Halvorn {
namespace {

class AttributeLength : public FObject, public INewXmlHandler {
public:
    CV_REFCOUNT_METHODS(FObject)
    tresult queryInterface(const FUID& iid, void** object) override {
        CV_QUERY(iid, object, INewXmlHandler)
        return FObject::queryInterface(iid, object);
    }
    void startElement(FXmlParser2*, const char8*, const char8** attributes) override {
        if (attributes[0])
            length = std::string(attributes[1]).size();
    }
    void endElement(FXmlParser2*, const char8*) override {}
    void characterData(FXmlParser2*, const char8*, int32) override {}
    void comment(FXmlParser2*, const char8*) override {}

    size_t length = 0;
};

struct TimedParse {
    bool ok = false;
    bool tooLarge = false;
    size_t attributeLength = 0;
    double seconds = 0;

    explicit TimedParse(std::string& xml) {
        auto handler = IPtr<AttributeLength>::adopt(new AttributeLength());
        MemoryStream stream(xml.data(), xml.size());
        FXmlParser2 parser(handler.get(), "UTF-8");
        // Processor time, so that a loaded machine doesn't count against the parse.
        const std::clock_t start = std::clock();
        ok = parser.parse(&stream);
        seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
        tooLarge = parser.wasTooLarge();
        attributeLength = handler->length;
    }
};

std::string withAttribute(size_t size) {
    return "<Project version=\"" + std::string(size, 'v') + "\"/>";
}

TEST(DocumentTokens, ALongAttributeCostsLinearTimeAndOneOverTheBoundIsRefused) {
    // Fed in fixed blocks, 40 MB took expat's rescanning half a minute and more.
    std::string long40 = withAttribute(40u << 20);
    const TimedParse accepted(long40);
    EXPECT_TRUE(accepted.ok);
    EXPECT_FALSE(accepted.tooLarge);
    EXPECT_EQ(accepted.attributeLength, size_t(40u << 20));
    EXPECT_LT(accepted.seconds, 2.0);

    std::string long100 = withAttribute(100u << 20);
    const TimedParse refused(long100);
    EXPECT_FALSE(refused.ok);
    EXPECT_TRUE(refused.tooLarge);
    EXPECT_LT(refused.seconds, 2.0);
}

TEST(DocumentTokens, TextOverTheBoundIsRefusedThoughExpatHandsItOverInPieces) {
    std::string text = "<Project>" + std::string((64u << 20) + 1, 't') + "</Project>";
    const TimedParse refused(text);
    EXPECT_FALSE(refused.ok);
    EXPECT_TRUE(refused.tooLarge);

    // A malformed document fails for its own cause.
    std::string broken = "<Project>";
    const TimedParse malformed(broken);
    EXPECT_FALSE(malformed.ok);
    EXPECT_FALSE(malformed.tooLarge);
}

} // namespace
} // namespace Halvorn
