// FObject: the base class of the system's objects, with an atomic count and a class-name chain.
#pragma once

#include "corvelle/base.h"
#include "corvelle/ptr.h"

#include <atomic>
#include <utility>

namespace Halvorn {

// Notified of changes in an object it depends on; the system never sends any.
struct IDependent : FUnknown {
    virtual void update(FUnknown* changedUnknown, int32 message) = 0;

    static constexpr FUID iid = FUID::make(0xF52B7AAE, 0xDE72, 0x416D, 0x8AF1, 0x8ACE9DD7BD5E);
};

class FObject : public IDependent {
public:
    // Asking an interface pointer for this identifier gives the FObject behind it.
    static constexpr FUID iid = FUID::make(0x6B1F2C90, 0x3A4D, 0x4E07, 0x9C51, 0x0D7A2E41B8F3);
    static constexpr const char8* kClassName = "FObject";

    FObject() = default;
    FObject(const FObject&) = delete;
    FObject& operator=(const FObject&) = delete;

    tresult queryInterface(const FUID& iid, void** object) override;
    uint32 addRef() override;
    uint32 release() override;
    void update(FUnknown*, int32) override {}

    // True when name is this class's own name; no base classes asked.
    bool isA(const char8* name) const { return isTypeOf(name, false); }
    virtual const char8* isTypeName() const { return kClassName; }
    // True when name is this class's name or, with askBaseClass, a base class's name.
    virtual bool isTypeOf(const char8* name, bool askBaseClass = true) const;
    bool isEqualInstance(const FObject* other) const { return this == other; }

    int32 refCount() const { return count_.load(); }

protected:
    virtual ~FObject() = default;

private:
    std::atomic<int32> count_{1};
};

bool classNameEquals(const char8* name, const char8* className);

// Gives the object behind an interface pointer when it is of class T (or derives from it).
// Borrowed: no reference is added.
template <class T> T* fobjectCast(FUnknown* face) {
    void* object = nullptr;
    if (!face || face->queryInterface(FObject::iid, &object) != kResultOk)
        return nullptr;
    auto* fobject = static_cast<FObject*>(object);
    fobject->release();
    return fobject->isTypeOf(T::kClassName) ? static_cast<T*>(fobject) : nullptr;
}

// Makes a counted object and hands its first reference to the IPtr; no count is touched.
template <class T, class... Args> IPtr<T> newObject(Args&&... args) {
    return IPtr<T>::adopt(new T(std::forward<Args>(args)...));
}

} // namespace Halvorn

// Declares a class's place in the class-name chain. Base is the nearest FObject-derived base.
// Names are qualified so that the macro also works outside namespace Halvorn.
#define CV_DECLARE_TYPE(Class, Base)                                                               \
    static constexpr const ::Halvorn::char8* kClassName = #Class;                                  \
    const ::Halvorn::char8* isTypeName() const override { return kClassName; }                     \
    bool isTypeOf(const ::Halvorn::char8* name, bool askBaseClass = true) const override {         \
        return ::Halvorn::classNameEquals(name, kClassName) ||                                     \
               (askBaseClass && Base::isTypeOf(name, true));                                       \
    }

// Resolves addRef/release for a class that adds interfaces beside FObject's.
#define CV_REFCOUNT_METHODS(Base)                                                                  \
    ::Halvorn::uint32 addRef() override { return Base::addRef(); }                                 \
    ::Halvorn::uint32 release() override { return Base::release(); }

// One line of a queryInterface: answers for Interface with that face and a new reference.
// A null out-pointer falls through to FObject, which answers kInvalidArgument.
#define CV_QUERY(iidArg, objectArg, Interface)                                                     \
    if ((objectArg) && (iidArg) == Interface::iid) {                                               \
        addRef();                                                                                  \
        *(objectArg) = static_cast<Interface*>(this);                                              \
        return ::Halvorn::kResultOk;                                                               \
    }
