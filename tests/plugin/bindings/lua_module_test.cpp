#include "bindings/lua/module.hpp"
#include "tests/plugin/support/bound_plugin.hpp"
#include "tests/plugin/support/failing_memory.hpp"

#include <lua.hpp>

#include <filesystem>
#include <fstream>
#include <thread>
#include <unistd.h>

namespace {

/// Lua's own memory, with the failures of the rest of the test.
void* allocate(void* bytes_in_use, void* block, std::size_t old_size, std::size_t new_size) {
    auto& in_use = *static_cast<std::size_t*>(bytes_in_use);
    const std::size_t had = block ? old_size : 0;
    if (new_size > had && mk_test::next_allocation_fails())
        return nullptr;
    in_use += new_size - had;
    if (new_size > 0)
        return std::realloc(block, new_size);
    std::free(block);
    return nullptr;
}

class LuaModule : public mk_test::BoundPlugin {
protected:
    LuaModule() {
        open_module(L);
        EXPECT_EQ(luaL_dofile(L, TEST_DATA "/bindings/show.lua"), LUA_OK);
    }
    ~LuaModule() override {
        lua_close(L);
        EXPECT_EQ(bytes_in_use, 0);
    }

    static void open_module(lua_State* L) {
        luaL_openlibs(L);
        lua_newtable(L);
        lua_setglobal(L, "reaper");
        luaL_requiref(L, "reaper_MERIDEK_FELSPAR", luaopen_reaper_MERIDEK_FELSPAR, 0);
        lua_settop(L, 0);
    }

    void run(const std::string& chunk) {
        EXPECT_EQ(luaL_dostring(L, chunk.c_str()), LUA_OK) << lua_tostring(L, -1);
    }

    /// The results of an expression as a text.
    std::string results(const std::string& expression) {
        lua_settop(L, 0);
        run("return show(" + expression + ")");
        return lua_tostring(L, -1);
    }

    void set_global(const char* name, void* pointer) {
        lua_pushlightuserdata(L, pointer);
        lua_setglobal(L, name);
    }

    std::size_t bytes_in_use = 0;
    lua_State* L = lua_newstate(allocate, &bytes_in_use);
};

TEST_F(LuaModule, ReturnsListsAndCounts) {
    auto& project = workstation.project();
    project.insert_track(0).name = "Alice";
    project.insert_track(1).name = "alice two";
    project.tracks()[0]->set_folder_depth_change(1);
    set_global("alice", handle(*project.tracks()[0]));
    EXPECT_EQ(results("#select(2, reaper.MK_GetTrackItemList())"), "2");
    EXPECT_EQ(results("select(3, reaper.MK_GetTrackItemChildList(alice))"), "1");
    EXPECT_EQ(results("reaper.MK_GetSelectedTrackIdChildList(nil, 0)"), "true {1=" + results("alice") + "}");
    EXPECT_EQ(results("select(2, reaper.MK_GetTrackDepthList())[2].Depth"), "1");
    EXPECT_EQ(results("#select(2, reaper.MK_GetIncludePerfectTrackNameList(nil, 'ALICE'))"), "2");
    set_global("item", handle(add_item(mk_test::babble(0.1, 1))));
    EXPECT_EQ(results("select(2, reaper.MK_GetMediaItemPeakList(item))[100].Time"), "0.099");
    EXPECT_EQ(results("#select(2, reaper.MK_GetMediaIdPeakList(nil, 0))"), "100");
}

TEST_F(LuaModule, WorksInTwoThreadsAtOnce) {
    const char* const work = R"(
        letter = ...
        for i = 1, 3000 do
            local code, text = reaper.MK_Json_Serialize({letter, {n = i}})
            assert(text == ('["%s",{"n":%d}]'):format(letter, i), text)
            local read, value = reaper.MK_Json_Deserialize(text)
            assert(value[1] == letter and value[2].n == i)
            local split, parts = reaper.MK_GetStringSplitList(letter .. "," .. i, ",")
            assert(parts[1] == letter and parts[2] == tostring(i))
        end)";
    const auto expect_to_work = [work](lua_State* interpreter, const char* letter) {
        luaL_loadstring(interpreter, work);
        lua_pushstring(interpreter, letter);
        EXPECT_EQ(lua_pcall(interpreter, 1, 0, 0), LUA_OK) << lua_tostring(interpreter, -1);
    };
    lua_State* second = luaL_newstate();
    open_module(second);
    std::thread other([&] { expect_to_work(second, "b"); });
    expect_to_work(L, "a");
    other.join();
    lua_close(second);
    EXPECT_EQ(results("letter, MK_FELSPAR.MK_GetStringSplitList(letter .. ',b', ',')"), "a true {1=a 2=b}");
}

TEST_F(LuaModule, ReadsMissingArgumentsAsZero) {
    EXPECT_EQ(results("reaper.MK_GetFilePathList()"), "false {}");
    EXPECT_EQ(results("reaper.MK_GetPathInfo()") + results("reaper.MK_GetPathInfo('')"), "1 {}1 {}");
    EXPECT_EQ(results("reaper.MK_GetTrackItemChildList(nil)"), "true {} 0");
    EXPECT_EQ(results("reaper.MK_SetMediaItemListRIDESCRIBER({x = 1}, 'hard')"), "0");
    EXPECT_EQ(results("reaper.MK_LINGOMAT_InsertMediaItems({}, nil, '1', true)"), "0 {}");
}

TEST_F(LuaModule, ReturnsForAnyArguments) {
    std::filesystem::current_path(folder.path);
    workstation.project().insert_track(0);
    ASSERT_EQ(luaL_dofile(L, TEST_DATA "/bindings/abuse.lua"), LUA_OK) << lua_tostring(L, -1);
    RecordProperty("calls", static_cast<int>(lua_tointeger(L, -1)));
    std::filesystem::current_path("/");
}

/// What a file system refuses, it refuses to root as well, while one of these lives.
struct Unprivileged {
    Unprivileged() { is_set = was == 0 && seteuid(65534) == 0; }
    ~Unprivileged() {
        if (is_set && seteuid(was) != 0)
            _exit(1); // all that follows would fail for no reason of its own
    }
    uid_t was = geteuid();
    bool is_set = false;
};

TEST_F(LuaModule, FailsForUnreadableFolders) {
    const std::filesystem::path closed = folder / "closed";
    std::filesystem::create_directories(closed);
    std::filesystem::permissions(closed, std::filesystem::perms::none);
    {
        const Unprivileged while_reading;
        EXPECT_EQ(results("(reaper.MK_GetFilePathList('" + folder.path.string() + "', 'wav'))"), "false");
        EXPECT_EQ(results("reaper.MK_LINGOMAT_InsertMediaItems('" + folder.path.string() + "')"), "1 nil");
    }
    std::filesystem::permissions(closed, std::filesystem::perms::owner_all); // so that it can be removed
}

/// JSON values take memory while they are destroyed, which no program survives running out of; there only
/// Lua's own memory fails.
TEST_F(LuaModule, SurvivesEveryFailedAllocation) {
    set_global("item", handle(add_item(mk_test::babble(0.02, 1))));
    workstation.project().insert_track(0).name = "Alice";
    const std::string list = "local long = ('x'):rep(100) return function() return ";
    for (const char* call :
         {"reaper.MK_GetTrackItemList()", "reaper.MK_GetTrackDepthList()",
          "reaper.MK_GetMediaItemPeakList(item)", "reaper.MK_GetStringSplitList('a,b,' .. long, ',')",
          "reaper.MK_GetPathInfo('/etc')", "reaper.MK_Json_Serialize({long, {a = long}})",
          "reaper.MK_Json_Deserialize('{\"a\":[1,\"' .. long .. '\"]}')",
          "reaper.MK_LINGOMAT_InsertMediaItems('/no/folder', '/none', 0, 0, 0, true, true, 0, {long})"}) {
        SCOPED_TRACE(call);
        const auto memory = std::string_view(call).find("Json") == std::string_view::npos
                                ? mk_test::Memory::of_all
                                : mk_test::Memory::of_askers;
        lua_settop(L, 0);
        run(list + call + " end");
        const auto call_once = [this] {
            lua_settop(L, 1);
            lua_gc(L, LUA_GCCOLLECT, 0);
            lua_pushvalue(L, 1);
            const int status = lua_pcall(L, 0, LUA_MULTRET, 0);
            if (status != LUA_OK) // in the script itself: an argument that could not be made
                EXPECT_EQ(status, LUA_ERRMEM);
            else
                EXPECT_GE(lua_gettop(L), 2);
        };
        EXPECT_GT(mk_test::fail_each_allocation(call_once, memory), 2);
    }
}

} // namespace
