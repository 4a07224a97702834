// Two interpreters in one process: neither sees anything of the other.

#include "bindings/lua/module.hpp"

#include <gtest/gtest.h>
#include <lua.hpp>

#include <memory>
#include <string>
#include <thread>

namespace {

class Interpreter {
public:
    Interpreter() {
        lua_State* L = state_.get();
        luaL_openlibs(L);
        lua_newtable(L);
        lua_setglobal(L, "reaper");
        luaL_requiref(L, "reaper_MERIDEK_FELSPAR", luaopen_reaper_MERIDEK_FELSPAR, 0);
    }

    /// The result of a chunk that gives one, or its error.
    std::string run(const std::string& chunk) {
        lua_State* L = state_.get();
        lua_settop(L, 0);
        luaL_dostring(L, chunk.c_str());
        return luaL_tolstring(L, -1, nullptr);
    }

private:
    std::unique_ptr<lua_State, decltype(&lua_close)> state_{luaL_newstate(), &lua_close};
};

TEST(Interpreters, WorkInTwoThreadsAndOutliveEachOther) {
    const auto work = [](Interpreter& interpreter, const std::string& letter) {
        interpreter.run("letter = '" + letter + "'");
        return interpreter.run(R"(
            for i = 1, 3000 do
                local code, text = reaper.MK_Json_Serialize({letter, {n = i}})
                assert(text == ('["%s",{"n":%d}]'):format(letter, i), text)
                local read, value = reaper.MK_Json_Deserialize(text)
                assert(value[1] == letter and value[2].n == i)
                local split, parts = reaper.MK_GetStringSplitList(letter .. "," .. i, ",")
                assert(parts[1] == letter and parts[2] == tostring(i))
                local found, path = reaper.MK_GetPathInfo("/etc/passwd")
                assert(path.FileName == "passwd")
            end
            return letter)");
    };
    Interpreter left;
    auto right = std::make_unique<Interpreter>();
    std::string right_outcome;
    std::thread other([&] { right_outcome = work(*right, "b"); });
    EXPECT_EQ(work(left, "a"), "a");
    other.join();
    EXPECT_EQ(right_outcome, "b");
    right.reset();
    EXPECT_EQ(left.run("return #select(2, MK_FELSPAR.MK_GetStringSplitList(letter .. ',b', ','))"), "2");
}

} // namespace
