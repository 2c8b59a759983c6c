// The model's owning lists: CvUniqueList for unique adds with its indexes, and helpers for plain
// adding, bounded access and raw copies.
#pragma once

#include "corvelle/ptr.h"
#include "foundation/tarray.h"
#include "model/cvlistindex.h"

namespace Halvorn {

// An owning list whose add keeps each object once, in order of adding. Each object carries a
// tag naming the one list that ever took it (or that several did), so an object new to this
// list, which is nearly every add, needs no search. An object that several lists took is
// searched for: element by element while the list is short, and from kIndexedFrom elements on
// in a hash index beside it, so that adding stays constant however long the list grows. With
// findsById, a second index gives the first element of each id. T is a CvNode class.
template <class T> class CvUniqueList {
public:
    static constexpr int32 kIndexedFrom = 8;

    explicit CvUniqueList(bool findsById = false) : findsById_(findsById) {}
    // A copy would share the tag, and so would count its elements as its own.
    CvUniqueList(const CvUniqueList&) = delete;
    CvUniqueList& operator=(const CvUniqueList&) = delete;

    // Appends with a reference of the list's own; null, or an object the list holds, does
    // nothing.
    void add(T* object) {
        if (!object || holds(object) || !elements_.add(IPtr<T>(object)))
            return;
        object->listTag_ = object->listTag_ == kInNoList ? tag_ : kInSeveralLists;
        if (objects_ && !objects_->insert(object))
            objects_.reset(); // out of memory: searched element by element until rebuilt
        if (findsById_)
            indexId();
    }

    // The first element with the id, or null.
    T* findById(const String& id) const {
        if (ids_)
            return ids_->find(id);
        for (const IPtr<T>& element : elements_) {
            ++listComparisons();
            if (CvIdIndex<T>::idOf(element.get()) == id)
                return element.get();
        }
        return nullptr;
    }

    const TArray<IPtr<T>>& elements() const { return elements_; }

private:
    // Searches only when the tag can't tell: lists never give an element up, so an object that
    // one list alone took is in that list and in no other.
    bool holds(const T* object) {
        const uint32 tag = object->listTag_;
        if (tag == kInNoList)
            return false;
        if (tag != kInSeveralLists && tag_ != kInSeveralLists)
            return tag == tag_;
        return search(object);
    }

    // Builds the object index on the first search of a long list, so a list filled only with
    // objects new to it never pays for one.
    bool search(const T* object) {
        if (!objects_ && elements_.total() >= kIndexedFrom)
            objects_ = buildIndex<CvPointerIndex<T>>([&](CvPointerIndex<T>& index, int32 place) {
                return index.insert(elements_.at(place).get());
            });
        if (objects_)
            return objects_->holds(object);
        for (const IPtr<T>& element : elements_) {
            ++listComparisons();
            if (element.get() == object)
                return true;
        }
        return false;
    }

    // Lookups by id may come from several readers at once, so this index is built as the list
    // grows, never on a lookup.
    void indexId() {
        if (ids_) {
            if (!ids_->add(elements_.total() - 1))
                ids_.reset();
        } else if (elements_.total() >= kIndexedFrom) {
            ids_ = buildIndex<CvIdIndex<T>>(
                [](CvIdIndex<T>& index, int32 place) { return index.add(place); }, elements_);
        }
    }

    // An index made from args and given every element; null when memory ran out.
    template <class Index, class Insert, class... Args>
    std::unique_ptr<Index> buildIndex(Insert insert, const Args&... args) const {
        std::unique_ptr<Index> index(new (std::nothrow) Index(args...));
        for (int32 place = 0; index && place < elements_.total(); ++place)
            if (!insert(*index, place))
                return nullptr;
        return index;
    }

    // Doubling, so that a long list grows in linear time.
    TArray<IPtr<T>> elements_{-1};
    std::unique_ptr<CvPointerIndex<T>> objects_;
    std::unique_ptr<CvIdIndex<T>> ids_;
    // This list's own tag; kInSeveralLists once every tag was given out, and then each add of
    // an object that a list took before searches.
    const uint32 tag_ = nextListTag();
    bool findsById_;
};

// Plain add: appends with one reference of the list's own; null does nothing.
template <class T> void addToList(TArray<IPtr<T>>& list, T* object) {
    if (object)
        list.add(IPtr<T>(object));
}

// The element at index as face I, borrowed; null at or beyond the count.
template <class I, class T> I* listElement(const TArray<IPtr<T>>& list, uint32 index) {
    if (index >= static_cast<uint32>(list.total()))
        return nullptr;
    return static_cast<I*>(list.at(static_cast<int32>(index)).get());
}

template <class I, class T> I* listElement(const CvUniqueList<T>& list, uint32 index) {
    return listElement<I>(list.elements(), index);
}

template <class T> uint32 listCount(const TArray<IPtr<T>>& list) {
    return static_cast<uint32>(list.total());
}

template <class T> uint32 listCount(const CvUniqueList<T>& list) {
    return listCount(list.elements());
}

// A temporary copy of the elements that holds no references.
template <class T> TArray<T*> rawList(const TArray<IPtr<T>>& list) {
    TArray<T*> result(-1);
    for (const IPtr<T>& element : list)
        result.add(element.get());
    return result;
}

template <class T> TArray<T*> rawList(const CvUniqueList<T>& list) {
    return rawList(list.elements());
}

} // namespace Halvorn
