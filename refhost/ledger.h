// Strict reference counting for the reference host: every object it makes is counted, and the
// ledger reports leaks and over-releases when the workstation closes.
#pragma once

#include "corvelle/base.h"
#include "corvelle/ptr.h"
#include "support/counted.h"

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace Halvorn {
namespace RefHost {

class Ledger;

// Base of every object the reference host hands out. The memory of an object stays with the
// ledger until it closes, so that a reference taken or given back after the count reached 0 is
// reported instead of touching freed memory. A class names its faces in faceFor (with
// Support::faceOf) and takes FUnknown's operations from SUPPORT_COUNTED_UNKNOWN.
class HostObject : public Support::RefCounted {
public:
    // Asking any of our objects for this identifier gives the HostObject behind the face.
    static constexpr FUID identity = FUID::make(0x5E7A1C03, 0x44B2, 0x4F0D, 0x8E61, 0x2C9B7D10A4E5);

    HostObject(Ledger& ledger, const char* kind);
    ~HostObject() override = default;

    const char* kind() const { return kind_; }
    // What a report calls this object, besides its kind.
    virtual std::string label() const { return {}; }
    Ledger& ledger() const { return ledger_; }

protected:
    // Gives up the references this object holds; called once its count reaches 0.
    virtual void dispose() {}
    // Answers the identity and the ledger's refusals before the faces.
    tresult answer(const FUID& iid, void** out);

private:
    friend class Ledger;
    void lastReleased() override { dispose(); }
    void misused(const char* what) override;
    Ledger& ledger_;
    const char* kind_;
};

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

} // namespace RefHost
} // namespace Halvorn
