// The value rules of the project document: how its numbers, Booleans and time units read and
// how its real numbers are written.
#pragma once

#include "corvelle/base.h"
#include "foundation/fstring.h"

namespace Halvorn {
namespace CvValueRules {

// Precisions of written reals: times and durations, and every other real.
constexpr uint32 kTimePrecision = 16;
constexpr uint32 kValuePrecision = 6;

// Reads a real the lenient way of the format: the first "," counts as ".", and the number is
// the first place from the left at which a C "%lf" scan succeeds, in the classic locale. No
// number at all, or an empty text, reads as 0. A scan that gives no finite number (overflow
// as in "1e999", "inf", "nan") also reads as 0: such a value would poison every time and
// conversion after it.
double readReal(const String& text);
double readReal(const char8* text);

// Reads an unsigned integer the same way, scanning as C's "%llu" does: an optional sign, so
// "-1" wraps around, and a value past the range saturates at the largest uint64. The field
// that receives it cuts it to its own width.
uint64 readInteger(const String& text);
uint64 readInteger(const char8* text);

// Only the exact text "true" is true.
bool readBoolean(const String& text);

// Only the exact text "seconds" means seconds; every other text means beats.
bool isSeconds(const String& text);

// Writes a real with the given precision: a whole number in 32-bit range (or any number at
// precision 0) without a point; else fixed notation with fewer decimals as the number grows
// away from 1 in either direction, and trailing zeros of the fraction removed. A non-finite
// value is written as 0.
String formatReal(double value, uint32 precision);

} // namespace CvValueRules
} // namespace Halvorn
