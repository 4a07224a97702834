// JSON texts and values: what is written, what is refused, and that a refusal keeps the caller's value.

#include "object/json_lua.hpp"
#include "object/json_text.hpp"

#include <gtest/gtest.h>
#include <lua.hpp>

#include <memory>

namespace {

using namespace mk_api::string;

std::string nested(std::size_t levels) { return std::string(levels, '[') + std::string(levels, ']'); }

TEST(JsonText, IsWrittenInOneLineOrRefused) {
    json value;
    std::string text;
    EXPECT_EQ(Json_Deserialize("{ \"b\":[1, 2.5],\n \"\u00e9\":1, \"a\":" + nested(999) + "}", value), 0);
    EXPECT_EQ(Json_Serialize(value, text), 0);
    EXPECT_EQ(text, "{\"a\":" + nested(999) + ",\"b\":[1,2.5],\"\u00e9\":1}");
    EXPECT_EQ(Json_Serialize(json::array({value}), text), 1) << "too deep";
    EXPECT_EQ(text[0], '{') << "kept";
    const json before = value;
    for (const std::string& refused : {std::string(), std::string("[1] // comment"), nested(1001)})
        EXPECT_EQ(Json_Deserialize(refused, value), 1) << refused;
    EXPECT_EQ(value, before) << "kept when a text is refused";
}

TEST(JsonToLua, PushesNilForAValueThatNestsTooDeeply) {
    const std::unique_ptr<lua_State, decltype(&lua_close)> L(luaL_newstate(), &lua_close);
    json value;
    EXPECT_EQ(Json_Deserialize(nested(1000), value), 0);
    lua_utility::pushvalue(L.get(), value);
    EXPECT_EQ(lua_type(L.get(), 1), LUA_TTABLE);
    lua_utility::pushvalue(L.get(), json::array({value}));
    EXPECT_EQ(lua_type(L.get(), 2), LUA_TNIL);
    EXPECT_EQ(lua_gettop(L.get()), 2);
}

} // namespace
