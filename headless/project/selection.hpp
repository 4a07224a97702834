#pragma once
// The selected objects of one kind, in project order, counted through without a search.

#include <cstddef>
#include <iterator>
#include <set>

namespace headless {

/// Selecting and deselecting cost O(log n). `at` walks from the first, the last or the place last asked for,
/// whichever is nearest: counting through in either direction, deselecting on the way or not, costs O(1) a
/// step.
/// @tparam Before  orders two objects; what it reads of an object must not change while that is in here
template <class T, class Before>
class Selection {
public:
    std::size_t size() const { return objects_.size(); }

    /// The object of that place in the order, null past the end.
    T* at(std::size_t index) const {
        if (index >= size()) {
            return nullptr;
        }
        move_to(index);
        return *cursor_;
    }

    void insert(T* object) {
        if (objects_.insert(object).second) {
            forget_place();
        }
    }

    void erase(T* object) {
        const auto found = objects_.find(object);
        if (found == objects_.end()) {
            return;
        }
        if (index_ != unknown && index_ > 0 && found == cursor_) { // the neighbour below keeps the place
            --cursor_;
            --index_;
        } else {
            forget_place();
        }
        objects_.erase(found);
    }

    auto begin() const { return objects_.begin(); }
    auto end() const { return objects_.end(); }

private:
    using Place = typename std::set<T*, Before>::const_iterator;
    static constexpr std::size_t unknown = static_cast<std::size_t>(-1);

    void forget_place() { index_ = unknown; }

    void move_to(std::size_t index) const {
        const std::size_t from_end = size() - index;
        const std::size_t from_cursor =
            index_ == unknown ? unknown : (index_ > index ? index_ - index : index - index_);
        if (from_cursor > index) {
            cursor_ = objects_.begin();
            index_ = 0;
        }
        if (from_end < (index_ > index ? index_ - index : index - index_)) {
            cursor_ = objects_.end();
            index_ = size();
        }
        std::advance(cursor_, static_cast<std::ptrdiff_t>(index) - static_cast<std::ptrdiff_t>(index_));
        index_ = index;
    }

    std::set<T*, Before> objects_;
    mutable Place cursor_;
    mutable std::size_t index_ = unknown;
};

} // namespace headless
