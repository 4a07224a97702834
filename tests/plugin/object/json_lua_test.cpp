#include "object/json_lua.hpp"
#include "object/json_text.hpp"

#include <gtest/gtest.h>
#include <lua.hpp>

#include <memory>
#include <stdexcept>

namespace {

using nlohmann::json;
using Lua = std::unique_ptr<lua_State, decltype(&lua_close)>;

/// A state with the results of a chunk on its stack.
Lua run(const std::string& chunk) {
    Lua L(luaL_newstate(), &lua_close);
    luaL_openlibs(L.get());
    EXPECT_EQ(luaL_dostring(L.get(), chunk.c_str()), LUA_OK) << lua_tostring(L.get(), -1);
    return L;
}

std::string text_of(const std::string& chunk) {
    const Lua L = run(chunk);
    json value;
    lua_utility::get_arg_json(L.get(), 1, value);
    EXPECT_EQ(lua_gettop(L.get()), 1);
    std::string text;
    mk_api::string::Json_Serialize(value, text);
    return text;
}

std::string nested(int levels) {
    return "local t = {1} for i = 2, " + std::to_string(levels) + " do t = {t} end return t";
}

TEST(JsonFromLua, TakesEachKindOfValueByItsRule) {
    EXPECT_EQ(text_of("return {1, 2.5, 'a', true}"), R"([1,2.5,"a",1])");
    EXPECT_EQ(text_of("return {3.0, -0.0, 5000000000, 0/0}"), "[3,0,5000000000.0,null]");
    EXPECT_EQ(text_of("return {b = 'x\\0y', a = {}, [print] = 1, c = print}"), R"({"a":null,"b":"x"})");
    EXPECT_EQ(text_of("return {[7] = 1}"), "[1]");
    EXPECT_EQ(text_of("return {}"), "null");
    EXPECT_EQ(text_of("return 5"), "null");
}

TEST(JsonFromLua, EndsWithAnExceptionForMixedKeysAndEndlessNesting) {
    EXPECT_THROW(text_of("return {1, a = 2}"), json::type_error);
    EXPECT_THROW(text_of("local t = {} t[1] = t return t"), std::length_error);
    EXPECT_THROW(text_of(nested(1001)), std::length_error);
    EXPECT_EQ(text_of(nested(1000)).size(), 2001);
}

TEST(JsonToLua, PushesOneValueThatAScriptCanCheck) {
    const Lua L =
        run("return function(v) return v.list[1] == 1 and v.list[2] == nil and v.list[3].k == 'ä' and "
            "v.yes == true and math.type(v.whole) == 'integer' and v.whole == 1 and v.half == 0.5 and "
            "next(v.empty) == nil and v.none == nil end");
    const json value = {{"list", {1, nullptr, {{"k", "ä"}}}},
                        {"yes", true},
                        {"whole", (1LL << 32) + 1},
                        {"half", 0.5},
                        {"empty", json::array()},
                        {"none", nullptr}};
    lua_utility::pushvalue(L.get(), value);
    EXPECT_EQ(lua_gettop(L.get()), 2);
    ASSERT_EQ(lua_pcall(L.get(), 1, 1, 0), LUA_OK) << lua_tostring(L.get(), -1);
    EXPECT_TRUE(lua_toboolean(L.get(), -1));
}

TEST(JsonToLua, GivesNilForAValueThatNestsTooDeeply) {
    const Lua L = run("");
    json value = 1;
    for (const int type : {LUA_TTABLE, LUA_TNIL}) {
        for (int level = 0; level < (type == LUA_TTABLE ? 1000 : 1); ++level)
            value = json::array({std::move(value)});
        lua_utility::pushvalue(L.get(), value);
        EXPECT_EQ(lua_type(L.get(), -1), type);
    }
    EXPECT_EQ(lua_gettop(L.get()), 2);
}

} // namespace
