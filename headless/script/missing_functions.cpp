#include "headless/script/missing_functions.hpp"

#include "common/letter_case.hpp"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <numeric>
#include <utility>

namespace headless::script {
namespace {

/// The number of letters to insert, delete or replace.
std::size_t edit_distance(std::string_view left, std::string_view right) {
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= left.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i);
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const std::size_t replaced = diagonal + (left[i - 1] == right[j - 1] ? 0 : 1);
            diagonal = std::exchange(row[j], std::min({row[j] + 1, row[j - 1] + 1, replaced}));
        }
    }
    return row.back();
}

MissingFunctions& self(lua_State* L) {
    return *static_cast<MissingFunctions*>(lua_touserdata(L, lua_upvalueindex(1)));
}

bool has_name(const lua_Debug& function) { return function.name && std::strcmp(function.name, "?") != 0; }

} // namespace

std::string_view near_name(std::string_view wanted, const std::vector<std::string>& names) {
    constexpr std::size_t most_letters = 2;
    constexpr std::size_t letters_for_each = 4; // short names are all alike
    std::string_view nearest;
    std::size_t least = std::min(most_letters, wanted.size() / letters_for_each) + 1;
    const std::string lowered = letter_case::lowered(wanted);
    for (const std::string& name : names) {
        if (name.size() > wanted.size() + most_letters || wanted.size() > name.size() + most_letters)
            continue;
        const std::size_t distance = edit_distance(lowered, letter_case::lowered(name));
        if (distance < least) {
            least = distance;
            nearest = name;
        }
    }
    return nearest;
}

std::string MissingFunctions::message(const std::string& name, int line) const {
    const std::string_view nearest = near_name(name, existing_);
    std::string text = "the headless workstation has no " + name;
    if (line > 0)
        text.append(" (line ").append(std::to_string(line)).append(")");
    return nearest.empty() ? text : text.append("; the nearest name is ").append(nearest);
}

MissingFunctions::Place MissingFunctions::place_of_caller(lua_State* L) {
    lua_Debug frame;
    for (int level = 1; lua_getstack(L, level, &frame) != 0; ++level) {
        lua_getinfo(L, "Sl", &frame);
        if (frame.currentline >= 0) // not a C function such as pcall
            return {frame.source, frame.currentline};
    }
    return {};
}

void MissingFunctions::note(lua_State* L, std::string_view name) noexcept {
    try {
        looked_up_.emplace(name);
        last_looked_up_ = name;
        last_place_ = place_of_caller(L);
    } catch (...) { // without memory the message is Lua's own
        last_looked_up_.clear();
    }
}

bool MissingFunctions::exists(lua_State* L, const char* name) noexcept {
    const bool is_there = std::ranges::find(existing_, std::string_view(name)) != existing_.end();
    if (!is_there)
        note(L, name);
    return is_there;
}

int MissingFunctions::note_look_up(lua_State* L) {
    if (lua_type(L, 2) == LUA_TSTRING)
        self(L).note(L, lua_tostring(L, 2));
    return 0;
}

/// @returns whether an absent function of the table was called; then `message_` is set
bool MissingFunctions::describe(lua_State* L, const lua_Debug& called) noexcept {
    try {
        std::string name;
        if (has_name(called))
            name = looked_up_.contains(std::string_view(called.name)) ? called.name : "";
        else if (place_of_caller(L) == last_place_) // reaper[name](), pcall(reaper.X)
            name = last_looked_up_;
        if (name.empty())
            return false;
        const int line = place_of_caller(L).line;
        called_.emplace(name, line);
        message_ = message(name, line);
        return true;
    } catch (...) {
        return false;
    }
}

int MissingFunctions::call_nil(lua_State* L) {
    MissingFunctions& missing = self(L);
    lua_Debug called;
    if (lua_getstack(L, 0, &called) == 0 || lua_getinfo(L, "n", &called) == 0)
        return luaL_error(L, "attempt to call a nil value");
    if (missing.describe(L, called))
        return luaL_error(L, "%s", missing.message_.c_str());
    if (!called.name)
        return luaL_error(L, "attempt to call a nil value");
    return luaL_error(L, "attempt to call a nil value (%s '%s')", called.namewhat, called.name);
}

void MissingFunctions::open(lua_State* L) {
    const auto set_metamethod = [&](const char* name, lua_CFunction function) {
        lua_pushlightuserdata(L, this);
        lua_pushcclosure(L, function, 1);
        lua_setfield(L, -2, name);
    };
    lua_getglobal(L, "reaper");
    lua_createtable(L, 0, 1);
    set_metamethod("__index", note_look_up);
    lua_setmetatable(L, -2);
    lua_pop(L, 1);

    lua_pushnil(L);
    lua_createtable(L, 0, 2);
    set_metamethod("__call", call_nil);
    lua_pushboolean(L, 0);
    lua_setfield(L, -2, "__metatable"); // scripts see none, as ever
    lua_setmetatable(L, -2);
    lua_pop(L, 1);
}

} // namespace headless::script
