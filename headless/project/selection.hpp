#pragma once
// The selected objects of one kind, in project order, with access by index.

#include "headless/base/gap_buffer.hpp"

#include <cstddef>
#include <vector>

namespace headless::project {

/// `at` takes constant time. Selecting and deselecting objects one after the other, in either direction,
/// takes O(1) each: the position of the last change is checked first. Other changes take O(log n) comparisons
/// and time in proportion to the distance from that position.
/// @tparam Before  orders two objects; what it reads of an object must not change while the object is in here
template <class T, class Before>
class Selection {
public:
    std::size_t size() const { return objects_.size(); }

    /// The object at that index, null past the end.
    T* at(std::size_t index) const { return index < size() ? objects_[index] : nullptr; }

    void insert(T* object) {
        const std::size_t place = place_of(object);
        if (at(place) != object)
            objects_.insert(place, object);
    }

    void erase(T* object) {
        const std::size_t place = place_of(object);
        if (at(place) == object)
            objects_.erase(place);
    }

    /// A copy of the current selection.
    std::vector<T*> all() const { return objects_.elements(); }

private:
    // The number of objects that come before this one.
    std::size_t place_of(const T* object) const {
        std::size_t begin = 0;
        std::size_t end = size();
        for (std::size_t probe = objects_.gap(); begin < end; probe = begin + (end - begin) / 2) {
            if (probe > begin && objects_[probe - 1] == object)
                return probe - 1;
            if (probe < end && Before()(objects_[probe], object))
                begin = probe + 1;
            else if (probe > begin && !Before()(objects_[probe - 1], object))
                end = probe - 1;
            else
                return probe;
        }
        return begin;
    }

    GapBuffer<T*> objects_;
};

} // namespace headless::project
