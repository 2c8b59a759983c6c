// String: width conversion in place, ill-formed text, editing, searching and comparing.
#include "foundation/fstring.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace Halvorn;

TEST(String, EmptyStringIsWideAndNeverGivesNull) {
    String s;
    EXPECT_TRUE(s.isWide());
    EXPECT_TRUE(s.isEmpty());
    ASSERT_NE(s.text16(), nullptr);
    EXPECT_EQ(s.text16()[0], 0);
    ASSERT_NE(s.text8(), nullptr);
    EXPECT_STREQ(s.text8(), "");
    EXPECT_EQ(String("abc").getChar8(3), 0);
    EXPECT_EQ(String("abc").getChar16(-1), 0);
    EXPECT_EQ(String(static_cast<const char8*>(nullptr)).length(), 0);
}

TEST(String, ConvertsInPlaceAndLengthFollowsTheWidth) {
    String s(u"Gr\u00fc\u00dfe \U0001F3B5"); // two 2-byte letters and one 4-byte note
    EXPECT_EQ(s.length(), 8);
    EXPECT_STREQ(s.text8(), "Gr\xc3\xbc\xc3\x9f"
                            "e \xf0\x9f\x8e\xb5");
    EXPECT_FALSE(s.isWide());
    EXPECT_EQ(s.length(), 12);
    EXPECT_EQ(s.text16()[3], 0xDF);
    EXPECT_TRUE(s.isWide());
    EXPECT_EQ(s.length(), 8);

    String limited("abcdef", 3);
    EXPECT_STREQ(limited.text8(), "abc");
}

TEST(String, IllFormedTextOnEitherSideBecomesReplacementCharacters) {
    String bad8("a\xff"
                "b\xc0\xaf"
                "c\xed\xa0\x80"); // stray byte, overlong, surrogate
    const char16* wide = bad8.text16();
    EXPECT_EQ(wide[0], u'a');
    EXPECT_EQ(wide[1], 0xFFFD);
    EXPECT_EQ(wide[2], u'b');
    EXPECT_EQ(wide[3], 0xFFFD);
    EXPECT_FALSE(isValidUtf8("a\xff", 2));
    EXPECT_FALSE(isValidUtf8("\xe2\x82", 2));
    EXPECT_TRUE(isValidUtf8("\xef\xbf\xbd\xf0\x9f\x8e\xb5", 7));

    const char16 unpaired[] = {u'x', 0xD83C, u'y', 0xDF35, 0};
    String bad16(unpaired);
    EXPECT_STREQ(bad16.text8(), "x\xef\xbf\xbdy\xef\xbf\xbd");
}

TEST(String, AppendMixesWidths) {
    String wide;
    EXPECT_TRUE(wide.append("abc"));
    EXPECT_TRUE(wide.isWide()); // appending to a wide string widens 8-bit text first
    String narrow("x/");
    EXPECT_TRUE(narrow.append(u"\u00e9"));
    EXPECT_TRUE(narrow.isWide());
    EXPECT_STREQ(narrow.text8(), "x/\xc3\xa9");
    EXPECT_TRUE(narrow.append(narrow)); // itself
    EXPECT_STREQ(narrow.text8(), "x/\xc3\xa9x/\xc3\xa9");
    EXPECT_TRUE(narrow.append("tail", 2));
    EXPECT_EQ(narrow.compare(String(u"x/\u00e9x/\u00e9ta")), 0);
}

TEST(String, RemoveFindLastAndReplace) {
    String s("folder/sub/file.txt");
    EXPECT_EQ(s.findLast(-1, '/'), 10);
    EXPECT_EQ(s.findLast(9, '/'), 6);
    EXPECT_EQ(s.findLast(-1, '#'), -1);
    EXPECT_EQ(String().findLast(-1, 'a'), -1);
    EXPECT_EQ(s.findLast(-1, 'T', String::kCaseInsensitive), 18);

    s.remove(10, -1);
    EXPECT_STREQ(s.text8(), "folder/sub");
    s.remove(6, 100);
    EXPECT_STREQ(s.text8(), "folder");
    s.remove(6, 1);
    s.remove(-1, 1);
    EXPECT_STREQ(s.text8(), "folder");
    s.remove(0, 2);
    EXPECT_STREQ(s.text8(), "lder");

    String path("C:\\a\\b\\c");
    EXPECT_EQ(path.replace(String("\\"), String("/")), 3);
    EXPECT_STREQ(path.text8(), "C:/a/b/c");
    EXPECT_EQ(path.replace(String("/"), String("--"), false), 1);
    EXPECT_STREQ(path.text8(), "C:--a/b/c");
    String word(u"Aaa");
    EXPECT_EQ(word.replace(String("a"), String("aa"), true, String::kCaseInsensitive), 3);
    EXPECT_STREQ(word.text8(), "aaaaaa");
    EXPECT_EQ(word.replace(String("q"), String("z")), 0);
    EXPECT_EQ(word.replace(String(), String("z")), 0);
}

TEST(String, CompareAcrossWidthsAndCases) {
    EXPECT_EQ(String("abc").compare(String(u"abc")), 0);
    EXPECT_LT(String("abc").compare(String(u"abd")), 0);
    EXPECT_GT(String(u"abcd").compare(String("abc")), 0);
    EXPECT_EQ(String("ABC").compare(String(u"abc"), String::kCaseInsensitive), 0);
    EXPECT_TRUE(String("P.CORVELLE").endsWith(String(".corvelle"), String::kCaseInsensitive));
    EXPECT_FALSE(String("P.CORVELLE").endsWith(String(".corvelle")));
    EXPECT_FALSE(String("MP").startsWith(String("MPParam")));
}

TEST(String, PrintfAndCopies) {
    String s;
    EXPECT_TRUE(s.printf("%s-%02u", "name", 7u));
    EXPECT_STREQ(s.text8(), "name-07");
    EXPECT_TRUE(s.printf("%s", s.text8())); // its own text as an argument
    EXPECT_STREQ(s.text8(), "name-07");
    EXPECT_FALSE(s.printf(nullptr));
    EXPECT_TRUE(s.assignUtf8("\xc3\xa9"));
    EXPECT_TRUE(s.isWide());
    EXPECT_EQ(s.getChar16(0), 0xE9);
}
