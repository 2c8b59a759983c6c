// TArray: the growable array of the model's lists, with a fixed growth step and a default element.
#pragma once

#include "corvelle/base.h"

#include <cstddef>
#include <new>
#include <utility>

namespace Halvorn {

// Growth: when the count reaches the capacity, the capacity grows by the step with one new
// allocation. A step of -1 doubles (starting at 10); any other step below 1 never grows.
// An index out of range gives a reference to the default element, never undefined behaviour.
template <class T> class TArray {
public:
    static constexpr int32 kDefaultStep = 10;

    explicit TArray(int32 growStep = kDefaultStep) : step_(growStep) {}
    TArray(const TArray& other) : step_(other.step_) { copyFrom(other); }
    TArray(TArray&& other) noexcept { swap(other); }
    ~TArray() { delete[] buffer_; }

    TArray& operator=(const TArray& other) {
        if (this != &other) {
            TArray copy(other);
            swap(copy);
        }
        return *this;
    }
    TArray& operator=(TArray&& other) noexcept {
        swap(other);
        return *this;
    }

    int32 total() const { return count_; }
    bool isEmpty() const { return count_ == 0; }
    int32 capacity() const { return capacity_; }

    // Appends; false when the array can't grow. The element may be one of this array's own:
    // it is taken before a growth frees the old buffer.
    bool add(const T& element) { return add(T(element)); }
    bool add(T&& element) {
        if (count_ == capacity_) {
            T taken(std::move(element));
            if (!grow())
                return false;
            buffer_[count_++] = std::move(taken);
            return true;
        }
        buffer_[count_++] = std::move(element);
        return true;
    }

    // Removes the first equal element; false when there is none.
    bool remove(const T& element) { return removeAt(indexOf(element)); }

    // Shifts the rest down; false for a bad index.
    bool removeAt(int32 index) {
        if (index < 0 || index >= count_)
            return false;
        for (int32 i = index; i + 1 < count_; ++i)
            buffer_[i] = std::move(buffer_[i + 1]);
        buffer_[--count_] = T();
        return true;
    }

    void removeAll() {
        delete[] buffer_;
        buffer_ = nullptr;
        count_ = capacity_ = 0;
    }

    T& at(int32 index) { return index >= 0 && index < count_ ? buffer_[index] : fallback(); }
    const T& at(int32 index) const {
        return index >= 0 && index < count_ ? buffer_[index] : fallback();
    }
    T& operator[](int32 index) { return at(index); }
    const T& operator[](int32 index) const { return at(index); }

    T& find(const T& element) { return at(indexOf(element)); }
    bool contains(const T& element) const { return indexOf(element) >= 0; }

    int32 occurrences(const T& element) const {
        int32 n = 0;
        for (const T& e : *this)
            n += e == element ? 1 : 0;
        return n;
    }

    int32 indexOf(const T& element) const {
        for (int32 i = 0; i < count_; ++i)
            if (buffer_[i] == element)
                return i;
        return -1;
    }

    // Iteration over the elements in order, for range-for.
    T* begin() { return buffer_; }
    T* end() { return buffer_ + count_; }
    const T* begin() const { return buffer_; }
    const T* end() const { return buffer_ + count_; }

    void swap(TArray& other) noexcept {
        std::swap(buffer_, other.buffer_);
        std::swap(count_, other.count_);
        std::swap(capacity_, other.capacity_);
        std::swap(step_, other.step_);
    }

private:
    [[nodiscard]] bool grow() {
        int64 newCapacity;
        if (step_ == -1)
            newCapacity = capacity_ == 0 ? kDefaultStep : int64(capacity_) * 2;
        else if (step_ >= 1)
            newCapacity = int64(capacity_) + step_;
        else
            return false;
        if (newCapacity > 0x7FFFFFFF)
            return false; // the count must stay an int32
        T* grown = new (std::nothrow) T[static_cast<size_t>(newCapacity)];
        if (!grown)
            return false;
        for (int32 i = 0; i < count_; ++i)
            grown[i] = std::move(buffer_[i]);
        delete[] buffer_;
        buffer_ = grown;
        capacity_ = int32(newCapacity);
        return true;
    }

    void copyFrom(const TArray& other) {
        if (other.count_ == 0)
            return;
        buffer_ = new (std::nothrow) T[static_cast<size_t>(other.count_)];
        if (!buffer_)
            return;
        capacity_ = other.count_;
        for (int32 i = 0; i < other.count_; ++i)
            buffer_[i] = other.buffer_[i];
        count_ = other.count_;
    }

    // A writable default that a caller can't spoil for the next bad index.
    T& fallback() const {
        defaultElement_ = T();
        return defaultElement_;
    }

    T* buffer_ = nullptr;
    int32 count_ = 0;
    int32 capacity_ = 0;
    int32 step_ = kDefaultStep;
    mutable T defaultElement_{};
};

} // namespace Halvorn
