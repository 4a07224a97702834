#include "bindings/lua/module.hpp"
#include "tests/plugin/support/bound_plugin.hpp"
#include "tests/plugin/support/failing_memory.hpp"
#include "tests/plugin/support/unprivileged.hpp"

#include <lua.hpp>

#include <filesystem>
#include <fstream>
#include <memory>

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
        luaL_openlibs(L);
        lua_newtable(L);
        lua_setglobal(L, "reaper");
        luaL_requiref(L, "reaper_MERIDEK_FELSPAR", luaopen_reaper_MERIDEK_FELSPAR, 0);
        lua_settop(L, 0);
        run("function show(v) if type(v) ~= 'table' then return tostring(v) end local keys = {} "
            "for k in pairs(v) do keys[#keys + 1] = k end "
            "table.sort(keys, function(a, b) return tostring(a) < tostring(b) end) "
            "for i, k in ipairs(keys) do keys[i] = k .. '=' .. show(v[k]) end "
            "return '{' .. table.concat(keys, ' ') .. '}' end "
            "function show_all(...) local t = {} for i = 1, select('#', ...) do t[i] = show((select(i, "
            "...))) end "
            "return table.concat(t, ' ') end");
    }
    ~LuaModule() override {
        lua_close(L);
        EXPECT_EQ(bytes_in_use, 0);
    }

    void run(const std::string& chunk) {
        EXPECT_EQ(luaL_dostring(L, chunk.c_str()), LUA_OK) << lua_tostring(L, -1);
    }

    /// The results of an expression as a text.
    std::string results(const std::string& expression) {
        lua_settop(L, 0);
        run("return show_all(" + expression + ")");
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
    EXPECT_EQ(results("select(2, reaper.MK_GetSamePerfectTrackNameList(nil, 'Alice'))[1].Index"), "0");
    EXPECT_EQ(results("#select(2, reaper.MK_GetIncludePerfectTrackNameList(nil, 'ALICE'))"), "2");
    set_global("item", handle(add_item(mk_test::babble(0.1, 1))));
    EXPECT_EQ(results("select(2, reaper.MK_GetMediaItemPeakList(item))[100].Time"), "0.099");
    EXPECT_EQ(results("#select(2, reaper.MK_GetMediaIdPeakList(nil, 0))"), "100");
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

TEST_F(LuaModule, FailsForUnreadableFolders) {
    const std::filesystem::path closed = folder / "closed";
    std::filesystem::create_directories(closed);
    std::filesystem::permissions(closed, std::filesystem::perms::none);
    {
        const mk_test::Unprivileged while_reading;
        EXPECT_EQ(results("(reaper.MK_GetFilePathList('" + folder.path.string() + "', 'wav'))"), "false");
        EXPECT_EQ(results("reaper.MK_LINGOMAT_InsertMediaItems('" + folder.path.string() + "')"), "1 nil");
    }
    std::filesystem::permissions(closed, std::filesystem::perms::owner_all); // so that it can be removed
}

/// JSON values take memory while they are destroyed, which no program survives running out of; there only
/// Lua's own memory fails. Calls an expression with the n-th allocation failing, for n = 1, 2, 3 ... until
/// none is left to fail.
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
        bool has_failed = true;
        int failures = 0;
        for (int n = 1; has_failed; ++n) {
            lua_settop(L, 1);
            lua_gc(L, LUA_GCCOLLECT, 0);
            lua_pushvalue(L, 1);
            mk_test::fail_allocation(n, memory);
            const int status = lua_pcall(L, 0, LUA_MULTRET, 0);
            has_failed = mk_test::stop_failing();
            failures += has_failed;
            if (status != LUA_OK) // in the script itself: an argument that could not be made
                EXPECT_EQ(status, LUA_ERRMEM);
            else
                EXPECT_GE(lua_gettop(L), 2);
        }
        EXPECT_GT(failures, 2);
    }
}

} // namespace
