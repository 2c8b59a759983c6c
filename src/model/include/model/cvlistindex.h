// Hash indexes beside the model's lists: by object and by id, the lists' tags, and the count of
// comparisons that lets a test see whether a search stays constant as a list grows.
#pragma once

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

// The first element added for each id, T being a CvNode class. Ids never change once given,
// so the index stays true as long as every element that the list gains is added here too.
// A slot is half a pointer pair: 32 bits of the id's hash and the element's place in an array
// of the indexed elements, so that the slots of a large list stay within the processor's
// caches twice as long as slots holding a pointer and a whole hash would.
template <class T> class CvIdIndex {
public:
    // Keeps the element unless one with the same id came first; false when memory ran out.
    [[nodiscard]] bool add(T* element) {
        const String& id = idOf(element);
        const uint64 hash = hashText(id);
        if (find(id, hash))
            return true;
        const int32 place = elements_.total();
        if (place == kMaxPlaces || !elements_.add(element))
            return false;
        if (table_.insert(Slot{uint32(hash), uint32(place) + 1}))
            return true;
        elements_.removeAt(place);
        return false;
    }

    T* find(const String& id) const { return find(id, hashText(id)); }

    static const String& idOf(const T* element) {
        return element->getNodeId();
    }

private:
    struct Slot {
        bool empty() const { return number == 0; }
        uint64 hash() const { return hashBits; }
        bool mayHold(uint64 hash) const { return uint32(hash) == hashBits; }
        uint32 hashBits = 0;
        uint32 number = 0; // the element's place plus one; zero in an empty slot
    };
    // Kept half full, a table of this many elements has at most 2^31 slots, so the 32 hash bits
    // a slot keeps place it exactly where the whole hash would.
    static constexpr int32 kMaxPlaces = 1 << 30;

    T* find(const String& id, uint64 hash) const {
        const Slot* slot = table_.find(hash, [&](const Slot& candidate) {
            return idOf(elements_.at(int32(candidate.number - 1))) == id;
        });
        return slot ? elements_.at(int32(slot->number - 1)) : nullptr;
    }

    // Doubling, so that a long list grows in linear time.
    TArray<T*> elements_{-1};
    CvSlotTable<Slot> table_;
};

} // namespace Halvorn
