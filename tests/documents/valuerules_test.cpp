// The value rules of the document: lenient numbers, Booleans, time units and written reals.
#include "documents/cvvaluerules.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

namespace Halvorn {
namespace {

using namespace CvValueRules;

TEST(ValueRules, RealsScanFromTheFirstPlaceThatHoldsANumber) {
    EXPECT_DOUBLE_EQ(readReal("12,5"), 12.5);
    EXPECT_DOUBLE_EQ(readReal("x7"), 7.0);
    EXPECT_DOUBLE_EQ(readReal("1e3"), 1000.0);
    EXPECT_DOUBLE_EQ(readReal("-0.25"), -0.25);
    EXPECT_DOUBLE_EQ(readReal("  3.5  "), 3.5);
    EXPECT_DOUBLE_EQ(readReal("abc-2x"), -2.0);
    // Only the first comma turns into a point.
    EXPECT_DOUBLE_EQ(readReal("1,5,7"), 1.5);
    EXPECT_DOUBLE_EQ(readReal("1.5,7"), 1.5);
    // Nothing found, or nothing there: 0, never a default.
    EXPECT_EQ(readReal(""), 0.0);
    EXPECT_EQ(readReal("abc"), 0.0);
    EXPECT_EQ(readReal(String()), 0.0);
    EXPECT_EQ(readReal(static_cast<const char8*>(nullptr)), 0.0);
    EXPECT_DOUBLE_EQ(readReal(String(u"0,25")), 0.25);
}

TEST(ValueRules, RealsThatAreNoFiniteNumberReadAsZero) {
    EXPECT_EQ(readReal("1e999"), 0.0);
    EXPECT_EQ(readReal("-1e999"), 0.0);
    EXPECT_EQ(readReal("nan"), 0.0);
    EXPECT_EQ(readReal("inf"), 0.0);
    EXPECT_EQ(readReal("x-infinity"), 0.0);
    // Tiny values underflow towards zero but stay numbers.
    EXPECT_GE(readReal("1e-999"), 0.0);
    EXPECT_LT(readReal("1e-999"), 1e-300);
}

TEST(ValueRules, IntegersScanAsUnsignedDecimals) {
    EXPECT_EQ(readInteger("44100"), 44100u);
    EXPECT_EQ(readInteger("x7"), 7u);
    EXPECT_EQ(readInteger("3.9"), 3u);
    EXPECT_EQ(readInteger(""), 0u);
    EXPECT_EQ(readInteger("abc"), 0u);
    EXPECT_EQ(readInteger("18446744073709551615"), UINT64_MAX);
    // Past the range it saturates; a sign wraps as C's unsigned scan does.
    EXPECT_EQ(readInteger("99999999999999999999999"), UINT64_MAX);
    EXPECT_EQ(readInteger("-1"), UINT64_MAX);
    EXPECT_EQ(static_cast<uint32>(readInteger("4294967297")), 1u);
}

TEST(ValueRules, BooleansAndTimeUnitsCompareExactly) {
    EXPECT_TRUE(readBoolean(String("true")));
    EXPECT_FALSE(readBoolean(String("TRUE")));
    EXPECT_FALSE(readBoolean(String("True")));
    EXPECT_FALSE(readBoolean(String("1")));
    EXPECT_FALSE(readBoolean(String("")));
    EXPECT_FALSE(readBoolean(String(" true")));
    EXPECT_TRUE(isSeconds(String("seconds")));
    EXPECT_FALSE(isSeconds(String("Seconds")));
    EXPECT_FALSE(isSeconds(String("beats")));
    EXPECT_FALSE(isSeconds(String("")));
}

TEST(ValueRules, RealsAreWrittenWithFallingPrecision) {
    EXPECT_EQ(formatReal(120.0, 6), String("120"));
    EXPECT_EQ(formatReal(0.5, 6), String("0.5"));
    EXPECT_EQ(formatReal(0.1 + 0.2, 6), String("0.3"));
    EXPECT_EQ(formatReal(0.1 + 0.2, 16), String("0.3"));
    EXPECT_EQ(formatReal(1.0 / 3.0, 16), String("0.333333333333333"));
    EXPECT_EQ(formatReal(1234567.891, 6), String("1234567.891"));
    EXPECT_EQ(formatReal(1.5, 16), String("1.5"));
    EXPECT_EQ(formatReal(2147483648.0, 6), String("2147483648"));
    EXPECT_EQ(formatReal(-2147483648.0, 6), String("-2147483648"));
    EXPECT_EQ(formatReal(-0.0, 6), String("0"));
    EXPECT_EQ(formatReal(-2.5, 6), String("-2.5"));
    EXPECT_EQ(formatReal(2.5, 0), String("2"));
    // A whole number past 32 bits printed without decimals keeps its zeros.
    EXPECT_EQ(formatReal(1e16, 6), String("10000000000000000"));
    EXPECT_EQ(formatReal(1e-300, 16), String("0"));
    // What is written reads back as the same value at these precisions.
    for (double x : {0.125, 97.5, 3.25, 1e-3, 44100.0, 123456.75})
        EXPECT_DOUBLE_EQ(readReal(formatReal(x, 16)), x);
}

} // namespace
} // namespace Halvorn
