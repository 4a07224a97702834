#pragma once
// The operations of a record, written once for the field list of any class.

#include "object/field_cell.hpp"
#include "object/value_form.hpp"

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <tuple>
#include <utility>

namespace mk_object {

/// Calls `visit(field, cell)` for each field of the record, in order.
template <class T, class Visit>
void each_field(T& record, Visit visit) {
    std::apply([&](const auto&... field) { (visit(field, record.*field.cell), ...); }, T::fields);
}

/// Calls `visit(field, cell)` for the field with that key, if there is one.
template <class T, class Visit>
void with_field(T& record, std::string_view key, Visit visit) {
    each_field(record, [&](const auto& field, auto& cell) {
        if (key == field.key)
            visit(field, cell);
    });
}

/// Gives a record its own cells, in one allocation.
template <class T>
void make_cells(T& record) {
    std::apply(
        [&]<class... F>(const F&... field) {
            const auto cells = std::make_shared<std::tuple<mk_LitsItem_inner<typename F::Value>...>>();
            [&]<std::size_t... I>(std::index_sequence<I...>) {
                ((record.*field.cell = {cells, &std::get<I>(*cells)}), ...);
            }
            (std::index_sequence_for<F...>{});
        },
        T::fields);
}

/// Sets `key` in the table on top of the stack to the cell's value, if it exists.
template <class T>
void push_field(lua_State* L, const char* key, const mk_LitsItem_inner<T>& cell) {
    if (!cell.exists)
        return;
    lua_pushstring(L, key);
    ValueForm<T>::push(L, cell.value);
    lua_settable(L, -3);
}

template <class T>
void push_record(lua_State* L, const T& record) {
    lua_createtable(L, 0, 0);
    each_field(record, [&](const auto& field, const auto& cell) { push_field(L, field.key, *cell); });
}

/// Reads the table at an absolute stack index, up to the first key that is not a string.
template <class T>
void read_record(lua_State* L, int index, T& record) {
    for (lua_pushnil(L); lua_next(L, index); lua_pop(L, 1)) {
        if (lua_type(L, -2) != LUA_TSTRING) {
            lua_pop(L, 2);
            return;
        }
        std::size_t length = 0;
        const char* key = lua_tolstring(L, -2, &length);
        with_field(record, {key, length}, [&]<class F>(const F& field, const auto& cell) {
            if (field.from_table == FromTable::yes)
                cell->set(ValueForm<typename F::Value>::read(L, -1));
        });
    }
}

template <class T>
unsigned int present_fields(const T& record) {
    unsigned int count = 0;
    each_field(record, [&](const auto&, const auto& cell) { count += cell->exists; });
    return count;
}

/// Returns the key and the type name of the index-th present field.
/// @throws std::out_of_range if there is no such field
template <class T>
std::pair<std::string, std::string> key_info(const T& record, int index) {
    std::pair<std::string, std::string> info;
    int position = 0;
    each_field(record, [&]<class F>(const F& field, const auto& cell) {
        if (cell->exists && position++ == index)
            info = {field.key, ValueForm<typename F::Value>::name};
    });
    if (info.first.empty())
        throw std::out_of_range("out of range");
    return info;
}

template <class T>
mk_Value field_value(const T& record, std::string_view key) {
    mk_Value value;
    with_field(record, key, [&]<class F>(const F&, const auto& cell) {
        value.emplace<typename ValueForm<typename F::Value>::Held>(cell->value);
    });
    return value;
}

template <class T>
void set_field(T& record, std::string_view key, const mk_Value& value) {
    with_field(record, key, [&]<class F>(const F&, const auto& cell) {
        if (const auto* held = std::get_if<typename ValueForm<typename F::Value>::Held>(&value))
            cell->set(static_cast<typename F::Value>(*held));
    });
}

} // namespace mk_object
