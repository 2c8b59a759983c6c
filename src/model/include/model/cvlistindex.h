// Hash indexes beside the model's lists: by object and by id, the lists' tags, and the count of
// comparisons that lets a test see whether a search stays constant as a list grows.
#pragma once

#include "corvelle/ptr.h"
#include "foundation/fstring.h"
#include "foundation/tarray.h"
#include "model/cvnode.h"

#include <cstdint>
#include <memory>
#include <new>

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

// Open addressing over slots that each name one element. A Slot is empty when default-made;
// otherwise hash() gives the bits that placed it and mayHold(hash) rules a slot out cheaply
// before the caller looks at the element. Holds no references and never removes: the model's
// lists only grow. A failed growth (memory) gives false and leaves the table as it was.
template <class Slot> class CvSlotTable {
public:
    // The first slot under this hash for which matches is true, or null.
    template <class Matches> const Slot* find(uint64 hash, Matches matches) const {
        if (!slots_)
            return nullptr;
        for (uint64 i = hash & mask_;; i = (i + 1) & mask_) {
            const Slot& slot = slots_[i];
            if (slot.empty())
                return nullptr;
            ++listComparisons();
            if (slot.mayHold(hash) && matches(slot))
                return &slot;
        }
    }

    // Adds without a test: the caller knows the element isn't there yet.
    [[nodiscard]] bool insert(const Slot& slot) {
        // Kept at most half full, so that a probe ends after a few slots.
        if ((count_ + 1) * 2 > capacity() && !grow())
            return false;
        place(slot);
        ++count_;
        return true;
    }

private:
    static constexpr uint64 kFirstCapacity = 32;

    uint64 capacity() const { return slots_ ? mask_ + 1 : 0; }

    void place(const Slot& slot) {
        uint64 i = slot.hash() & mask_;
        while (!slots_[i].empty())
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
            if (!old[i].empty())
                place(old[i]);
        return true;
    }

    std::unique_ptr<Slot[]> slots_;
    uint64 mask_ = 0;
    uint64 count_ = 0;
};

// A set of objects, found by address. The hash is the address's, so a slot is the pointer alone.
template <class T> class CvPointerIndex {
public:
    bool holds(const T* element) const {
        return table_.find(hashPointer(element),
                           [&](const Slot& slot) { return slot.element == element; });
    }

    // Adds without a test: the caller knows the element isn't there yet.
    [[nodiscard]] bool insert(const T* element) { return table_.insert(Slot{element}); }

private:
    struct Slot {
        bool empty() const { return !element; }
        uint64 hash() const { return hashPointer(element); }
        bool mayHold(uint64) const { return true; }
        const T* element = nullptr;
    };
    CvSlotTable<Slot> table_;
};

// The first element of each id in an array that only grows, found by id: T is a CvNode class and
// Elements an array of T* or IPtr<T>, borrowed for the index's life. Ids never change once given,
// so the index stays true as long as each place that the array gains is added here too. A slot
// is 32 bits of the id's hash and the element's place, 8 bytes, so that the slots of a large
// list stay within the processor's caches twice as long as slots holding a pointer and a whole
// hash would.
template <class T, class Elements = TArray<IPtr<T>>> class CvIdIndex {
public:
    explicit CvIdIndex(const Elements& elements) : elements_(elements) {}
    // A copy would look into the other index's array.
    CvIdIndex(const CvIdIndex&) = delete;
    CvIdIndex& operator=(const CvIdIndex&) = delete;

    // Takes the element at place unless one with the same id came first; false when memory ran
    // out.
    [[nodiscard]] bool add(int32 place) {
        const String& id = idOf(at(uint32(place)));
        const uint64 hash = hashText(id);
        return find(id, hash) || table_.insert(Slot{uint32(hash), uint32(place) + 1});
    }

    T* find(const String& id) const { return find(id, hashText(id)); }

    static const String& idOf(const T* element) { return element->getNodeId(); }

private:
    // An array holds fewer than 2^31 elements, so a table kept half full has at most 2^32 slots,
    // and the 32 hash bits a slot keeps place it where the whole hash would.
    struct Slot {
        bool empty() const { return number == 0; }
        uint64 hash() const { return hashBits; }
        bool mayHold(uint64 hash) const { return uint32(hash) == hashBits; }
        uint32 hashBits = 0;
        uint32 number = 0; // the element's place plus one; zero in an empty slot
    };

    static T* raw(T* element) { return element; }
    static T* raw(const IPtr<T>& element) { return element.get(); }
    T* at(uint32 place) const { return raw(elements_.at(int32(place))); }

    T* find(const String& id, uint64 hash) const {
        const Slot* slot = table_.find(
            hash, [&](const Slot& candidate) { return idOf(at(candidate.number - 1)) == id; });
        return slot ? at(slot->number - 1) : nullptr;
    }

    const Elements& elements_;
    CvSlotTable<Slot> table_;
};

} // namespace Halvorn
