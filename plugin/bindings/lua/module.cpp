#include "bindings/lua/module.hpp"

#include "api/project/files.hpp"
#include "bindings/lua/list_call.hpp"
#include "bindings/lua/lua_in_process.hpp"
#include "dialogue/lingomat.hpp"
#include "host_api/failure.hpp"
#include "object/json_text.hpp"
#include "ride/ride.hpp"

#include <iterator>

namespace MK_FELSPAR {

using lua_utility::get_arg;
using lua_utility::get_arg_array;
using lua_utility::list_call;
using lua_utility::push_results;

#define MK_LIST(scope, name, parameters, arguments, help)                                                    \
    int l_##name(lua_State* L) { return list_call<&scope::name>(L); }
#include "bindings/reference/list_functions.inc"
#undef MK_LIST

namespace {

/// Returns the code of `logic`, which fills a result of the type `T`, and the result; nil if it throws.
template <class T, class Logic>
int code_call(lua_State* L, Logic logic) {
    try {
        T result;
        const int code = logic(result);
        return push_results(L, failure<int>, code, result);
    } catch (...) {
        lua_settop(L, 0);
        lua_pushinteger(L, failure<int>);
        lua_pushnil(L);
        return 2;
    }
}

} // namespace

int l_GetPathInfo(lua_State* L) {
    return code_call<mk_object::mk_Path>(
        L, [L](auto& path) { return mk_api::path::GetPathInfo(get_arg<std::string>(L, 1), path); });
}

int l_Json_Deserialize(lua_State* L) {
    return code_call<nlohmann::json>(
        L, [L](auto& value) { return mk_api::string::Json_Deserialize(get_arg<std::string>(L, 1), value); });
}

int l_Json_Serialize(lua_State* L) {
    return code_call<std::string>(L, [L](auto& text) {
        nlohmann::json value;
        lua_utility::get_arg_json(L, 1, value);
        return mk_api::string::Json_Serialize(value, text);
    });
}

int l_SetMediaItemListRIDESCRIBER(lua_State* L) {
    int code = failure<int>;
    try {
        code = mk_api::RIDESCRIBER::SetMediaItemListRIDESCRIBER(get_arg_array<MediaItem*>(L, 1),
                                                                get_arg<int>(L, 2));
    } catch (...) { // the code reports it
    }
    lua_pushinteger(L, code);
    return 1;
}

int l_LINGOMAT_InsertMediaItems(lua_State* L) {
    return code_call<lua_utility::ListResult<std::string>>(L, [L](auto& unmatched) {
        return mk_api::LINGOMAT::LINGOMAT_InsertMediaItems(
            get_arg<std::string>(L, 1), get_arg<std::string>(L, 2), get_arg<double>(L, 3),
            get_arg<double>(L, 4), get_arg<int>(L, 5), get_arg<bool>(L, 6), get_arg<bool>(L, 7),
            get_arg<int>(L, 8), get_arg_array<std::string>(L, 9), unmatched.values);
    });
}

#define MK_FUNCTION(name) {"MK_" #name, &l_##name},
#define MK_LIST(scope, name, parameters, arguments, help) MK_FUNCTION(name)
#define MK_DOC_ROW(name, result, types, names, help) MK_FUNCTION(name)
const luaL_Reg reg[] = {
#include "bindings/lua/functions.inc"
    {nullptr, nullptr}};

} // namespace MK_FELSPAR

int luaopen_reaper_MERIDEK_FELSPAR(lua_State* L) {
    if (!lua_utility::can_serve(L, __builtin_return_address(0)))
        return 0;
    lua_createtable(L, 0, 0);
    lua_checkstack(L, static_cast<int>(std::size(MK_FELSPAR::reg)));
    luaL_setfuncs(L, MK_FELSPAR::reg, 0);
    lua_pushvalue(L, -1);
    lua_setglobal(L, "MK_FELSPAR");
    lua_getglobal(L, "reaper");
    for (const luaL_Reg* entry = MK_FELSPAR::reg; entry->name; ++entry) {
        lua_pushstring(L, entry->name);
        lua_pushcclosure(L, entry->func, 0);
        lua_settable(L, -3);
    }
    return 1;
}
