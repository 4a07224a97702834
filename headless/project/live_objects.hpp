#pragma once
// The addresses of a project's live objects, by kind. They tell a valid handle from a stale one.

#include "headless/base/pointer_set.hpp"

#include <array>
#include <cstddef>
#include <type_traits>

namespace headless::project {

class Track;
class Item;
class Take;
class Envelope;

class LiveObjects {
public:
    template <class T>
    void add(const T* object) {
        sets_[kind_of<T>()].insert(object);
    }

    template <class T>
    void remove(const T* object) {
        sets_[kind_of<T>()].erase(object);
    }

    /// Only compares addresses, so any pointer is allowed, also a dangling one.
    template <class T>
    bool contains(const T* object) const {
        return sets_[kind_of<T>()].contains(object);
    }

private:
    template <class T>
    static constexpr std::size_t kind_of() {
        if constexpr (std::is_same_v<T, Track>) {
            return 0;
        } else if constexpr (std::is_same_v<T, Item>) {
            return 1;
        } else if constexpr (std::is_same_v<T, Take>) {
            return 2;
        } else {
            static_assert(std::is_same_v<T, Envelope>);
            return 3;
        }
    }

    std::array<PointerSet, 4> sets_;
};

} // namespace headless::project
