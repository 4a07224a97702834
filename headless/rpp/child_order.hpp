#pragma once
// The order in which the children of an object are written: those that the file has at their places, the
// others after the one that they follow in the model.

#include "headless/chunk/lines.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

namespace headless::rpp {

template <class T>
struct Child {
    T* object;
    std::uint64_t serial;
    bool
        may_stay; ///< false if it is to be written where the model has it, though the file has a place for it
};

/// Where the places of objects of a kind stand among the lines, by the serials of the objects.
using PlaceIndices = std::unordered_map<std::uint64_t, std::size_t>;

inline PlaceIndices places_of(const chunk::Lines& lines, chunk::ObjectKind kind) {
    PlaceIndices places;
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (lines[i].place() && lines[i].place()->kind == kind)
            places.emplace(lines[i].place()->serial, i);
    return places;
}

template <class T>
class ChildOrder {
public:
    /// @param children  in the order of the model
    /// @param none      where to begin if no child stays at its place
    ChildOrder(const chunk::Lines& lines, chunk::ObjectKind kind, const std::vector<Child<T>>& children,
               std::size_t none)
        : kind_(kind), beginning_(none) {
        const PlaceIndices places = places_of(lines, kind);
        std::vector<T*>* group = &first_;
        bool is_first = true;
        for (const Child<T>& child : children) {
            const auto place = places.find(child.serial);
            if (child.may_stay && place != places.end()) {
                group = &groups_[child.serial];
                beginning_ = is_first ? place->second : std::min(beginning_, place->second);
                is_first = false;
            }
            group->push_back(child.object);
        }
    }

    /// Those to be written before the node of that index.
    template <class Write>
    void before(std::size_t index, Write write) const {
        if (index == beginning_)
            std::ranges::for_each(first_, write);
    }

    /// Those to be written at a place.
    template <class Write>
    void at(const chunk::Place& place, Write write) const {
        if (place.kind != kind_)
            return;
        if (const auto group = groups_.find(place.serial); group != groups_.end())
            std::ranges::for_each(group->second, write);
    }

private:
    chunk::ObjectKind kind_;
    std::size_t beginning_; ///< where the children before the first that stays are written
    std::vector<T*> first_;
    std::unordered_map<std::uint64_t, std::vector<T*>> groups_;
};

/// Children that keep their places as long as their order stays the same.
template <class T>
void let_ordered_stay(std::vector<Child<T>>& children, const chunk::Lines& lines, chunk::ObjectKind kind) {
    const PlaceIndices places = places_of(lines, kind);
    std::size_t end_of_last = 0;
    for (Child<T>& child : children) {
        const auto place = places.find(child.serial);
        child.may_stay = place != places.end() && place->second >= end_of_last;
        if (child.may_stay)
            end_of_last = place->second + 1;
    }
}

} // namespace headless::rpp
