// CPluginFactory: a generic table of creatable classes behind the host's factory interfaces.
#pragma once

#include "corvelle/factory.h"
#include "foundation/fobject.h"
#include "foundation/tarray.h"

namespace Halvorn {

// Makes one object of a class with one reference, or null; context is the row's context word.
using ClassCreateFunction = FUnknown* (*)(void* context);

class CPluginFactory : public FObject, public IPluginFactory3 {
public:
    CV_DECLARE_TYPE(CPluginFactory, FObject)
    CV_REFCOUNT_METHODS(FObject)

    explicit CPluginFactory(const FactoryInfo& info);
    CPluginFactory(const CPluginFactory&) = delete;
    CPluginFactory& operator=(const CPluginFactory&) = delete;

    // Appends a row; false for a null record or function, or when the table can't grow.
    [[nodiscard]] bool registerClass(const ClassInfo2* info, ClassCreateFunction create,
                                     void* context);

    tresult queryInterface(const FUID& iid, void** object) override;

    tresult getFactoryInfo(FactoryInfo* info) override;
    int32 countClasses() override;
    tresult getClassInfo(int32 index, ClassInfo* info) override;
    tresult createInstance(const uint8* cid, const FUID& iid, void** object) override;
    tresult getClassInfo2(int32 index, ClassInfo2* info) override;
    tresult getClassInfoUnicode(int32 index, ClassInfoWide* info) override;
    tresult setHostContext(FUnknown* context) override;

protected:
    // Clears the module's factory pointer when it still points here.
    ~CPluginFactory() override;

private:
    struct ClassEntry {
        ClassInfo2 info;
        ClassInfoWide wide;
        ClassCreateFunction create;
        void* context;
    };

    // The row at index, or null for a bad index.
    const ClassEntry* entry(int32 index) const;

    FactoryInfo factoryInfo_;
    TArray<ClassEntry> classes_{10};
};

// The module's one factory, written by GetPluginFactory; null while none lives.
extern CPluginFactory* gPluginFactory;

} // namespace Halvorn
