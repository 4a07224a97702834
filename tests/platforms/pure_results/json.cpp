// JSON texts and values, and their conversion from and to Lua.

#include "object/json_lua.hpp"
#include "object/json_text.hpp"
#include "tests/platforms/pure_results/results.hpp"

#include <lua.hpp>

#include <bit>
#include <memory>

namespace pure_results {
namespace {

using nlohmann::json;

using LuaState = std::unique_ptr<lua_State, decltype(&lua_close)>;

std::string written(const json& value) {
    std::string text = "unwritten";
    const int code = mk_api::string::Json_Serialize(value, text);
    return std::to_string(code) + " " + shown(text);
}

std::string read_and_written(const std::string& text) {
    json value = "unread";
    const int code = mk_api::string::Json_Deserialize(text, value);
    return std::to_string(code) + " " + written(value);
}

std::string nested(std::size_t levels) { return std::string(levels, '[') + std::string(levels, ']'); }

/// Reads a value of Lua, writes it, and gives it back to Lua.
std::string through_lua(const char* expression) {
    const LuaState state(luaL_newstate(), &lua_close);
    lua_State* L = state.get();
    luaL_openlibs(L);
    if (luaL_dostring(L, (std::string("return ") + expression).c_str()) != LUA_OK)
        return lua_tostring(L, -1);
    json first, second;
    try {
        lua_utility::get_arg_json(L, 1, first);
    } catch (const std::exception&) {
        return "refused";
    }
    lua_settop(L, 0);
    lua_utility::pushvalue(L, first);
    const bool is_table = lua_istable(L, 1);
    if (is_table)
        lua_utility::get_arg_json(L, 1, second);
    return written(first) + (is_table ? " again " + written(second) : "");
}

} // namespace

void add_json(Results& results) {
    for (const char* text : {"",
                             "nul",
                             "[01]",
                             "[1,]",
                             "[1] ",
                             "[NaN]",
                             "[1e400]",
                             "[-1e400]",
                             "[1e-400]",
                             "{1:2}",
                             "['a']",
                             "[\"\t\"]",
                             "[\"\\x\"]",
                             "[\"\\ud800\"]",
                             "[\"\\ud83d\\ude00\\u0000\\u007f\\/\\b\"]",
                             "[\"\xff\"]",
                             "[\"\xc0\xaf\"]",
                             "[\"\xed\xa0\x80\"]",
                             "[\"\xe5\x8f\xb0\xe8\xa9\x9e\"]",
                             "\xef\xbb\xbf[1]",
                             "[1]\r\n",
                             "{\"b\":1,\"a\":2,\"B\":3,\"\":4}",
                             "{\"a\":1,\"a\":2}",
                             "[true,false,null,{},[]]",
                             "[0,-0,0.0,-0.0,1.0,1.5,-1e5,1E+2,123456789012]",
                             ("[9223372036854775807,9223372036854775808,18446744073709551615,"
                              "18446744073709551616,-9223372036854775808,"
                              "-9223372036854775809]"),
                             ("[0.1,0.2,0.30000000000000004,1e21,1e22,1e-5,1e-7,123456789.123456789,5e-324,2."
                              "2250738585072011e-308,"
                              "1.7976931348623157e308,4.35,100.0,1e15,1e16,1e17,3.0e-10]")})
        results.add("json " + shown(text) + ": " + read_and_written(text));
    for (const std::size_t levels : {999U, 1000U, 1001U, 100'000U})
        results.add("json nested " + std::to_string(levels) + ": " +
                    read_and_written(nested(levels)).substr(0, 5));
    Numbers numbers(3);
    for (int left = 50'000; left > 0; --left) {
        const std::uint64_t upper = numbers.below(1ULL << 32);
        const std::uint64_t bits = upper << 32 | numbers.below(1ULL << 32);
        const std::string text =
            written(json::array({std::bit_cast<double>(bits), numbers.between(-100.0, 100.0)}));
        results.sweep(text);
        results.sweep(read_and_written(text.substr(3, text.size() - 4)));
    }
    results.end_sweep("json doubles");
    for (const char* expression :
         {"{}", "'no table'", "{1, 2.5, 'a', true, false}", "{k = {}, b = 'x', a = print}",
          "{3.0, -0.0, 5000000000, 0/0, 1/0}",
          "{2^31, 2^31 - 1, -2^31, -2^31 - 1, 2^53, 2^63, math.mininteger}", "{[7] = 1, [3] = 2}",
          "{1, a = 2}", "{'\\xff'}", "{a = {b = {c = {1, {2}}}}}", "{1e15, 1e16, 1e100, 0.1, 1/3, -1e-7}",
          "{[1.5] = 1, [-1] = 2, [0] = 3}", "{'\\u{53f0}', 'x\\0y', ''}"})
        results.add("lua " + shown(expression) + ": " + through_lua(expression));
}

} // namespace pure_results
