// The value rules of the project document: lenient number scanning and the writing of reals.
#include "documents/cvvaluerules.h"

#include "documents/cvschemanames.h"

#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <locale.h>
#include <string>

namespace Halvorn {
namespace CvValueRules {
namespace {

// Numbers are read and written in the classic locale whatever the host set for the process.
locale_t classicLocale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return locale;
}

bool isCSpace(char8 c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

// Tries the scan at each place from the left until it succeeds. A scan that starts on white space
// skips it, so every place inside a run of white space ends where the run ends: going there
// directly keeps the result and spares a long run from being walked once per place.
template <class Scan> bool scanFromLeft(const char8* text, Scan scan) {
    if (!text)
        return false;
    for (const char8* p = text; *p;) {
        while (isCSpace(*p))
            ++p;
        if (!*p)
            break;
        if (scan(p))
            return true;
        ++p;
    }
    return false;
}

} // namespace

double readReal(const char8* text) {
    if (!text || !*text)
        return 0.0;
    std::string copy(text);
    std::string::size_type comma = copy.find(',');
    if (comma != std::string::npos)
        copy[comma] = '.';
    double result = 0.0;
    bool found = scanFromLeft(copy.c_str(), [&result](const char8* p) {
        char8* end = nullptr;
        locale_t locale = classicLocale();
        double value = locale ? strtod_l(p, &end, locale) : std::strtod(p, &end);
        if (end == p)
            return false;
        result = value;
        return true;
    });
    return found && std::isfinite(result) ? result : 0.0;
}

double readReal(const String& text) { return readReal(text.isEmpty() ? "" : text.text8()); }

uint64 readInteger(const char8* text) {
    uint64 result = 0;
    bool found = scanFromLeft(text, [&result](const char8* p) {
        char8* end = nullptr;
        locale_t locale = classicLocale();
        unsigned long long value =
            locale ? strtoull_l(p, &end, 10, locale) : std::strtoull(p, &end, 10);
        if (end == p)
            return false;
        result = static_cast<uint64>(value);
        return true;
    });
    return found ? result : 0;
}

uint64 readInteger(const String& text) { return readInteger(text.isEmpty() ? "" : text.text8()); }

bool readBoolean(const String& text) { return text == String(CvSchema::Text::kTrue); }

bool isSeconds(const String& text) { return text == String(CvSchema::Text::kSeconds); }

String formatReal(double value, uint32 precision) {
    std::string text;
    auto print = [&text](const char8* format, auto... args) {
        int size = std::snprintf(nullptr, 0, format, args...);
        if (size < 0)
            return;
        text.resize(static_cast<size_t>(size) + 1);
        std::snprintf(&text[0], text.size(), format, args...);
        text.resize(static_cast<size_t>(size));
    };
    // No reader could make sense of "inf" or "nan", so a package never holds one.
    if (!std::isfinite(value))
        value = 0.0;
    bool whole = value >= -2147483648.0 && value <= 2147483647.0 && std::trunc(value) == value;
    if (whole) {
        // Through an integer, so that -0.0 prints as "0".
        print("%lld", static_cast<long long>(value));
    } else if (precision == 0) {
        print("%.0f", value);
    } else {
        double magnitude = std::fabs(value);
        double scale = magnitude >= 1.0 ? std::log10(magnitude) : std::log10(1.0 / magnitude) + 1.0;
        // scale is at least 0 here; a non-finite one keeps the full precision, as a large one does.
        uint32 decimals = precision;
        if (std::isfinite(scale) && scale < 17.0) {
            uint32 room = 16u - static_cast<uint32>(scale);
            decimals = room < precision ? room : precision;
        }
        // uselocale keeps the decimal point a "." whatever the process locale says.
        locale_t previous = classicLocale() ? uselocale(classicLocale()) : nullptr;
        print("%.*f", static_cast<int>(decimals), value);
        if (previous)
            uselocale(previous);
        // Only a fraction loses its trailing zeros; a whole number printed without a point
        // keeps them.
        if (text.find('.') != std::string::npos) {
            while (!text.empty() && text.back() == '0')
                text.pop_back();
            if (!text.empty() && text.back() == '.')
                text.pop_back();
        }
    }
    return String(text.c_str());
}

} // namespace CvValueRules
} // namespace Halvorn
