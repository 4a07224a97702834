#include "headless/script/results.hpp"

#include <cstdint>
#include <cstring>

namespace headless::script {
namespace {

void push_handle(lua_State* L, void* handle) {
    if (handle)
        lua_pushlightuserdata(L, handle);
    else
        lua_pushnil(L);
}

void push_return_value(lua_State* L, ValueKind kind, void* word) {
    switch (kind) {
    case ValueKind::integer:
        lua_pushinteger(L, static_cast<int>(reinterpret_cast<std::intptr_t>(word)));
        break;
    case ValueKind::boolean:
        lua_pushboolean(L, word ? 1 : 0);
        break;
    case ValueKind::number:
        lua_pushnumber(L, word ? *static_cast<const double*>(word) : 0.0);
        break;
    case ValueKind::text:
        lua_pushstring(L, static_cast<const char*>(word));
        break; // null becomes nil
    case ValueKind::handle:
        push_handle(L, word);
        break;
    default:
        lua_pushnil(L);
        break;
    }
}

void push_cell(lua_State* L, ValueKind kind, const Cell& cell) {
    switch (kind) {
    case ValueKind::integer:
        lua_pushinteger(L, cell.integer);
        break;
    case ValueKind::boolean:
        lua_pushboolean(L, cell.truth ? 1 : 0);
        break;
    case ValueKind::number:
        lua_pushnumber(L, cell.number);
        break;
    case ValueKind::text:
        if (cell.buffer) {
            const auto size = static_cast<std::size_t>(cell.size);
            lua_pushlstring(L, cell.buffer, strnlen(cell.buffer, size));
        } else {
            lua_pushstring(L, cell.text ? cell.text : "");
        }
        break;
    default:
        lua_pushnil(L);
        break;
    }
}

/// In C such a function returns a number for every key; scripts get a handle if the key names an object.
bool gives_object(const BridgedFunction& function, const Arguments& arguments) {
    const char* key = arguments.cells[1].text;
    return function.definition.result == ValueKind::number && function.name.ends_with("Info_Value") && key &&
           std::strncmp(key, "P_", 2) == 0;
}

void* address_in(const void* number) {
    return number ? reinterpret_cast<void*>(static_cast<std::uintptr_t>(*static_cast<const double*>(number)))
                  : nullptr;
}

} // namespace

int push_results(lua_State* L, const BridgedFunction& function, const Arguments& arguments, void* result) {
    const Definition& definition = function.definition;
    luaL_checkstack(L, static_cast<int>(max_parameters) + 1, "results");
    int count = 0;
    if (gives_object(function, arguments)) {
        push_handle(L, address_in(result));
        ++count;
    } else if (definition.result != ValueKind::nothing) {
        push_return_value(L, definition.result, result);
        ++count;
    }
    for (std::size_t i = 0; i < definition.parameters.size(); ++i) {
        if (definition.parameters[i].is_result()) {
            push_cell(L, definition.parameters[i].kind, arguments.cells[i]);
            ++count;
        }
    }
    return count;
}

} // namespace headless::script
