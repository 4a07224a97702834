#pragma once
// The addresses of a project's living objects, kind by kind: how a handle from outside is told from a stale
// one.

#include <tuple>
#include <unordered_set>

namespace headless {

class Track;
class Item;
class Take;
class Envelope;

class LiveObjects {
public:
    template <class T>
    void enter(const T* object) {
        set_of<T>().insert(object);
    }

    template <class T>
    void leave(const T* object) {
        set_of<T>().erase(object);
    }

    /// Only compares addresses: any pointer will do, also one to nothing.
    template <class T>
    bool contains(const T* object) const {
        return std::get<std::unordered_set<const T*>>(sets_).contains(object);
    }

private:
    template <class T>
    std::unordered_set<const T*>& set_of() {
        return std::get<std::unordered_set<const T*>>(sets_);
    }

    std::tuple<std::unordered_set<const Track*>, std::unordered_set<const Item*>,
               std::unordered_set<const Take*>, std::unordered_set<const Envelope*>>
        sets_;
};

} // namespace headless
