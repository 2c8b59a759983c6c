// Helpers for the model's owning lists: unique and plain adding, bounded access, look-up by id,
// raw copies.
#pragma once

#include "corvelle/ptr.h"
#include "foundation/tarray.h"
#include "model/cvnode.h"

namespace Halvorn {

template <class T> bool listHolds(const TArray<IPtr<T>>& list, const T* object) {
    for (const IPtr<T>& element : list)
        if (element.get() == object)
            return true;
    return false;
}

// Plain add: appends with one reference of the list's own; null does nothing.
template <class T> void addToList(TArray<IPtr<T>>& list, T* object) {
    if (object)
        list.add(IPtr<T>(object));
}

// Unique add: as addToList, but an object the list already holds is not added again.
template <class T> void addUniqueToList(TArray<IPtr<T>>& list, T* object) {
    if (object && !listHolds(list, object))
        list.add(IPtr<T>(object));
}

// The element at index as face I, borrowed; null at or beyond the count.
template <class I, class T> I* listElement(const TArray<IPtr<T>>& list, uint32 index) {
    if (index >= static_cast<uint32>(list.total()))
        return nullptr;
    return static_cast<I*>(list.at(static_cast<int32>(index)).get());
}

// The element with the id as face I, borrowed; null for a null id or when none has it.
template <class I, class T> I* listFindById(const TArray<IPtr<T>>& list, const char16* id) {
    if (!id)
        return nullptr;
    String wanted(id);
    for (const IPtr<T>& element : list)
        if (element->getNodeId() == wanted)
            return element.get();
    return nullptr;
}

template <class T> uint32 listCount(const TArray<IPtr<T>>& list) {
    return static_cast<uint32>(list.total());
}

// A temporary copy of the elements that holds no references.
template <class T> TArray<T*> rawList(const TArray<IPtr<T>>& list) {
    TArray<T*> result(-1);
    for (const IPtr<T>& element : list)
        result.add(element.get());
    return result;
}

} // namespace Halvorn
