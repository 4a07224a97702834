#pragma once
// The operations of a record, written once over its list of fields. A record class is its field list and
// nothing else.

#include "object/field_cell.hpp"
#include "object/mk_list.hpp"

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <tuple>

namespace mk_object {

/// Whether a field can be read from a Lua table.
enum class FromTable { yes, no };

/// One line of a field list: the key and the member.
template <class Owner, class T>
struct Field {
    const char* key;
    Cell<T> Owner::*cell;
    FromTable from_table = FromTable::yes;
    using Value = T;
    static constexpr const char* type_name() { return ValueForm<T>::name; }
};
template <class Owner, class T>
Field(const char*, Cell<T> Owner::*, FromTable = FromTable::yes) -> Field<Owner, T>;

/// The cells of one record, side by side, in the order of its field list.
template <class Fields>
struct CellBlock;
template <class... F>
struct CellBlock<const std::tuple<F...>> {
    using type = std::tuple<mk_LitsItem_inner<typename F::Value>...>;
};
template <class T>
using Cells = typename CellBlock<decltype(T::fields)>::type;

/// Stands between `mk_List` and a record class `T` that has a `static constexpr std::tuple fields`.
template <class T>
class MK_EXPORT Record : public mk_List {
public:
    void pushvalue(lua_State* L) const override {
        lua_createtable(L, 0, 0);
        each([&](const auto& field) { push_field(L, field.key, *(self().*field.cell)); });
    }

    void release_inpool() override { T::pool.erase(pool_key); }

    void set_value_from_luatable(lua_State* L, int index) override {
        for_each_entry(L, index, [&](std::string_view key) {
            with(key, [&]<class V>(const Field<T, V>& field) {
                if (field.from_table == FromTable::yes)
                    (self().*field.cell)->set(ValueForm<V>::read(L, -1));
            });
        });
    }

    unsigned int get_size() override {
        unsigned int size = 0;
        each([&](const auto& field) { size += (self().*field.cell)->exists; });
        return size;
    }

    std::pair<std::string, std::string> get_key_info(int index) override {
        std::pair<std::string, std::string> info;
        int position = 0;
        each([&]<class V>(const Field<T, V>& field) {
            if ((self().*field.cell)->exists && position++ == index)
                info = {field.key, ValueForm<V>::name};
        });
        if (info.first.empty())
            throw std::out_of_range("out of range");
        return info;
    }

    mk_Value get_value(std::string key) override {
        mk_Value value;
        with(key, [&]<class V>(const Field<T, V>& field) {
            value.emplace<typename ValueForm<V>::Held>((self().*field.cell)->value);
        });
        return value;
    }

    void set_value(std::string key, mk_Value value) override {
        with(key, [&]<class V>(const Field<T, V>& field) {
            if (const auto* held = std::get_if<typename ValueForm<V>::Held>(&value))
                (self().*field.cell)->set(static_cast<V>(*held));
        });
    }

protected:
    /// Gives the record cells of its own, in one allocation.
    void make_cells() {
        const auto cells = std::make_shared<Cells<T>>();
        use_cells(cells, *cells);
    }

    /// Makes the record's fields refer to `cells`, which `owner` keeps alive.
    template <class Owner, class Block>
    void use_cells(const std::shared_ptr<Owner>& owner, Block& cells) {
        [&]<std::size_t... I>(std::index_sequence<I...>) {
            ((self().*std::get<I>(T::fields).cell = {owner, &std::get<I>(cells)}), ...);
        }
        (std::make_index_sequence<std::tuple_size_v<Block>>{});
    }

private:
    T& self() { return static_cast<T&>(*this); }
    const T& self() const { return static_cast<const T&>(*this); }

    template <class Visit>
    static void each(Visit visit) {
        std::apply([&](const auto&... field) { (visit(field), ...); }, T::fields);
    }

    template <class Visit>
    static void with(std::string_view key, Visit visit) {
        each([&](const auto& field) {
            if (key == field.key)
                visit(field);
        });
    }
};

} // namespace mk_object
