// String: storage, in-place width conversion, editing and comparison.
#include "foundation/fstring.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace Halvorn {
namespace {

const char8 kEmpty8[1] = {0};
const char16 kEmpty16[1] = {0};
constexpr char32_t kReplacement = 0xFFFD;

template <class Char> uint32 measure(const Char* text, int32 limit) {
    if (!text)
        return 0;
    uint32 n = 0;
    while ((limit < 0 || n < static_cast<uint32>(limit)) && n < String::kMaxLength && text[n])
        ++n;
    return n;
}

// Decodes one code point at text[i]; an unpaired surrogate gives U+FFFD.
char32_t decodeUtf16(const char16* text, uint32 length, uint32& i) {
    char16 c = text[i++];
    if (c < 0xD800 || c > 0xDFFF)
        return c;
    if (c <= 0xDBFF && i < length && text[i] >= 0xDC00 && text[i] <= 0xDFFF)
        return 0x10000 + ((char32_t(c) - 0xD800) << 10) + (text[i++] - 0xDC00);
    return kReplacement;
}

char16* utf8ToUtf16(const char8* text, uint32 length, uint32& outLength) {
    auto* out = static_cast<char16*>(std::malloc((size_t(length) + 1) * sizeof(char16)));
    if (!out)
        return nullptr;
    auto* bytes = reinterpret_cast<const unsigned char*>(text);
    uint32 n = 0;
    for (uint32 i = 0; i < length;) {
        char32_t cp = decodeUtf8(bytes, length, i);
        if (cp >= 0x10000) {
            cp -= 0x10000;
            out[n++] = char16(0xD800 + (cp >> 10));
            out[n++] = char16(0xDC00 + (cp & 0x3FF));
        } else {
            out[n++] = char16(cp);
        }
    }
    out[n] = 0;
    outLength = n;
    return out;
}

char8* utf16ToUtf8(const char16* text, uint32 length, uint32& outLength) {
    // Three bytes per unit covers every case: a surrogate pair (two units) makes four.
    auto* out = static_cast<char8*>(std::malloc(size_t(length) * 3 + 1));
    if (!out)
        return nullptr;
    uint32 n = 0;
    for (uint32 i = 0; i < length;) {
        char32_t cp = decodeUtf16(text, length, i);
        if (cp < 0x80) {
            out[n++] = char8(cp);
        } else if (cp < 0x800) {
            out[n++] = char8(0xC0 | (cp >> 6));
            out[n++] = char8(0x80 | (cp & 0x3F));
        } else if (cp < 0x10000) {
            out[n++] = char8(0xE0 | (cp >> 12));
            out[n++] = char8(0x80 | ((cp >> 6) & 0x3F));
            out[n++] = char8(0x80 | (cp & 0x3F));
        } else {
            out[n++] = char8(0xF0 | (cp >> 18));
            out[n++] = char8(0x80 | ((cp >> 12) & 0x3F));
            out[n++] = char8(0x80 | ((cp >> 6) & 0x3F));
            out[n++] = char8(0x80 | (cp & 0x3F));
        }
    }
    out[n] = 0;
    outLength = n;
    return out;
}

char16 foldCase(char16 c) { return c >= 'A' && c <= 'Z' ? char16(c + ('a' - 'A')) : c; }

bool unitsEqual(char16 a, char16 b, String::CompareMode mode) {
    return mode == String::kCaseInsensitive ? foldCase(a) == foldCase(b) : a == b;
}

// Whether the first n units of a and b are equal under the mode.
bool unitsMatch(const char16* a, const char16* b, int32 n, String::CompareMode mode) {
    for (int32 i = 0; i < n; ++i)
        if (!unitsEqual(a[i], b[i], mode))
            return false;
    return true;
}

} // namespace

char32_t decodeUtf8(const unsigned char* text, uint32 length, uint32& i) {
    unsigned char c = text[i++];
    if (c < 0x80)
        return c;
    int extra;
    char32_t cp;
    char32_t min;
    if ((c & 0xE0) == 0xC0) {
        extra = 1, cp = c & 0x1F, min = 0x80;
    } else if ((c & 0xF0) == 0xE0) {
        extra = 2, cp = c & 0x0F, min = 0x800;
    } else if ((c & 0xF8) == 0xF0) {
        extra = 3, cp = c & 0x07, min = 0x10000;
    } else {
        return kReplacement;
    }
    if (i + extra > length)
        return kReplacement;
    for (int k = 0; k < extra; ++k)
        if ((text[i + k] & 0xC0) != 0x80)
            return kReplacement;
    for (int k = 0; k < extra; ++k)
        cp = (cp << 6) | (text[i + k] & 0x3F);
    if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF))
        return kReplacement;
    i += extra;
    return cp;
}

uint64 hashText(const String& text) {
    // FNV-1a over code points; an ill-formed sequence counts as U+FFFD, as conversion makes it.
    uint64 hash = 14695981039346656037ull;
    const uint32 length = uint32(text.length());
    const char16* wide = text.isWide() ? text.text16() : nullptr;
    const auto* bytes = wide ? nullptr : reinterpret_cast<const unsigned char*>(text.text8());
    for (uint32 i = 0; i < length;) {
        const char32_t cp = wide ? decodeUtf16(wide, length, i) : decodeUtf8(bytes, length, i);
        hash = (hash ^ cp) * 1099511628211ull;
    }
    return hash;
}

bool isValidUtf8(const char8* text, int32 length) {
    if (!text || length < 0)
        return false;
    auto* bytes = reinterpret_cast<const unsigned char*>(text);
    for (uint32 i = 0; i < uint32(length);) {
        uint32 start = i;
        if (decodeUtf8(bytes, uint32(length), i) == kReplacement) {
            // U+FFFD itself is valid when it was spelled out as EF BF BD.
            if (i - start != 3)
                return false;
        }
    }
    return true;
}

String::String(const char8* text, int32 lengthLimit) : length_(0), wide_(1) {
    assign(text, lengthLimit);
}

String::String(const char16* text, int32 lengthLimit) : length_(0), wide_(1) {
    assign(text, lengthLimit);
}

String::String(const String& other) : length_(0), wide_(1) { assign(other); }

String::String(String&& other) noexcept
    : buffer_(other.buffer_), length_(other.length_), wide_(other.wide_) {
    other.buffer_ = nullptr;
    other.length_ = 0;
    other.wide_ = 1;
}

String::~String() { std::free(buffer_); }

String& String::operator=(const String& other) {
    if (this != &other)
        assign(other);
    return *this;
}

String& String::operator=(String&& other) noexcept {
    if (this != &other) {
        std::free(buffer_);
        buffer_ = other.buffer_;
        length_ = other.length_;
        wide_ = other.wide_;
        other.buffer_ = nullptr;
        other.length_ = 0;
        other.wide_ = 1;
    }
    return *this;
}

bool String::setBuffer(void* buffer, uint32 length, bool wide) {
    std::free(buffer_);
    buffer_ = buffer;
    length_ = length;
    wide_ = wide;
    return true;
}

void String::clear() { setBuffer(nullptr, 0, wide_); }

const char8* String::text8() const {
    if (wide_ && !const_cast<String*>(this)->toMultiByte())
        return kEmpty8;
    return buffer_ ? static_cast<const char8*>(buffer_) : kEmpty8;
}

const char16* String::text16() const {
    if (!wide_ && !const_cast<String*>(this)->toWideString())
        return kEmpty16;
    return buffer_ ? static_cast<const char16*>(buffer_) : kEmpty16;
}

// A failed conversion leaves the length in the other width: read nothing then.
char8 String::getChar8(int32 index) const {
    const char8* t = text8();
    return !wide_ && index >= 0 && index < length() ? t[index] : 0;
}

char16 String::getChar16(int32 index) const {
    const char16* t = text16();
    return wide_ && index >= 0 && index < length() ? t[index] : 0;
}

bool String::toMultiByte(uint32) {
    if (!wide_)
        return true;
    if (!buffer_)
        return setBuffer(nullptr, 0, false);
    uint32 n = 0;
    char8* converted = utf16ToUtf8(static_cast<char16*>(buffer_), length_, n);
    if (!converted)
        return false;
    if (n > kMaxLength) {
        std::free(converted);
        return false;
    }
    return setBuffer(converted, n, false);
}

bool String::toWideString() {
    if (wide_)
        return true;
    if (!buffer_)
        return setBuffer(nullptr, 0, true);
    uint32 n = 0;
    char16* converted = utf8ToUtf16(static_cast<char8*>(buffer_), length_, n);
    if (!converted)
        return false;
    return setBuffer(converted, n, true);
}

bool String::assign(const char8* text, int32 lengthLimit) {
    uint32 n = measure(text, lengthLimit);
    if (n == 0)
        return setBuffer(nullptr, 0, false);
    auto* copy = static_cast<char8*>(std::malloc(n + 1));
    if (!copy)
        return false;
    std::memcpy(copy, text, n);
    copy[n] = 0;
    return setBuffer(copy, n, false);
}

bool String::assign(const char16* text, int32 lengthLimit) {
    uint32 n = measure(text, lengthLimit);
    if (n == 0)
        return setBuffer(nullptr, 0, true);
    auto* copy = static_cast<char16*>(std::malloc((size_t(n) + 1) * sizeof(char16)));
    if (!copy)
        return false;
    std::memcpy(copy, text, n * sizeof(char16));
    copy[n] = 0;
    return setBuffer(copy, n, true);
}

bool String::assign(const String& other) {
    if (this == &other)
        return true;
    return other.wide_ ? assign(static_cast<const char16*>(other.buffer_), other.length())
                       : assign(static_cast<const char8*>(other.buffer_), other.length());
}

bool String::assignUtf8(const char8* text) {
    String utf8;
    return utf8.assign(text) && utf8.toWideString() && assign(utf8);
}

bool String::append(const char8* text, int32 lengthLimit) {
    uint32 n = measure(text, lengthLimit);
    if (n == 0)
        return true;
    if (wide_) {
        String wide(text, int32(n));
        return wide.toWideString() && append(wide.text16(), wide.length());
    }
    if (size_t(length_) + n > kMaxLength)
        return false;
    auto* grown = static_cast<char8*>(std::malloc(size_t(length_) + n + 1));
    if (!grown)
        return false;
    if (buffer_)
        std::memcpy(grown, buffer_, length_);
    std::memcpy(grown + length_, text, n);
    grown[length_ + n] = 0;
    return setBuffer(grown, length_ + n, false);
}

bool String::append(const char16* text, int32 lengthLimit) {
    uint32 n = measure(text, lengthLimit);
    if (n == 0)
        return true;
    if (!wide_ && !toWideString())
        return false;
    if (size_t(length_) + n > kMaxLength)
        return false;
    auto* grown = static_cast<char16*>(std::malloc((size_t(length_) + n + 1) * sizeof(char16)));
    if (!grown)
        return false;
    if (buffer_)
        std::memcpy(grown, buffer_, length_ * sizeof(char16));
    std::memcpy(grown + length_, text, n * sizeof(char16));
    grown[length_ + n] = 0;
    return setBuffer(grown, length_ + n, true);
}

bool String::append(const String& other) {
    if (this == &other) {
        String copy(other);
        return append(copy);
    }
    return other.wide_ ? append(static_cast<const char16*>(other.buffer_), other.length())
                       : append(static_cast<const char8*>(other.buffer_), other.length());
}

int32 String::findFirst(const String& search, int32 startIndex, CompareMode mode) const {
    const char16* s = search.text16();
    int32 n = search.length();
    const char16* t = text16();
    if (n == 0 || startIndex < 0)
        return -1;
    for (int32 i = startIndex; i + n <= length(); ++i) {
        int32 k = 0;
        while (k < n && unitsEqual(t[i + k], s[k], mode))
            ++k;
        if (k == n)
            return i;
    }
    return -1;
}

int32 String::replace(const String& search, const String& with, bool all, CompareMode mode) {
    String needle(search);
    String replacement(with);
    int32 count = 0;
    int32 at = findFirst(needle, 0, mode);
    if (at < 0)
        return 0;
    String result;
    int32 from = 0;
    const char16* t = text16();
    while (at >= 0) {
        if (!result.append(t + from, at - from) || !result.append(replacement))
            return 0; // out of memory: the text stays as it was
        ++count;
        from = at + needle.length();
        at = all ? findFirst(needle, from, mode) : -1;
    }
    if (!result.append(t + from, length() - from))
        return 0;
    *this = std::move(result);
    return count;
}

int32 String::findLast(int32 startIndex, char16 c, CompareMode mode) const {
    const char16* t = text16();
    int32 i = startIndex < 0 || startIndex >= length() ? length() - 1 : startIndex;
    for (; i >= 0; --i)
        if (unitsEqual(t[i], c, mode))
            return i;
    return -1;
}

void String::remove(int32 index, int32 count) {
    if (index < 0 || index >= length())
        return;
    if (count < 0 || count > length() - index)
        count = length() - index;
    String rest;
    if (wide_) {
        const auto* t = static_cast<const char16*>(buffer_);
        rest.assign(t, index);
        rest.append(t + index + count, length() - index - count);
        rest.toWideString();
    } else {
        const auto* t = static_cast<const char8*>(buffer_);
        rest.assign(t, index);
        rest.append(t + index + count, length() - index - count);
    }
    *this = std::move(rest);
}

bool String::startsWith(const String& text, CompareMode mode) const {
    int32 n = text.length();
    return n <= length() && unitsMatch(text16(), text.text16(), n, mode);
}

bool String::endsWith(const String& text, CompareMode mode) const {
    int32 n = text.length();
    return n <= length() && unitsMatch(text16() + (length() - n), text.text16(), n, mode);
}

int32 String::compare(const String& other, CompareMode mode) const {
    // Two 8-bit texts compare bytewise without widening either.
    if (!wide_ && !other.wide_ && mode == kCaseSensitive) {
        int32 n = length() < other.length() ? length() : other.length();
        int r = n ? std::memcmp(text8(), other.text8(), size_t(n)) : 0;
        if (r != 0)
            return r < 0 ? -1 : 1;
        return length() == other.length() ? 0 : (length() < other.length() ? -1 : 1);
    }
    const char16* a = text16();
    const char16* b = other.text16();
    int32 n = length() < other.length() ? length() : other.length();
    for (int32 i = 0; i < n; ++i) {
        char16 x = mode == kCaseInsensitive ? foldCase(a[i]) : a[i];
        char16 y = mode == kCaseInsensitive ? foldCase(b[i]) : b[i];
        if (x != y)
            return x < y ? -1 : 1;
    }
    return length() == other.length() ? 0 : (length() < other.length() ? -1 : 1);
}

bool String::printf(const char8* format, ...) {
    if (!format)
        return false;
    va_list args;
    va_start(args, format);
    va_list copy;
    va_copy(copy, args);
    int n = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    bool ok = false;
    if (n >= 0 && uint32(n) <= kMaxLength) {
        auto* out = static_cast<char8*>(std::malloc(size_t(n) + 1));
        if (out) {
            std::vsnprintf(out, size_t(n) + 1, format, args);
            ok = n == 0 ? (std::free(out), setBuffer(nullptr, 0, false))
                        : setBuffer(out, uint32(n), false);
        }
    }
    va_end(args);
    return ok;
}

} // namespace Halvorn
