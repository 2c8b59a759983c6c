// Base types every Corvelle interface is made of: widths, result codes, identifiers, FUnknown.
//
// Everything that crosses the library's boundary is built from these. Interfaces are pure
// abstract structs with a fixed operation order, reached only through queryInterface, and
// identified by a 16-byte FUID laid out like a COM GUID.
#pragma once

#include <cstdint>

// Marks the module's entry functions; everything else in the module stays hidden.
#define CORVELLE_EXPORT __attribute__((visibility("default")))

namespace Halvorn {
namespace Quor {

using int8 = std::int8_t;
using uint8 = std::uint8_t;
using int16 = std::int16_t;
using uint16 = std::uint16_t;
using int32 = std::int32_t;
using uint32 = std::uint32_t;
using int64 = std::int64_t;
using uint64 = std::uint64_t;
using char8 = char;
using char16 = char16_t;

using tresult = int32;

constexpr tresult kResultOk = 0;
constexpr tresult kResultFalse = 1;
constexpr tresult kInvalidArgument = static_cast<tresult>(0x80070057u);
constexpr tresult kNotImplemented = static_cast<tresult>(0x80004001u);
constexpr tresult kNoInterface = static_cast<tresult>(0x80004002u);
constexpr tresult kOutOfMemory = static_cast<tresult>(0x8007000Eu);
constexpr tresult kInternalError = static_cast<tresult>(0x80004005u);
constexpr tresult kNotInitialized = static_cast<tresult>(0x8000FFFFu);

// A 16-byte identifier stored like a COM GUID: the first three groups little-endian, the
// last eight bytes in printed order. All zero means "not valid".
struct FUID {
    uint8 bytes[16];

    // Builds an identifier from its printed groups, e.g.
    // C99757FF-07E6-4C38-AFC8-FFDA50EC2041 is make(0xC99757FF, 0x07E6, 0x4C38, 0xAFC8, 0xFFDA50EC2041).
    static constexpr FUID make(uint32 g1, uint16 g2, uint16 g3, uint16 g4, uint64 g5) {
        return FUID{{
            uint8(g1), uint8(g1 >> 8), uint8(g1 >> 16), uint8(g1 >> 24),
            uint8(g2), uint8(g2 >> 8),
            uint8(g3), uint8(g3 >> 8),
            uint8(g4 >> 8), uint8(g4),
            uint8(g5 >> 40), uint8(g5 >> 32), uint8(g5 >> 24), uint8(g5 >> 16), uint8(g5 >> 8),
            uint8(g5),
        }};
    }

    constexpr bool isValid() const {
        for (uint8 b : bytes)
            if (b != 0)
                return true;
        return false;
    }

    constexpr bool operator==(const FUID& other) const {
        for (int i = 0; i < 16; ++i)
            if (bytes[i] != other.bytes[i])
                return false;
        return true;
    }
    constexpr bool operator!=(const FUID& other) const { return !(*this == other); }
};
static_assert(sizeof(FUID) == 16, "FUID is 16 bytes");

// Root of all interfaces. queryInterface gives kResultOk and one added reference, or
// kNoInterface and null. addRef and release give the new count.
struct FUnknown {
    virtual tresult queryInterface(const FUID& iid, void** object) = 0;
    virtual uint32 addRef() = 0;
    virtual uint32 release() = 0;

    static constexpr FUID iid = FUID::make(0x00000000, 0x0000, 0x0000, 0xC000, 0x000000000046);
};

} // namespace Quor

using namespace Quor;

} // namespace Halvorn
