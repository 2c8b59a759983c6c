// Hash indexes beside the model's lists: by object and by id, the lists' tags, and the count of
// comparisons that lets a test see whether a search stays constant as a list grows.
#pragma once

#include "foundation/fstring.h"
#include "model/cvnode.h"

#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>

namespace Halvorn {

// The comparisons made by unique adds and lookups by id on this thread: each element or slot
// that a search looks at counts one. Never reset; a caller takes the difference.
uint64& listComparisons();

// The tags that an object carries for the unique lists: in none, or in several; every other
// value is the tag of the one list that took it.
constexpr uint32 kInNoList = 0;
constexpr uint32 kInSeveralLists = 0xFFFFFFFFu;

// A tag no list had before, from any thread; kInSeveralLists once they are all given out.
uint32 nextListTag();

// Pointers hash by address; the low bits of an allocation carry no information.
inline uint64 hashPointer(const void* pointer) {
    return (uint64(reinterpret_cast<uintptr_t>(pointer)) >> 4) * 0x9E3779B97F4A7C15ull;
}

// Open addressing over borrowed element pointers, each with its hash. Holds no references and
// never removes: the model's lists only grow. A failed growth (memory) gives false and leaves
// the index as it was. An index whose hash is the element's address keeps no hash beside the
// pointer (keepsHash false): half the memory, and half the cache lines a search touches.
template <class T, bool keepsHash = true> class CvHashIndex {
public:
    // The element of this hash for which matches is true, or null.
    template <class Matches> T* find(uint64 hash, Matches matches) const {
        if (!slots_)
            return nullptr;
        for (uint64 i = hash & mask_;; i = (i + 1) & mask_) {
            const Slot& slot = slots_[i];
            if (!slot.element)
                return nullptr;
            ++listComparisons();
            if (slot.hash() == hash && matches(slot.element))
                return slot.element;
        }
    }

    // Adds without a test: the caller knows the element isn't there yet.
    [[nodiscard]] bool insert(T* element, uint64 hash) {
        // Kept at most half full, so that a probe ends after a few slots.
        if ((count_ + 1) * 2 > capacity() && !grow())
            return false;
        place(Slot(element, hash));
        ++count_;
        return true;
    }

private:
    struct HashedSlot {
        HashedSlot() = default;
        HashedSlot(T* element, uint64 hash) : element(element), hashValue(hash) {}
        uint64 hash() const { return hashValue; }
        T* element = nullptr;
        uint64 hashValue = 0;
    };
    struct AddressSlot {
        AddressSlot() = default;
        AddressSlot(T* element, uint64) : element(element) {}
        uint64 hash() const { return hashPointer(element); }
        T* element = nullptr;
    };
    using Slot = std::conditional_t<keepsHash, HashedSlot, AddressSlot>;
    static constexpr uint64 kFirstCapacity = 32;

    uint64 capacity() const { return slots_ ? mask_ + 1 : 0; }

    void place(const Slot& slot) {
        uint64 i = slot.hash() & mask_;
        while (slots_[i].element)
            i = (i + 1) & mask_;
        slots_[i] = slot;
    }

    bool grow() {
        const uint64 oldCapacity = capacity();
        const uint64 newCapacity = oldCapacity ? oldCapacity * 2 : kFirstCapacity;
        std::unique_ptr<Slot[]> old(new (std::nothrow) Slot[newCapacity]);
        if (!old)
            return false;
        old.swap(slots_);
        mask_ = newCapacity - 1;
        for (uint64 i = 0; i < oldCapacity; ++i)
            if (old[i].element)
                place(old[i]);
        return true;
    }

    std::unique_ptr<Slot[]> slots_;
    uint64 mask_ = 0;
    uint64 count_ = 0;
};

// The objects of a list, found by address.
template <class T> using CvPointerIndex = CvHashIndex<T, false>;

// The first element added for each id, T being a CvNode class. Ids never change once given,
// so the index stays true as long as every element that the list gains is added here too.
template <class T> class CvIdIndex {
public:
    // Keeps the element unless one with the same id came first; false when memory ran out.
    [[nodiscard]] bool add(T* element) {
        const String& id = idOf(element);
        const uint64 hash = hashText(id);
        return find(id, hash) || index_.insert(element, hash);
    }

    T* find(const String& id) const { return find(id, hashText(id)); }

    static const String& idOf(const T* element) {
        return element->getNodeId();
    }

private:
    T* find(const String& id, uint64 hash) const {
        return index_.find(hash, [&](const T* element) { return idOf(element) == id; });
    }

    CvHashIndex<T> index_;
};

} // namespace Halvorn
