#include "bindings/lua/lua_in_process.hpp"

#include "system/shown_symbol.hpp"

#include <string_view>

namespace lua_utility {
namespace {

/// @param ident  Lua's own, such as "$LuaVersion: Lua 5.3.6  Copyright ..."
bool has_same_states(std::string_view ident) {
    constexpr std::string_view release = "Lua 5.3.";
    const std::size_t at = ident.find(release);
    return at != std::string_view::npos && ident.substr(at + release.size(), 1) >= "4";
}

} // namespace

void refuse_other_lua(lua_State* L) {
    const auto* ident = static_cast<const char*>(shown_symbol("lua_ident"));
    if (!ident || has_same_states(ident))
        return;
    // The error is raised by the process's Lua, because ours could not.
    using RaiseError = int(lua_State*, const char*, ...);
    if (auto* raise_error = reinterpret_cast<RaiseError*>(shown_symbol("luaL_error")))
        raise_error(L, "reaper_MERIDEK_FELSPAR needs Lua 5.3.4 or a later 5.3");
}

} // namespace lua_utility
