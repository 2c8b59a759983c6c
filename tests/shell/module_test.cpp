// The built module as a host sees it: loaded with dlopen, reached only through its exports
// (which exports there are, the installed-tree test checks).
#include "corvelle/factory.h"
#include "corvelle/filter.h"
#include "corvelle/package.h" // IMediaPackageManager::iid, a foreign identifier
#include "corvelle/ptr.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <cstdio>
#include <cstring>
#include <string>

using namespace Halvorn;

namespace {

using BoolFunction = bool (*)();
using FactoryFunction = IPluginFactory* (*)();

const uint8 kClassId[16] = {0xFF, 0x57, 0x97, 0xC9, 0xE6, 0x07, 0x38, 0x4C,
                            0xAF, 0xC8, 0xFF, 0xDA, 0x50, 0xEC, 0x20, 0x41};

class ModuleTest : public testing::Test {
protected:
    void SetUp() override {
        handle_ = dlopen(CORVELLE_MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(handle_, nullptr) << dlerror();
        initDll_ = symbol<BoolFunction>("InitDll");
        exitDll_ = symbol<BoolFunction>("ExitDll");
        getPluginFactory_ = symbol<FactoryFunction>("GetPluginFactory");
        ASSERT_TRUE(initDll_ && exitDll_ && getPluginFactory_);
    }
    void TearDown() override {
        if (handle_)
            dlclose(handle_);
    }

    template <class Function> Function symbol(const char* name) {
        return reinterpret_cast<Function>(dlsym(handle_, name));
    }

    IPtr<IPluginFactory3> factory3() {
        auto factory = IPtr<IPluginFactory>::adopt(getPluginFactory_());
        return queryInterface<IPluginFactory3>(factory.get());
    }

    void* handle_ = nullptr;
    BoolFunction initDll_ = nullptr;
    BoolFunction exitDll_ = nullptr;
    FactoryFunction getPluginFactory_ = nullptr;
};

// Checks a fixed text field: the text, then zeros to the field's end.
template <class Char, size_t N> void expectFixedText(const Char (&field)[N], const char* text) {
    size_t length = std::strlen(text);
    ASSERT_LT(length, N);
    for (size_t i = 0; i < N; ++i)
        ASSERT_EQ(static_cast<uint32>(field[i]),
                  i < length ? static_cast<uint32>(static_cast<uint8>(text[i])) : 0u)
            << "at " << i << " of \"" << text << "\"";
}

} // namespace

TEST_F(ModuleTest, RecordsAreByteExactAndBadIndexOrNullIsRefused) {
    auto factory = factory3();
    ASSERT_TRUE(factory);

    FactoryInfo info;
    std::memset(&info, 0xAA, sizeof info);
    ASSERT_EQ(factory->getFactoryInfo(&info), kResultOk);
    expectFixedText(info.vendor, "Halvorn Audio Works");
    expectFixedText(info.url, "https://www.halvorn-audio.com");
    expectFixedText(info.email, "mailto:support@halvorn-audio.com");
    EXPECT_EQ(info.flags, 24);
    EXPECT_EQ(factory->getFactoryInfo(nullptr), kResultOk);

    EXPECT_EQ(factory->countClasses(), 1);

    ClassInfo small;
    std::memset(&small, 0xAA, sizeof small);
    ASSERT_EQ(factory->getClassInfo(0, &small), kResultOk);
    EXPECT_EQ(std::memcmp(small.cid, kClassId, 16), 0);
    EXPECT_EQ(small.cardinality, 1);
    expectFixedText(small.category, "Project Filter");
    expectFixedText(small.name, "Corvelle");

    ClassInfo2 info2;
    std::memset(&info2, 0xAA, sizeof info2);
    ASSERT_EQ(factory->getClassInfo2(0, &info2), kResultOk);
    EXPECT_EQ(std::memcmp(&info2, &small, sizeof small), 0);
    EXPECT_EQ(info2.classFlags, 0u);
    expectFixedText(info2.subCategories, "");
    expectFixedText(info2.vendor, "");
    expectFixedText(info2.version, "1.0.30.119");
    expectFixedText(info2.sdkVersion, "FPI 3.2");

    ClassInfoWide wide;
    std::memset(&wide, 0xAA, sizeof wide);
    ASSERT_EQ(factory->getClassInfoUnicode(0, &wide), kResultOk);
    EXPECT_EQ(std::memcmp(wide.cid, kClassId, 16), 0);
    EXPECT_EQ(wide.cardinality, 1);
    expectFixedText(wide.category, "Project Filter");
    expectFixedText(wide.name, "Corvelle");
    EXPECT_EQ(wide.classFlags, 0u);
    expectFixedText(wide.subCategories, "");
    expectFixedText(wide.vendor, "");
    expectFixedText(wide.version, "1.0.30.119");
    expectFixedText(wide.sdkVersion, "FPI 3.2");

    // A bad index or a null record is refused.
    for (int32 index : {-1, 1, 0x7FFFFFFF}) {
        EXPECT_EQ(factory->getClassInfo(index, &small), kInvalidArgument) << index;
        EXPECT_EQ(factory->getClassInfo2(index, &info2), kInvalidArgument) << index;
        EXPECT_EQ(factory->getClassInfoUnicode(index, &wide), kInvalidArgument) << index;
    }
    EXPECT_EQ(factory->getClassInfo(0, nullptr), kInvalidArgument);
    EXPECT_EQ(factory->getClassInfo2(0, nullptr), kInvalidArgument);
    EXPECT_EQ(factory->getClassInfoUnicode(0, nullptr), kInvalidArgument);
    EXPECT_EQ(factory->setHostContext(nullptr), kNotImplemented);
}

TEST_F(ModuleTest, OneFactoryWhileReferencedAndAFreshOneAfter) {
    IPluginFactory* first = getPluginFactory_();
    ASSERT_NE(first, nullptr);
    IPluginFactory* second = getPluginFactory_();
    EXPECT_EQ(first, second);
    // Two references held; the probe's addRef makes three.
    EXPECT_EQ(first->addRef(), 3u);
    EXPECT_EQ(first->release(), 2u);
    EXPECT_EQ(second->release(), 1u);
    EXPECT_EQ(first->release(), 0u);

    // The table is built anew, not appended to a leftover one.
    auto again = IPtr<IPluginFactory>::adopt(getPluginFactory_());
    ASSERT_TRUE(again);
    EXPECT_EQ(again->countClasses(), 1);
    EXPECT_EQ(again->addRef(), 2u);
    EXPECT_EQ(again->release(), 1u);
}

TEST_F(ModuleTest, QueryInterfaceAnswersTheFourFactoryFaces) {
    auto factory = IPtr<IPluginFactory>::adopt(getPluginFactory_());
    ASSERT_TRUE(factory);
    for (const FUID& iid :
         {FUnknown::iid, IPluginFactory::iid, IPluginFactory2::iid, IPluginFactory3::iid}) {
        void* face = nullptr;
        ASSERT_EQ(factory->queryInterface(iid, &face), kResultOk);
        ASSERT_NE(face, nullptr);
        // Every face is the same object: each query added one reference.
        EXPECT_EQ(static_cast<FUnknown*>(face)->release(), 1u);
    }
    for (const FUID& iid : {IMediaPackageManager::iid, FUID{},
                            FUID::make(0x7A4D811C, 0x5211, 0x4A1F, 0xAED9, 0xD2EE0B43BF9E)}) {
        void* face = reinterpret_cast<void*>(1);
        EXPECT_EQ(factory->queryInterface(iid, &face), kNoInterface);
        EXPECT_EQ(face, nullptr);
    }
    EXPECT_EQ(factory->addRef(), 2u);
    EXPECT_EQ(factory->release(), 1u);
}

TEST_F(ModuleTest, CreateInstanceGivesTheServiceForItsOwnClassOnly) {
    auto factory = IPtr<IPluginFactory>::adopt(getPluginFactory_());
    ASSERT_TRUE(factory);
    uint8 unknown[16];
    std::memcpy(unknown, kClassId, 16);
    unknown[15] ^= 1;
    void* object = reinterpret_cast<void*>(1);
    EXPECT_EQ(factory->createInstance(unknown, FUnknown::iid, &object), kNoInterface);
    EXPECT_EQ(object, nullptr);
    object = reinterpret_cast<void*>(1);
    EXPECT_EQ(factory->createInstance(nullptr, FUnknown::iid, &object), kNoInterface);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(factory->createInstance(kClassId, FUnknown::iid, nullptr), kNoInterface);
    // The class gives the filter service.
    object = nullptr;
    ASSERT_EQ(factory->createInstance(kClassId, Quor::IProjectFilterPlugin3::iid, &object),
              kResultOk);
    auto service =
        IPtr<Quor::IProjectFilterPlugin3>::adopt(static_cast<Quor::IProjectFilterPlugin3*>(object));
    uint32 flags = 0;
    EXPECT_EQ(service->getFilterFlags(&flags), kResultOk);
    EXPECT_EQ(flags, 27u);
}

TEST_F(ModuleTest, OpenCounterGoesNegativeOnAnUnmatchedExit) {
    EXPECT_TRUE(initDll_());
    EXPECT_TRUE(initDll_());
    EXPECT_TRUE(exitDll_());
    EXPECT_TRUE(exitDll_());
    EXPECT_FALSE(exitDll_());
    EXPECT_FALSE(exitDll_());
    // Two opens bring the counter back to 0; ExitDll then goes below again.
    EXPECT_TRUE(initDll_());
    EXPECT_TRUE(initDll_());
    EXPECT_FALSE(exitDll_());
    EXPECT_TRUE(initDll_());
}
