// One way to count references and answer queryInterface for the objects that the tool, the
// reference host and the tests make on the public interfaces.
#pragma once

#include "corvelle/base.h"

#include <algorithm>
#include <atomic>
#include <tuple>

namespace Halvorn {
namespace Support {

// The face of self that iid names among Faces, or null.
template <class... Faces, class Self> FUnknown* faceOf(const FUID& iid, Self* self) {
    FUnknown* face = nullptr;
    ((face == nullptr && iid == Faces::iid ? void(face = static_cast<Faces*>(self)) : void()), ...);
    return face;
}

// A reference count that starts at 1, the maker's. The last release calls lastReleased(), which
// deletes the object; a reference taken or given back after that is refused and told to misused().
class RefCounted {
public:
    RefCounted() = default;
    RefCounted(const RefCounted&) = delete;
    RefCounted& operator=(const RefCounted&) = delete;

    uint32 retain() {
        return uint32(std::max(change(+1, "reference taken after the last release of"), 0));
    }

    uint32 drop() {
        const int32 left = change(-1, "over-release of");
        if (left == 0)
            lastReleased();
        return uint32(std::max(left, 0));
    }

    int32 count() const { return count_.load(); }
    bool alive() const { return count() > 0; }

protected:
    virtual ~RefCounted() = default;
    // The face for an interface identifier, or null.
    virtual FUnknown* faceFor(const FUID& iid) = 0;
    virtual void lastReleased() { delete this; }
    virtual void misused(const char* /*what*/) {}

    // queryInterface: a new reference on the face that faceFor gives.
    tresult answer(const FUID& iid, void** out) {
        if (!out)
            return kInvalidArgument;
        *out = nullptr;
        if (!alive()) {
            misused("queryInterface after the last release of");
            return kNoInterface;
        }
        FUnknown* face = faceFor(iid);
        if (!face)
            return kNoInterface;
        retain();
        *out = face;
        return kResultOk;
    }

private:
    // Adds delta to a live count and gives the new one; -1, and misused(what), when the count
    // has already reached 0.
    int32 change(int32 delta, const char* what) {
        int32 seen = count_.load();
        do {
            if (seen <= 0) {
                misused(what);
                return -1;
            }
        } while (!count_.compare_exchange_weak(seen, seen + delta));
        return seen + delta;
    }

    std::atomic<int32> count_{1};
};

// The three operations of FUnknown for a class that derives from RefCounted and interfaces.
#define SUPPORT_COUNTED_UNKNOWN                                                                    \
    ::Halvorn::tresult queryInterface(const ::Halvorn::FUID& iid, void** out) override {           \
        return answer(iid, out);                                                                   \
    }                                                                                              \
    ::Halvorn::uint32 addRef() override { return retain(); }                                       \
    ::Halvorn::uint32 release() override { return drop(); }

// A counted object answering for its Faces. Made with new; deleted at its last release.
template <class... Faces> class Counted : public RefCounted, public Faces... {
public:
    SUPPORT_COUNTED_UNKNOWN

protected:
    // FUnknown's identifier gives the first face.
    FUnknown* faceFor(const FUID& iid) override {
        if (iid == FUnknown::iid)
            return faceOf<Faces...>(FirstFace::iid, this);
        return faceOf<Faces...>(iid, this);
    }

private:
    using FirstFace = std::tuple_element_t<0, std::tuple<Faces...>>;
};

} // namespace Support
} // namespace Halvorn
