// FUID: printed forms, parsing and new random ids.
#include "foundation/fuid.h"

#include <gtest/gtest.h>

using namespace Halvorn;

namespace {
constexpr FUID kClassId = FUID::make(0xC99757FF, 0x07E6, 0x4C38, 0xAFC8, 0xFFDA50EC2041);
}

TEST(Fuid, PrintsBothFormsFromTheGuidByteLayout) {
    const uint8 stored[16] = {0xFF, 0x57, 0x97, 0xC9, 0xE6, 0x07, 0x38, 0x4C,
                              0xAF, 0xC8, 0xFF, 0xDA, 0x50, 0xEC, 0x20, 0x41};
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(kClassId.bytes[i], stored[i]) << i;
    EXPECT_STREQ(printFuid(kClassId).text8(), "C99757FF07E64C38AFC8FFDA50EC2041");
    EXPECT_STREQ(printFuid(kClassId, FuidForm::kRegistry).text8(),
                 "{C99757FF-07E6-4C38-AFC8-FFDA50EC2041}");
}

TEST(Fuid, ParsesRegistryTextAndRefusesMalformedText) {
    FUID id{};
    ASSERT_TRUE(parseFuid("{C99757FF-07E6-4C38-AFC8-FFDA50EC2041}", id));
    EXPECT_EQ(id, kClassId);
    FUID lower{};
    ASSERT_TRUE(parseFuid("c99757ff-07e6-4c38-afc8-ffda50ec2041", lower));
    EXPECT_EQ(lower, kClassId);

    const char8* malformed[] = {
        nullptr,
        "",
        "{C99757FF-07E6-4C38-AFC8-FFDA50EC2041", // one brace alone
        "C99757FF-07E6-4C38-AFC8-FFDA50EC2041}",
        "C99757FF07E64C38AFC8FFDA50EC2041",      // no dashes
        "C99757FF-07E6-4C38-AFC8-FFDA50EC204",   // short
        "C99757FF-07E6-4C38-AFC8-FFDA50EC20411", // long
        "C99757FG-07E6-4C38-AFC8-FFDA50EC2041",  // not hexadecimal
        "C99757FF-07E6+4C38-AFC8-FFDA50EC2041",  // wrong separator
        "(C99757FF-07E6-4C38-AFC8-FFDA50EC2041)",
    };
    for (const char8* text : malformed) {
        FUID kept = kClassId;
        EXPECT_FALSE(parseFuid(text, kept)) << (text ? text : "null");
        EXPECT_EQ(kept, kClassId);
    }
}

TEST(Fuid, GeneratesDistinctVersionFourIdsThatRoundTrip) {
    FUID a = generateFuid();
    FUID b = generateFuid();
    ASSERT_TRUE(a.isValid());
    EXPECT_NE(a, b);
    String plain = printFuid(a);
    EXPECT_EQ(plain.getChar8(12), '4');
    EXPECT_NE(String("89AB").findLast(-1, char16(plain.getChar8(16))), -1);
    FUID back{};
    ASSERT_TRUE(parseFuid(printFuid(a, FuidForm::kRegistry).text8(), back));
    EXPECT_EQ(back, a);
}
