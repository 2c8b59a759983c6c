// The plug-in factory: how a host finds and creates the one class this library offers.
//
// A host loads the module, calls InitDll, then GetPluginFactory, and creates classes from the
// factory. The records below cross to the host byte for byte: their field order and widths
// never change. Strings in them are zero-terminated and zero-padded to their full length.
#pragma once

#include "corvelle/base.h"

#include <cstddef>

namespace Halvorn {
namespace Quor {

struct FactoryInfo {
    enum { kURLSize = 256, kEmailSize = 128, kNameSize = 64 };
    char8 vendor[kNameSize];
    char8 url[kURLSize];
    char8 email[kEmailSize];
    int32 flags;
};

struct ClassInfo {
    enum { kCategorySize = 32, kNameSize = 64 };
    uint8 cid[16];
    int32 cardinality;
    char8 category[kCategorySize];
    char8 name[kNameSize];
};

struct ClassInfo2 {
    enum { kCategorySize = 32, kNameSize = 64, kSubCategoriesSize = 128, kVendorSize = 64,
           kVersionSize = 64 };
    uint8 cid[16];
    int32 cardinality;
    char8 category[kCategorySize];
    char8 name[kNameSize];
    uint32 classFlags;
    char8 subCategories[kSubCategoriesSize];
    char8 vendor[kVendorSize];
    char8 version[kVersionSize];
    char8 sdkVersion[kVersionSize];
};

// ClassInfo2 with name, vendor, version and sdkVersion as 16-bit text.
struct ClassInfoWide {
    enum { kCategorySize = 32, kNameSize = 64, kSubCategoriesSize = 128, kVendorSize = 64,
           kVersionSize = 64 };
    uint8 cid[16];
    int32 cardinality;
    char8 category[kCategorySize];
    char16 name[kNameSize];
    uint32 classFlags;
    char8 subCategories[kSubCategoriesSize];
    char16 vendor[kVendorSize];
    char16 version[kVersionSize];
    char16 sdkVersion[kVersionSize];
};

static_assert(sizeof(FactoryInfo) == 452, "FactoryInfo layout");
static_assert(offsetof(FactoryInfo, flags) == 448, "FactoryInfo layout");
static_assert(sizeof(ClassInfo) == 116, "ClassInfo layout");
static_assert(offsetof(ClassInfo, category) == 20, "ClassInfo layout");
static_assert(sizeof(ClassInfo2) == 440, "ClassInfo2 layout");
static_assert(offsetof(ClassInfo2, classFlags) == 116, "ClassInfo2 layout");
static_assert(offsetof(ClassInfo2, sdkVersion) == 376, "ClassInfo2 layout");
static_assert(sizeof(ClassInfoWide) == 696, "ClassInfoWide layout");
static_assert(offsetof(ClassInfoWide, name) == 52, "ClassInfoWide layout");
static_assert(offsetof(ClassInfoWide, classFlags) == 180, "ClassInfoWide layout");
static_assert(offsetof(ClassInfoWide, subCategories) == 184, "ClassInfoWide layout");
static_assert(offsetof(ClassInfoWide, vendor) == 312, "ClassInfoWide layout");
static_assert(offsetof(ClassInfoWide, sdkVersion) == 568, "ClassInfoWide layout");

struct IPluginFactory : FUnknown {
    // Copies the factory record; a null pointer is ignored.
    virtual tresult getFactoryInfo(FactoryInfo* info) = 0;
    virtual int32 countClasses() = 0;
    virtual tresult getClassInfo(int32 index, ClassInfo* info) = 0;
    // Creates the class cid and asks it for iid: one reference, the caller releases.
    virtual tresult createInstance(const uint8* cid, const FUID& iid, void** object) = 0;

    static constexpr FUID iid = FUID::make(0x7A4D811C, 0x5211, 0x4A1F, 0xAED9, 0xD2EE0B43BF9F);
};

struct IPluginFactory2 : IPluginFactory {
    virtual tresult getClassInfo2(int32 index, ClassInfo2* info) = 0;

    static constexpr FUID iid = FUID::make(0x0007B650, 0xF24B, 0x4C0B, 0xA464, 0xEDB9F00B2ABB);
};

struct IPluginFactory3 : IPluginFactory2 {
    virtual tresult getClassInfoUnicode(int32 index, ClassInfoWide* info) = 0;
    // Not offered: answers kNotImplemented.
    virtual tresult setHostContext(FUnknown* context) = 0;

    static constexpr FUID iid = FUID::make(0x4555A2AB, 0xC123, 0x4E57, 0x9B12, 0x291036878931);
};

} // namespace Quor
} // namespace Halvorn

// The module's entry functions, the only names it exports.
extern "C" {
// Raises the module's open counter; true.
CORVELLE_EXPORT bool InitDll();
// Lowers the open counter; false once it falls below 0.
CORVELLE_EXPORT bool ExitDll();
// The factory with one reference, owed by the caller.
CORVELLE_EXPORT Halvorn::Quor::IPluginFactory* GetPluginFactory();
}
