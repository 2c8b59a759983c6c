// CPluginFactory: the class table, its records and instance creation.
#include "shell/pluginfactory.h"

#include "shell/fixedtext.h"

#include <cstring>

namespace Halvorn {

CPluginFactory* gPluginFactory = nullptr;

namespace {

// Widens the 8-bit record one character at a time; the other fields are taken as they are.
ClassInfoWide widen(const ClassInfo2& info) {
    ClassInfoWide wide{};
    std::memcpy(wide.cid, info.cid, sizeof wide.cid);
    wide.cardinality = info.cardinality;
    std::memcpy(wide.category, info.category, sizeof wide.category);
    wide.classFlags = info.classFlags;
    std::memcpy(wide.subCategories, info.subCategories, sizeof wide.subCategories);
    copyFixedField(wide.name, info.name);
    copyFixedField(wide.vendor, info.vendor);
    copyFixedField(wide.version, info.version);
    copyFixedField(wide.sdkVersion, info.sdkVersion);
    return wide;
}

} // namespace

CPluginFactory::CPluginFactory(const FactoryInfo& info) : factoryInfo_(info) {}

CPluginFactory::~CPluginFactory() {
    if (gPluginFactory == this)
        gPluginFactory = nullptr;
}

bool CPluginFactory::registerClass(const ClassInfo2* info, ClassCreateFunction create,
                                   void* context) {
    if (!info || !create)
        return false;
    return classes_.add(ClassEntry{*info, widen(*info), create, context});
}

tresult CPluginFactory::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IPluginFactory)
    CV_QUERY(iid, object, IPluginFactory2)
    CV_QUERY(iid, object, IPluginFactory3)
    return FObject::queryInterface(iid, object);
}

tresult CPluginFactory::getFactoryInfo(FactoryInfo* info) {
    if (info)
        *info = factoryInfo_;
    return kResultOk;
}

int32 CPluginFactory::countClasses() { return classes_.total(); }

const CPluginFactory::ClassEntry* CPluginFactory::entry(int32 index) const {
    return index >= 0 && index < classes_.total() ? &classes_.at(index) : nullptr;
}

tresult CPluginFactory::getClassInfo(int32 index, ClassInfo* info) {
    const ClassEntry* row = entry(index);
    if (!row || !info)
        return kInvalidArgument;
    std::memcpy(info->cid, row->info.cid, sizeof info->cid);
    info->cardinality = row->info.cardinality;
    std::memcpy(info->category, row->info.category, sizeof info->category);
    std::memcpy(info->name, row->info.name, sizeof info->name);
    return kResultOk;
}

tresult CPluginFactory::getClassInfo2(int32 index, ClassInfo2* info) {
    const ClassEntry* row = entry(index);
    if (!row || !info)
        return kInvalidArgument;
    *info = row->info;
    return kResultOk;
}

tresult CPluginFactory::getClassInfoUnicode(int32 index, ClassInfoWide* info) {
    const ClassEntry* row = entry(index);
    if (!row || !info)
        return kInvalidArgument;
    *info = row->wide;
    return kResultOk;
}

tresult CPluginFactory::createInstance(const uint8* cid, const FUID& iid, void** object) {
    // Without somewhere to put the answer nothing is created: the query could only fail.
    if (!object)
        return kNoInterface;
    *object = nullptr;
    if (!cid)
        return kNoInterface;
    for (const ClassEntry& row : classes_) {
        if (std::memcmp(row.info.cid, cid, sizeof row.info.cid) != 0)
            continue;
        FUnknown* instance = row.create(row.context);
        if (!instance)
            return kNoInterface;
        tresult result = instance->queryInterface(iid, object);
        instance->release();
        if (result == kResultOk)
            return kResultOk;
        *object = nullptr;
        return kNoInterface;
    }
    return kNoInterface;
}

tresult CPluginFactory::setHostContext(FUnknown*) { return kNotImplemented; }

} // namespace Halvorn
