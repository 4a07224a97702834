#include "headless/script/results.hpp"

#include <algorithm>
#include <cstddef>
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

void push_return_value(lua_State* L, ValueKind kind, void* result) {
    switch (kind) {
    case ValueKind::integer:
        lua_pushinteger(L, static_cast<int>(reinterpret_cast<std::intptr_t>(result)));
        break;
    case ValueKind::boolean:
        lua_pushboolean(L, result ? 1 : 0);
        break;
    case ValueKind::number:
        lua_pushnumber(L, result ? *static_cast<const double*>(result) : 0.0);
        break;
    case ValueKind::text:
        lua_pushstring(L, static_cast<const char*>(result));
        break; // null becomes nil
    case ValueKind::handle:
        push_handle(L, result);
        break;
    default:
        lua_pushnil(L);
        break;
    }
}

void push_output(lua_State* L, ValueKind kind, const ArgumentValue& value) {
    switch (kind) {
    case ValueKind::integer:
        lua_pushinteger(L, value.integer);
        break;
    case ValueKind::boolean:
        lua_pushboolean(L, value.boolean ? 1 : 0);
        break;
    case ValueKind::number:
        lua_pushnumber(L, value.number);
        break;
    case ValueKind::text:
        if (value.buffer) {
            const auto size = static_cast<std::size_t>(value.size);
            lua_pushlstring(L, value.buffer, strnlen(value.buffer, size));
        } else {
            lua_pushstring(L, value.text ? value.text : "");
        }
        break;
    default:
        lua_pushnil(L);
        break;
    }
}

/// In C such a function returns a number for every key; scripts get a handle if the key names an object.
bool returns_object(const BridgedFunction& function, const Arguments& arguments) {
    if (function.definition.result != ValueKind::number || !function.name.ends_with("Info_Value"))
        return false;
    const auto& parameters = function.definition.parameters;
    const auto key = std::ranges::find(parameters, ValueKind::text, &Parameter::kind);
    const char* text = key == parameters.end()
                           ? nullptr
                           : arguments.values[static_cast<std::size_t>(key - parameters.begin())].text;
    return text && std::strncmp(text, "P_", 2) == 0;
}

void* address_in(const void* number) {
    return number ? reinterpret_cast<void*>(static_cast<std::uintptr_t>(*static_cast<const double*>(number)))
                  : nullptr;
}

} // namespace

int push_results(lua_State* L, const BridgedFunction& function, const Arguments& arguments, void* result) {
    const ParsedDefinition& definition = function.definition;
    luaL_checkstack(L, static_cast<int>(max_parameters) + 1, "results");
    int count = 0;
    if (returns_object(function, arguments)) {
        push_handle(L, address_in(result));
        ++count;
    } else if (definition.result != ValueKind::nothing) {
        push_return_value(L, definition.result, result);
        ++count;
    }
    for (std::size_t i = 0; i < definition.parameters.size(); ++i) {
        if (definition.parameters[i].is_result()) {
            push_output(L, definition.parameters[i].kind, arguments.values[i]);
            ++count;
        }
    }
    return count;
}

} // namespace headless::script
