#include "bindings/lua/lua_in_process.hpp"

#include "host_api/arguments.hpp"
#include "host_api/host_functions.hpp"
#include "system/shown_symbol.hpp"

#include <cstdlib>
#include <string_view>

namespace lua_utility {
namespace {

/// The first version of the workstation with Lua 5.4.
constexpr int first_with_newer_lua = 7;

/// @param ident  Lua's own, such as "$LuaVersion: Lua 5.3.6  Copyright ..."
bool has_same_states(std::string_view ident) {
    constexpr std::string_view release = "Lua 5.3.";
    const std::size_t at = ident.find(release);
    return at != std::string_view::npos && ident.substr(at + release.size(), 1) >= "4";
}

/// Told by functions that came with 5.3 and 5.4, since not every Lua shows its release.
bool shows_same_states(const void* caller) {
    const auto* ident = static_cast<const char*>(shown_symbol("lua_ident", caller));
    return shown_symbol("lua_rotate", caller) && !shown_symbol("lua_newuserdatauv", caller) &&
           (!ident || has_same_states(ident));
}

} // namespace

bool can_serve(lua_State* L, const void* caller) {
    if (shown_symbol("lua_gettop", caller)) {
        if (shows_same_states(caller))
            return true;
        // The error is raised by the caller's Lua, because ours could not.
        using RaiseError = int(lua_State*, const char*, ...);
        if (auto* raise_error = reinterpret_cast<RaiseError*>(shown_symbol("luaL_error", caller)))
            raise_error(L, "reaper_MERIDEK_FELSPAR needs Lua 5.3.4 or a later 5.3");
        return false;
    }
    if (!reaper_plugin || std::atoi(text_or_empty(call(GetAppVersion))) < first_with_newer_lua)
        return true;
    call(ShowConsoleMsg, "reaper_MERIDEK_FELSPAR needs Lua 5.3; this workstation has a newer one. "
                         "Use the functions reaper.MK_... without the module.\n");
    return false;
}

} // namespace lua_utility
