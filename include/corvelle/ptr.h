// IPtr: the one owning handle for reference-counted objects, and a typed queryInterface.
//
// An IPtr holds exactly one reference. Copying adds one, destruction releases it, and
// adopt() takes over a reference the caller already owns (a new object, a query result).
// There is no silent conversion to a raw pointer: get() says where ownership stays behind.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {

template <class T>
class IPtr {
public:
    IPtr() = default;
    IPtr(decltype(nullptr)) {}
    // Shares the object: adds a reference.
    explicit IPtr(T* object) : object_(object) {
        if (object_)
            object_->addRef();
    }
    IPtr(const IPtr& other) : IPtr(other.object_) {}
    IPtr(IPtr&& other) noexcept : object_(other.object_) { other.object_ = nullptr; }
    ~IPtr() {
        if (object_)
            object_->release();
    }

    // Takes over a reference that the caller owns, without adding one.
    static IPtr adopt(T* object) {
        IPtr result;
        result.object_ = object;
        return result;
    }

    IPtr& operator=(const IPtr& other) { return *this = other.object_; }
    IPtr& operator=(IPtr&& other) noexcept {
        if (this != &other) {
            T* old = object_;
            object_ = other.object_;
            other.object_ = nullptr;
            if (old)
                old->release();
        }
        return *this;
    }
    // Assigning the held pointer again changes nothing; another releases the old one.
    IPtr& operator=(T* object) {
        if (object != object_) {
            if (object)
                object->addRef();
            T* old = object_;
            object_ = object;
            if (old)
                old->release();
        }
        return *this;
    }

    // Borrowed: valid while this handle holds it.
    T* get() const { return object_; }
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }

    // Hands the reference to the caller, leaving the handle empty.
    [[nodiscard]] T* release() {
        T* result = object_;
        object_ = nullptr;
        return result;
    }

    bool operator==(const IPtr& other) const { return object_ == other.object_; }
    bool operator!=(const IPtr& other) const { return object_ != other.object_; }
    bool operator==(const T* other) const { return object_ == other; }
    bool operator!=(const T* other) const { return object_ != other; }

private:
    T* object_ = nullptr;
};

// Asks an object for an interface; an empty handle when it lacks it or is null.
template <class I>
IPtr<I> queryInterface(FUnknown* object) {
    void* face = nullptr;
    if (!object || object->queryInterface(I::iid, &face) != kResultOk)
        return {};
    return IPtr<I>::adopt(static_cast<I*>(face));
}

} // namespace Halvorn
