#pragma once
// The cell of one record field: a value, and a flag that says whether it has been set. Copies of a record
// share their cells.

#include "host_api/export.hpp"

#include <nlohmann/json_fwd.hpp>

#include <memory>
#include <string>
#include <utility>

struct lua_State;

namespace mk_object {

using json = nlohmann::json; // complete with <nlohmann/json.hpp>

template <class T>
struct mk_LitsItem_inner {
    T value{};
    bool exists = false;

    void set(T new_value) {
        value = std::move(new_value);
        exists = true;
    }
};

/// The cell of a string. It also has a typed JSON form: an object with the single key "string".
template <>
struct MK_EXPORT mk_LitsItem_inner<std::string> {
    std::string value;
    bool exists = false;

    void set(std::string new_value) {
        value = std::move(new_value);
        exists = true;
    }

    /// Sets `key` in the table on top of the stack if the value exists. May raise Lua's memory error.
    void push_luavalue(lua_State* L, std::string key);

    /// Sets the value from `source[key]` if that is an object whose first key is "string" and holds a string.
    void set_value_from_json(json& source, std::string key);

    /// Stores the typed form at `target[key]` if the value exists. A null `target` becomes an object.
    void set_json(json& target, std::string key);
};

/// A record's pointer to one of its cells; never null.
template <class T>
using Cell = std::shared_ptr<mk_LitsItem_inner<T>>;

/// Whether a field can be read from a Lua table.
enum class FromTable { yes, no };

/// One line of a record's field list: the key and the member.
template <class Owner, class T>
struct Field {
    const char* key;
    Cell<T> Owner::*cell;
    FromTable from_table = FromTable::yes;
    using Value = T;
};
template <class Owner, class T>
Field(const char*, Cell<T> Owner::*, FromTable = FromTable::yes) -> Field<Owner, T>;

} // namespace mk_object
