// FObject: reference counting and the class-name chain.
#include "foundation/fobject.h"

#include <cstring>

namespace Halvorn {

bool classNameEquals(const char8* name, const char8* className) {
    return name && std::strcmp(name, className) == 0;
}

tresult FObject::queryInterface(const FUID& iid, void** object) {
    if (!object)
        return kInvalidArgument;
    if (iid == FUnknown::iid || iid == IDependent::iid) {
        addRef();
        *object = static_cast<IDependent*>(this);
        return kResultOk;
    }
    if (iid == FObject::iid) {
        addRef();
        *object = this;
        return kResultOk;
    }
    *object = nullptr;
    return kNoInterface;
}

uint32 FObject::addRef() { return static_cast<uint32>(count_.fetch_add(1) + 1); }

uint32 FObject::release() {
    int32 count = count_.fetch_sub(1) - 1;
    if (count == 0) {
        // A release reached from the destructor must not destroy twice.
        count_.store(-1000);
        delete this;
    }
    return static_cast<uint32>(count);
}

bool FObject::isTypeOf(const char8* name, bool) const { return classNameEquals(name, kClassName); }

} // namespace Halvorn
