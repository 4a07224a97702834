#pragma once
// A gap buffer: a list that is fast to edit at neighbouring places, as when a plug-in deletes points or
// selects items one by one. In a plain vector each edit would move all elements after it.

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

namespace headless {

/// Elements by index. Access takes constant time. Inserting and erasing take time in proportion to the
/// distance from the gap, which is at the last edit.
/// @tparam Stack  std::vector is the fastest; std::deque is for millions of elements, as growing copies none
/// and what is erased is freed
template <class T, class Stack = std::vector<T>>
class GapBuffer {
public:
    GapBuffer() = default;
    explicit GapBuffer(std::span<const T> elements) : before_(elements.begin(), elements.end()) {}

    std::size_t size() const { return before_.size() + behind_.size(); }

    T& operator[](std::size_t index) { return const_cast<T&>(std::as_const(*this)[index]); }
    const T& operator[](std::size_t index) const {
        return index < before_.size() ? before_[index] : behind_[size() - 1 - index];
    }

    /// Index of the element after the gap.
    std::size_t gap() const { return before_.size(); }

    void push_back(T element) { insert(size(), std::move(element)); }

    /// Leaves the gap after the new element.
    void insert(std::size_t index, T element) {
        move_gap(index);
        before_.push_back(std::move(element));
    }

    void erase(std::size_t index) {
        move_gap(index + 1);
        before_.pop_back();
    }

    /// All elements in order.
    std::vector<T> elements() const {
        std::vector<T> all;
        all.reserve(size());
        all.insert(all.end(), before_.begin(), before_.end());
        all.insert(all.end(), behind_.rbegin(), behind_.rend());
        return all;
    }

private:
    void move_gap(std::size_t index) {
        for (; before_.size() > index; before_.pop_back())
            behind_.push_back(std::move(before_.back()));
        for (; before_.size() < index; behind_.pop_back())
            before_.push_back(std::move(behind_.back()));
    }

    Stack before_; ///< the elements before the gap
    Stack behind_; ///< the elements after the gap, last element first
};

} // namespace headless
