// String: owned text that is either 8-bit (UTF-8) or wide (UTF-16) as a whole.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {

// The text converts in place on demand: text8() on a wide string makes the string 8-bit, and
// text16() on an 8-bit one makes it wide. 8-bit text is UTF-8 throughout (the platform's code
// page here); an ill-formed sequence on either side converts to U+FFFD, so a conversion never
// fails but for memory. Getters never give null: an empty string gives a static empty text.
// Because reading may convert, even a const String belongs to one thread at a time.
class String {
public:
    static constexpr uint32 kMaxLength = (1u << 30) - 1;
    static constexpr uint32 kCodePageUtf8 = 65001;

    enum CompareMode { kCaseSensitive, kCaseInsensitive };

    String() : length_(0), wide_(1) {} // empty and wide
    String(const char8* text, int32 lengthLimit = -1);
    String(const char16* text, int32 lengthLimit = -1);
    String(const String& other);
    String(String&& other) noexcept;
    ~String();

    String& operator=(const String& other);
    String& operator=(String&& other) noexcept;

    int32 length() const { return static_cast<int32>(length_); }
    bool isWide() const { return wide_; }
    bool isEmpty() const { return length_ == 0 || !buffer_; }

    const char8* text8() const;
    const char16* text16() const;
    const char16* text() const { return text16(); }
    char8 getChar8(int32 index) const;
    char16 getChar16(int32 index) const;

    bool assign(const char8* text, int32 lengthLimit = -1);
    bool assign(const char16* text, int32 lengthLimit = -1);
    bool assign(const String& other);
    bool append(const char8* text, int32 lengthLimit = -1);
    bool append(const char16* text, int32 lengthLimit = -1);
    bool append(const String& other);
    bool append(char16 c) { return append(&c, 1); }

    // Takes UTF-8 text and makes the string wide.
    bool assignUtf8(const char8* text);
    // Makes the string 8-bit in the code page; only UTF-8 exists here, so every page is UTF-8.
    bool toMultiByte(uint32 codePage = kCodePageUtf8);
    bool toWideString();

    // Replaces the first or every occurrence of search; gives the count replaced.
    int32 replace(const String& search, const String& with, bool all = true,
                  CompareMode mode = kCaseSensitive);
    // Index of the last occurrence of c at or before startIndex (-1: from the end), or -1.
    int32 findLast(int32 startIndex, char16 c, CompareMode mode = kCaseSensitive) const;
    int32 findFirst(const String& search, int32 startIndex = 0,
                    CompareMode mode = kCaseSensitive) const;
    // Removes count characters at index; a negative count, or one past the end, cuts to the end.
    void remove(int32 index, int32 count = -1);

    bool startsWith(const String& text, CompareMode mode = kCaseSensitive) const;
    bool endsWith(const String& text, CompareMode mode = kCaseSensitive) const;
    // 0 for equal, else the sign of the first differing UTF-16 unit (or of the lengths); two
    // 8-bit texts compare bytewise, which differs only between U+E000..U+FFFF and U+10000 up.
    // Case-insensitive modes here and above fold ASCII letters only.
    int32 compare(const String& other, CompareMode mode = kCaseSensitive) const;

    // Assigns formatted 8-bit text.
    bool printf(const char8* format, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 2, 3)))
#endif
        ;

    bool operator==(const String& other) const { return compare(other) == 0; }
    bool operator!=(const String& other) const { return compare(other) != 0; }
    bool operator<(const String& other) const { return compare(other) < 0; }

private:
    bool setBuffer(void* buffer, uint32 length, bool wide);
    void clear();

    // Mutable because reading converts in place.
    mutable void* buffer_ = nullptr;
    mutable uint32 length_ : 30;
    mutable uint32 wide_ : 1;
};

using FString = String;

// True when the bytes are well-formed UTF-8 (no overlongs, surrogates or values past U+10FFFF).
bool isValidUtf8(const char8* text, int32 length);
// Decodes the code point at text[i] and moves i past it; an ill-formed or cut sequence gives
// U+FFFD and consumes one byte.
char32_t decodeUtf8(const unsigned char* text, uint32 length, uint32& i);
// A hash of the text's code points: equal texts hash alike whether they are held 8-bit or wide.
// Reads the text as it is held and never converts it.
uint64 hashText(const String& text);

} // namespace Halvorn
