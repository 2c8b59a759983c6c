// The published UTF-8 <-> UTF-16 helper: exact on well-formed text, U+FFFD for each bad piece.
#include "corvelle/utf8.h"

#include <gtest/gtest.h>

using Halvorn::toUtf16;
using Halvorn::toUtf8;

TEST(Utf8Helper, RoundTripsEveryPlaneAndReplacesIllFormedPieces) {
    // One, two, three and four bytes: a note symbol needs a surrogate pair.
    const std::string text = "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8E\xB5/Zo\xC3\xAB.wav";
    const std::u16string wide = toUtf16(text);
    EXPECT_EQ(wide, u"A\u00E9\u20AC\U0001F3B5/Zo\u00EB.wav");
    EXPECT_EQ(toUtf8(wide), text);
    EXPECT_EQ(toUtf8(wide.c_str()), text);

    // Overlong, an encoded surrogate, a stray continuation, a cut-off tail, beyond U+10FFFF.
    EXPECT_EQ(toUtf16("a\xC0\xAF"
                      "b"),
              u"a\uFFFD\uFFFDb");
    EXPECT_EQ(toUtf16("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(toUtf16("\x80x"), u"\uFFFDx");
    EXPECT_EQ(toUtf16("x\xE2\x82"), u"x\uFFFD\uFFFD");
    EXPECT_EQ(toUtf16("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");

    // Lone surrogates either way round, and null.
    EXPECT_EQ(toUtf8(std::u16string{u'a', char16_t(0xD800), u'b', char16_t(0xDC00)}),
              "a\xEF\xBF\xBD"
              "b\xEF\xBF\xBD");
    EXPECT_EQ(toUtf8(static_cast<const char16_t*>(nullptr)), "");
}
