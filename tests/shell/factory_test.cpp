// CPluginFactory's table with rows of the test's own, and the module's open counter.
#include "model/cvobject.h"
#include "shell/objectwatcher.h"
#include "shell/pluginfactory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

using namespace Halvorn;

namespace {

int gAlive = 0;

class Probe : public CvObject {
public:
    Probe() { ++gAlive; }

protected:
    ~Probe() override { --gAlive; }
};

FUnknown* createProbe(void* context) {
    ++*static_cast<int*>(context);
    return static_cast<FObject*>(new Probe);
}

FUnknown* createNothing(void*) { return nullptr; }

ClassInfo2 record(uint8 firstByte, const std::string& name) {
    ClassInfo2 info{};
    info.cid[0] = firstByte;
    info.cardinality = 1;
    std::memcpy(info.name, name.data(), std::min(name.size(), sizeof info.name));
    std::memcpy(info.version, "2.0", 3);
    return info;
}

// A factory with its one reference in a handle, as the module hands it out.
struct FactoryHandle {
    FactoryHandle() : factory(new CPluginFactory(FactoryInfo{})) {}
    ~FactoryHandle() { factory->release(); }
    CPluginFactory* factory;
};

} // namespace

TEST(PluginFactory, TableGrowsAndKeepsItsRows) {
    FactoryHandle handle;
    CPluginFactory* factory = handle.factory;
    int calls = 0;
    ClassInfo2 first = record(1, "first");
    EXPECT_FALSE(factory->registerClass(nullptr, createProbe, &calls));
    EXPECT_FALSE(factory->registerClass(&first, nullptr, &calls));
    EXPECT_EQ(factory->countClasses(), 0);

    // Eleven rows pass the first growth step of ten.
    for (uint8 i = 1; i <= 11; ++i) {
        ClassInfo2 info = record(i, "class " + std::to_string(i));
        ASSERT_TRUE(factory->registerClass(&info, createProbe, &calls));
    }
    ASSERT_EQ(factory->countClasses(), 11);
    for (int32 i = 0; i < 11; ++i) {
        ClassInfo2 info;
        ASSERT_EQ(factory->getClassInfo2(i, &info), kResultOk);
        ClassInfo2 expected = record(static_cast<uint8>(i + 1), "class " + std::to_string(i + 1));
        EXPECT_EQ(std::memcmp(&info, &expected, sizeof info), 0) << i;
    }
    EXPECT_EQ(calls, 0);
}

TEST(PluginFactory, WideRecordIsTruncatedToItsTerminator) {
    FactoryHandle handle;
    // A name that fills the whole 8-bit field, with no terminator of its own.
    ClassInfo2 info = record(7, std::string(64, 'x'));
    info.name[63] = 'y';
    info.vendor[0] = static_cast<char8>(0xE9); // widened as a byte, never sign-extended
    ASSERT_TRUE(handle.factory->registerClass(&info, createNothing, nullptr));
    ClassInfoWide wide;
    ASSERT_EQ(handle.factory->getClassInfoUnicode(0, &wide), kResultOk);
    for (int i = 0; i < 63; ++i)
        ASSERT_EQ(wide.name[i], u'x') << i;
    EXPECT_EQ(wide.name[63], 0);
    EXPECT_EQ(wide.vendor[0], 0xE9);
    EXPECT_EQ(wide.vendor[1], 0);
    EXPECT_EQ(wide.version[0], u'2');
    EXPECT_EQ(wide.version[3], 0);
    EXPECT_EQ(wide.cid[0], 7);
}

TEST(PluginFactory, CreateInstanceHandsOverOneReference) {
    FactoryHandle handle;
    CPluginFactory* factory = handle.factory;
    int calls = 0;
    ClassInfo2 empty = record(1, "empty");
    ClassInfo2 probe = record(2, "probe");
    ClassInfo2 shadowed = record(2, "shadowed");
    ASSERT_TRUE(factory->registerClass(&empty, createNothing, nullptr));
    ASSERT_TRUE(factory->registerClass(&probe, createProbe, &calls));
    ASSERT_TRUE(factory->registerClass(&shadowed, createNothing, nullptr));

    // The first row with the cid wins.
    void* object = nullptr;
    ASSERT_EQ(factory->createInstance(probe.cid, IDependent::iid, &object), kResultOk);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(gAlive, 1);
    EXPECT_EQ(static_cast<IDependent*>(object)->release(), 0u);
    EXPECT_EQ(gAlive, 0);

    // An interface the object lacks: the creation reference is dropped, nothing stays alive.
    object = reinterpret_cast<void*>(1);
    EXPECT_EQ(factory->createInstance(probe.cid, IPluginFactory::iid, &object), kNoInterface);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(gAlive, 0);

    object = reinterpret_cast<void*>(1);
    EXPECT_EQ(factory->createInstance(empty.cid, FUnknown::iid, &object), kNoInterface);
    EXPECT_EQ(object, nullptr);
}

TEST(PluginFactory, DyingFactoryClearsOnlyItsOwnModulePointer) {
    auto* mine = new CPluginFactory(FactoryInfo{});
    auto* other = new CPluginFactory(FactoryInfo{});
    gPluginFactory = mine;
    EXPECT_EQ(other->release(), 0u);
    EXPECT_EQ(gPluginFactory, mine);
    EXPECT_EQ(mine->release(), 0u);
    EXPECT_EQ(gPluginFactory, nullptr);
}

TEST(ObjectWatcher, LivesWhileTheModuleIsOpen) {
    ASSERT_EQ(CvObjectWatcher::instance(), nullptr);
    EXPECT_TRUE(InitDll());
    CvObjectWatcher* watcher = CvObjectWatcher::instance();
    ASSERT_NE(watcher, nullptr);
    EXPECT_TRUE(InitDll());
    EXPECT_TRUE(ExitDll());
    EXPECT_EQ(CvObjectWatcher::instance(), watcher);

    // The list grows past its first step of ten.
    Probe* probes[12];
    for (Probe*& probe : probes) {
        probe = new Probe;
        ASSERT_TRUE(watcher->add(probe));
    }
    EXPECT_EQ(watcher->count(), 12);
    EXPECT_TRUE(watcher->remove(probes[3]));
    EXPECT_FALSE(watcher->remove(probes[3]));
    EXPECT_EQ(watcher->count(), 11);
    for (Probe* probe : probes)
        probe->release();

    EXPECT_TRUE(ExitDll());
    EXPECT_EQ(CvObjectWatcher::instance(), nullptr);
    EXPECT_EQ(gAlive, 0);
}
