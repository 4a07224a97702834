#include "headless/script/number_array.hpp"

#include <algorithm>
#include <cstring>

namespace headless::script {
namespace {

constexpr const char* type_name = "reaper.array";
constexpr lua_Integer max_numbers = 4'194'304; // as many as the workstation allows

NumberArray& check_array(lua_State* L, int index) {
    NumberArray* array = to_number_array(L, index);
    luaL_argcheck(L, array, index, "reaper.array expected");
    return *array;
}

/// Checks the size, as scripts can use the debug library to give any userdata this type's metatable.
bool is_whole(const NumberArray& array, std::size_t bytes) {
    return bytes >= sizeof array && (bytes - sizeof array) / sizeof(double) == array.capacity &&
           array.size <= array.capacity;
}

/// Pushes the type as it was registered, unless the script has replaced it.
void push_type(lua_State* L) {
    if (luaL_getmetatable(L, type_name) != LUA_TTABLE)
        luaL_error(L, "the type %s is gone", type_name);
}

/// Reads a count or offset from the arguments, within 0 .. limit.
std::size_t check_within(lua_State* L, int index, lua_Integer otherwise, std::size_t limit) {
    const lua_Integer value = luaL_optinteger(L, index, otherwise);
    luaL_argcheck(L, value >= 0 && value <= static_cast<lua_Integer>(limit), index, "out of range");
    return static_cast<std::size_t>(value);
}

/// Part of an array, from arguments that hold an offset from 1 and a size. The default is everything that is
/// left.
struct Part {
    std::size_t begin;
    std::size_t size;
};

Part check_part(lua_State* L, int offset_index, int size_index, std::size_t whole) {
    const std::size_t begin = check_within(L, offset_index, 1, whole + 1);
    luaL_argcheck(L, begin >= 1, offset_index, "out of range");
    const std::size_t left = whole - (begin - 1);
    return {begin - 1, check_within(L, size_index, static_cast<lua_Integer>(left), left)};
}

double& check_element(lua_State* L, NumberArray& array) {
    const lua_Integer key = luaL_checkinteger(L, 2);
    luaL_argcheck(L, key >= 1 && key <= static_cast<lua_Integer>(array.size), 2, "out of range");
    return array.numbers()[key - 1];
}

/// Scripts write `array.clear()` as well as `array:clear()`: the array comes first in either case.
int call_method(lua_State* L) {
    constexpr int method = lua_upvalueindex(1);
    constexpr int array = lua_upvalueindex(2);
    if (lua_touserdata(L, 1) != lua_touserdata(L, array)) {
        lua_pushvalue(L, array);
        lua_insert(L, 1);
    }
    lua_pushvalue(L, method);
    lua_insert(L, 1);
    lua_call(L, lua_gettop(L) - 1, LUA_MULTRET);
    return lua_gettop(L);
}

int get(lua_State* L) {
    NumberArray& array = check_array(L, 1);
    if (lua_type(L, 2) != LUA_TSTRING) {
        lua_pushnumber(L, check_element(L, array));
        return 1;
    }
    lua_getmetatable(L, 1);
    lua_pushvalue(L, 2);
    if (lua_rawget(L, -2) == LUA_TFUNCTION) {
        lua_pushvalue(L, 1);
        lua_pushcclosure(L, call_method, 2);
    }
    return 1;
}

int set(lua_State* L) {
    NumberArray& array = check_array(L, 1);
    check_element(L, array) = luaL_checknumber(L, 3);
    return 0;
}

int length(lua_State* L) {
    lua_pushinteger(L, static_cast<lua_Integer>(check_array(L, 1).size));
    return 1;
}

int clear(lua_State* L) {
    NumberArray& array = check_array(L, 1);
    const double value = luaL_optnumber(L, 2, 0.0);
    const Part part = check_part(L, 3, 4, array.size);
    std::fill_n(array.numbers() + part.begin, part.size, value);
    return 0;
}

/// Copies as many numbers as both sides have, from a table or an array.
int copy(lua_State* L) {
    NumberArray& array = check_array(L, 1);
    const Part target = check_part(L, 5, 4, array.size);
    if (NumberArray* source = to_number_array(L, 2)) {
        const Part part = check_part(L, 3, 6, source->size);
        const std::size_t count = std::min(part.size, target.size);
        std::memmove(array.numbers() + target.begin, source->numbers() + part.begin, count * sizeof(double));
        lua_pushinteger(L, static_cast<lua_Integer>(count));
        return 1;
    }
    luaL_checktype(L, 2, LUA_TTABLE);
    const Part part = check_part(L, 3, 6, lua_rawlen(L, 2));
    const auto first_key = static_cast<lua_Integer>(part.begin) + 1;
    const std::size_t count = std::min(part.size, target.size);
    for (std::size_t i = 0; i < count; ++i) {
        lua_rawgeti(L, 2, first_key + static_cast<lua_Integer>(i));
        array.numbers()[target.begin + i] = lua_tonumberx(L, -1, nullptr);
        lua_pop(L, 1);
    }
    lua_pushinteger(L, static_cast<lua_Integer>(count));
    return 1;
}

int get_capacity(lua_State* L) {
    lua_pushinteger(L, static_cast<lua_Integer>(check_array(L, 1).capacity));
    return 1;
}

int resize(lua_State* L) {
    NumberArray& array = check_array(L, 1);
    const std::size_t size = check_within(L, 2, 0, array.capacity);
    std::fill(array.numbers() + std::min(size, array.size), array.numbers() + size, 0.0);
    array.size = size;
    return 0;
}

int to_table(lua_State* L) {
    NumberArray& array = check_array(L, 1);
    const Part part = check_part(L, 2, 3, array.size);
    lua_createtable(L, static_cast<int>(part.size), 0);
    for (std::size_t i = 0; i < part.size; ++i) {
        lua_pushnumber(L, array.numbers()[part.begin + i]);
        lua_rawseti(L, -2, static_cast<lua_Integer>(i) + 1);
    }
    return 1;
}

constexpr luaL_Reg operators[] = {
    {"__index", get}, {"__newindex", set}, {"__len", length}, {nullptr, nullptr}};

constexpr LuaFunction methods[] = {
    {"clear", clear,
     "void\0double,int,int\0valueOptional,offsetOptional,sizeOptional\0Sets all numbers, or so many from the "
     "offset, to a value, 0 by default"},
    {"copy", copy,
     "int\0object*,int,int,int\0source,sourceOffsetOptional,sizeOptional,offsetOptional\0"
     "Copies numbers from a table or another array, as many as both have. Gives their number"},
    {"get_alloc", get_capacity, "int\0\0\0The most numbers that it has room for"},
    {"resize", resize, "void\0int\0size\0Sets how many numbers count; new ones are 0"},
    {"table", to_table,
     "table*\0int,int\0offsetOptional,sizeOptional\0All numbers, or so many from the offset, as a table"},
};

lua_Integer length_of_source(lua_State* L) {
    if (const NumberArray* source = to_number_array(L, 1))
        return static_cast<lua_Integer>(source->size);
    luaL_checktype(L, 1, LUA_TTABLE);
    return static_cast<lua_Integer>(lua_rawlen(L, 1));
}

int new_array(lua_State* L) {
    const bool has_source = lua_type(L, 1) != LUA_TNUMBER;
    const int size_index = has_source ? 2 : 1;
    const lua_Integer wanted =
        has_source ? luaL_optinteger(L, 2, length_of_source(L)) : luaL_checkinteger(L, 1);
    luaL_argcheck(L, wanted >= 1 && wanted <= max_numbers, size_index, "out of range");
    const auto size = static_cast<std::size_t>(wanted);
    lua_settop(L, 1);
    auto* array = static_cast<NumberArray*>(lua_newuserdata(L, sizeof(NumberArray) + size * sizeof(double)));
    *array = {size, size};
    std::fill_n(array->numbers(), size, 0.0);
    push_type(L);
    lua_setmetatable(L, -2);
    if (has_source) {
        lua_pushcfunction(L, copy);
        lua_pushvalue(L, 2);
        lua_pushvalue(L, 1);
        lua_call(L, 2, 0);
    }
    return 1;
}

constexpr LuaFunction functions[] = {
    {"new_array", new_array,
     "reaper.array*\0object*,int\0sourceOrSize,sizeOptional\0Makes an array of numbers, from a table or "
     "another "
     "array, or of so many zeros"},
};

} // namespace

NumberArray* to_number_array(lua_State* L, int index) {
    auto* array = static_cast<NumberArray*>(luaL_testudata(L, index, type_name));
    return array && is_whole(*array, lua_rawlen(L, index)) ? array : nullptr;
}

void open_number_arrays(lua_State* L) {
    luaL_newmetatable(L, type_name);
    luaL_setfuncs(L, operators, 0);
    for (const LuaFunction& method : methods) {
        lua_pushcfunction(L, method.call);
        lua_setfield(L, -2, method.name);
    }
    lua_pop(L, 1);
}

std::span<const LuaFunction> number_array_functions() { return functions; }
std::span<const LuaFunction> number_array_methods() { return methods; }

} // namespace headless::script
