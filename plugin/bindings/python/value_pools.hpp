#pragma once
// Arrays and maps of plain values that Python holds by handle. The pools are process-wide and unlocked. Only
// release calls empty them. Reading with an unknown handle, an index out of range or another type than the
// value's returns the zero of the requested type. Setting with an unknown handle does nothing.

#include "object/mk_list.hpp"
#include "object/value_form.hpp"

#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace python_utility {

using mk_object::mk_Value;
using ValueArray = std::vector<mk_Value>;
using ValueMap = std::map<std::string, mk_Value>;

inline mk_object::Pool<ValueArray> pyvar_array_list;
inline mk_object::Pool<ValueMap> pyvar_map_list;

/// Adds an object to a pool.
/// @returns its handle, which is its address
template <class T>
unsigned long long pool_object(mk_object::Pool<T>& pool, std::shared_ptr<T> object) {
    const auto handle = reinterpret_cast<unsigned long long>(object.get());
    pool.emplace(handle, std::move(object));
    return handle;
}

/// Returns the pooled object, or null for an unknown handle.
template <class T>
T* find_object(const mk_object::Pool<T>& pool, unsigned long long handle) {
    const auto entry = pool.find(handle);
    return entry == pool.end() ? nullptr : entry->second.get();
}

inline unsigned long long create_array_inpool() {
    return pool_object(pyvar_array_list, std::make_shared<ValueArray>());
}
inline unsigned long long create_map_inpool() {
    return pool_object(pyvar_map_list, std::make_shared<ValueMap>());
}

/// Appends a value.
template <class T>
void set_value_inarray(unsigned long long handle, T value) {
    if (ValueArray* array = find_object(pyvar_array_list, handle))
        array->emplace_back(std::in_place_type<T>, std::move(value));
}

/// Sets a key, replacing any previous value.
template <class T>
void set_value_inmap(unsigned long long handle, std::string key, T value) {
    if (ValueMap* map = find_object(pyvar_map_list, handle))
        map->insert_or_assign(std::move(key), mk_Value(std::in_place_type<T>, std::move(value)));
}

template <class T>
T value_or_zero(const mk_Value& value) {
    const T* held = std::get_if<T>(&value);
    return held ? *held : T{};
}

template <class Container>
bool has_place(const Container* container, int index) {
    return container && index >= 0 && static_cast<std::size_t>(index) < container->size();
}

template <class T>
T get_value_inarray(unsigned long long handle, int index) {
    const ValueArray* array = find_object(pyvar_array_list, handle);
    return has_place(array, index) ? value_or_zero<T>((*array)[static_cast<std::size_t>(index)]) : T{};
}

/// Returns the key and the value at an index in key order; an empty key if there is none. Takes time linear
/// in the index.
template <class T>
std::pair<std::string, T> get_value_inmap(unsigned long long handle, int index) {
    const ValueMap* map = find_object(pyvar_map_list, handle);
    if (!has_place(map, index))
        return {};
    const auto entry = std::next(map->begin(), index);
    return {entry->first, value_or_zero<T>(entry->second)};
}

/// Releases an array, and the arrays whose handles it contains as pointers, one level deep.
void release_obj_inpool2(unsigned long long handle);

/// Adds the values to the pool as a new array.
/// @returns the array; its address is the handle
template <class T>
ValueArray* set_obj_topool(std::vector<T>& list) {
    auto array = std::make_shared<ValueArray>();
    array->reserve(list.size());
    for (const T& value : list)
        array->emplace_back(std::in_place_type<typename mk_object::ValueForm<T>::Held>, value);
    ValueArray* address = array.get();
    pool_object(pyvar_array_list, std::move(array));
    return address;
}

} // namespace python_utility
