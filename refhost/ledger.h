// Strict reference counting for the reference host: every object it makes is counted, and the
// ledger reports leaks and over-releases when the workstation closes.
#pragma once

#include "corvelle/base.h"
#include "corvelle/ptr.h"

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace Halvorn {
namespace RefHost {

class Ledger;

// Base of every object the reference host hands out. The memory of an object stays with the
// ledger until it closes, so that a reference taken or given back after the count reached 0 is
// reported instead of touching freed memory.
class HostObject {
public:
    // Asking any of our objects for this identifier gives the HostObject behind the face.
    static constexpr FUID identity = FUID::make(0x5E7A1C03, 0x44B2, 0x4F0D, 0x8E61, 0x2C9B7D10A4E5);

    HostObject(Ledger& ledger, const char* kind);
    virtual ~HostObject() = default;
    HostObject(const HostObject&) = delete;
    HostObject& operator=(const HostObject&) = delete;

    uint32 retain();
    uint32 drop();
    int32 count() const { return count_; }
    bool alive() const { return count_ > 0; }
    const char* kind() const { return kind_; }
    // What a report calls this object, besides its kind.
    virtual std::string label() const { return {}; }
    Ledger& ledger() const { return ledger_; }

protected:
    // The face for an interface identifier, or null; FUnknown's gives the first face.
    virtual FUnknown* faceFor(const FUID& iid) = 0;
    // Gives up the references this object holds; called once its count reaches 0.
    virtual void dispose() {}
    tresult answer(const FUID& iid, void** out);

private:
    friend class Ledger;
    Ledger& ledger_;
    const char* kind_;
    int32 count_ = 1;
};

// The three operations of FUnknown for a class that derives from HostObject and interfaces.
#define REFHOST_UNKNOWN                                                                            \
    tresult queryInterface(const FUID& iid, void** out) override { return answer(iid, out); }      \
    uint32 addRef() override { return retain(); }                                                  \
    uint32 release() override { return drop(); }

// What the ledger found when the workstation closed.
struct LedgerReport {
    std::vector<std::string> leaks;
    std::vector<std::string> faults;
    bool clean() const { return leaks.empty() && faults.empty(); }
    std::string text() const;
};

class Ledger {
public:
    Ledger() = default;
    // Lets every object give up what it holds, then frees them all.
    ~Ledger();
    Ledger(const Ledger&) = delete;
    Ledger& operator=(const Ledger&) = delete;

    // A new object with count 1, owned by the caller's handle.
    template <class T, class... Args> IPtr<T> make(Args&&... args) {
        auto object = std::make_unique<T>(*this, std::forward<Args>(args)...);
        T* raw = object.get();
        objects_.push_back(std::move(object));
        return IPtr<T>::adopt(raw);
    }

    void fault(const HostObject& object, const char* what);
    // A test-only switch: every object and the context refuse these interfaces, so a test can
    // take the links of a chain away one by one.
    void refuse(const FUID& iid) { refused_.push_back(iid); }
    bool refuses(const FUID& iid) const;
    // Objects still referenced and faults so far.
    LedgerReport report() const;
    int32 liveCount() const;

private:
    std::deque<std::unique_ptr<HostObject>> objects_;
    std::vector<std::string> faults_;
    std::vector<FUID> refused_;
};

// The object of class T behind a face of one of our objects; borrowed. Null for foreign objects,
// other classes, and objects already released.
template <class T> T* hostCast(FUnknown* face) {
    void* out = nullptr;
    if (!face || face->queryInterface(HostObject::identity, &out) != kResultOk)
        return nullptr;
    auto* object = static_cast<HostObject*>(out);
    object->drop();
    return dynamic_cast<T*>(object);
}

// A face of T for iid when iid is one of Faces; used by faceFor.
template <class I, class T> FUnknown* faceIf(const FUID& iid, T* self) {
    return iid == I::iid ? static_cast<I*>(self) : nullptr;
}

} // namespace RefHost
} // namespace Halvorn
