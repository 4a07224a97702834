#include "tests/headless/script/script_fixture.hpp"

namespace headless::test {
namespace {

using testing::HasSubstr;

TEST_F(ScriptTest, EndsWithItsStatusAndError) {
    struct Ending {
        const char* script;
        int status;
        const char* error = ""; ///< part of it, empty: none at all
    };
    const Ending endings[] = {
        {"return 3", 0},
        {"local function f() error('boom') end\nf()", 1, "script.lua:2: boom\nstack traceback:\n"},
        {"error(setmetatable({}, {__tostring = function() return 'mine' end}))", 1, "mine\nstack traceback:"},
        {"error({})", 1, "(error object is a table value)"},
        {"x = = 1", 1, "script.lua:2: unexpected symbol"},
        {"local function f() return 1 + f() end f()", 1, "stack overflow"},
        {"local t = {} while true do t[#t + 1] = {} end", 1, "not enough memory"},
        {"os.exit(3)", 3},
        {"os.exit(true) error()", 0},
        {"os.exit(false)", 1},
        {"debug.setupvalue(os.exit, 1, nil) os.exit(3)", 3},
        {"while true do pcall(os.exit, 4) end", 4},
        {"while true do coroutine.resume(coroutine.create(os.exit), 5) end", 5},
        {"reaper.defer(function() error('late') end)", 1, "script.lua:2: late"},
        {"reaper.defer(function() os.exit(6) end)", 6},
        {"reaper.atexit(function() error('last') end)", 1, "script.lua:2: last"},
        {"x = setmetatable({}, {__gc = function() reaper.GetTrack({}) end})", 0}};
    for (const auto& [script, status, error] : endings) {
        const auto outcome = run(std::string("reaper.InsertTrackAtIndex(9, false)\n") + script);
        EXPECT_EQ(outcome.status, status) << script;
        EXPECT_THAT(outcome.error, HasSubstr(error));
        EXPECT_EQ(outcome.error.empty(), *error == '\0') << script;
    }
}

TEST_F(ScriptTest, DebugLibraryCannotCrashTheHost) {
    const auto outcome = run(R"(
        require "reaper_MERIDEK_FELSPAR"
        local track, array = reaper.GetTrack(0, 0), reaper.new_array(3)
        local array_type = getmetatable(array)
        for _, f in pairs(reaper) do
            for i = 1, 3 do debug.setupvalue(f, i, track) end
        end
        for _, f in pairs {reaper.get_action_context, array.clear, reaper.GetTrackName, os.exit} do
            assert(debug.setupvalue(f, 1, nil) == nil)
            assert(debug.getinfo(f, "S").what == "C")
        end
        array.clear(2)

        -- any value as an array
        debug.setmetatable(io.stdout, array_type)
        debug.setmetatable(track, array_type)
        for _, value in pairs {io.stdout, track} do
            assert(not pcall(array_type.__index, value, 1))
            assert(not pcall(array_type.clear, value))
            assert(not pcall(reaper.new_array, value))
        end
        debug.setmetatable(track, nil)

        -- the variables of C functions from below and from a hook
        debug.sethook(function()
            for i = 1, 3 do debug.setlocal(2, i, nil) end
        end, "cr")
        local _, list = reaper.MK_GetStringSplitList("a,b", ",")
        reaper.GetTrackName(track)
        debug.sethook()
        assert(#list == 2)
        local function change() for i = 1, 3 do debug.setlocal(2, i, 7) end end
        reaper.defer(change) reaper.defer(change)
        local own = 1
        assert(debug.setlocal(1, 1, 5) == "track")
        assert(track == 5)
        assert(not pcall(debug.setlocal, 99, 1, 1))
        local thread = coroutine.create(function(a) coroutine.yield() return a end)
        coroutine.resume(thread, 1)
        assert(debug.setlocal(thread, 1, 1, "new") == "a")
        assert(select(2, coroutine.resume(thread)) == "new")
        assert(debug.setupvalue(change, 1, _ENV) == "_ENV")

        -- what is kept in the registry
        for _, other in pairs {7, {}, print} do
            debug.getregistry()["reaper.array"] = other
            pcall(reaper.new_array, 3)
            debug.getregistry()["felspar.deferred"] = other
            reaper.defer(print)
        end
        debug.getregistry()["felspar.deferred"] = {change, change})");
    EXPECT_EQ(outcome.error, "");
}

TEST_F(ScriptTest, ErrorsAreReportedBeforeFinalizersRun) {
    write_bytes(folder / "script.lua", R"(
        kept = setmetatable({}, {__gc = function() reaper.DeleteTrack(reaper.GetTrack(0, 0)) end})
        error("a\0b"))");
    std::string error;
    script::run_script(workstation, plugin, {folder / "script.lua", {}},
                       [&](const script::ScriptOutcome& outcome) {
                           error = outcome.error;
                           EXPECT_EQ(project.tracks().size(), 1U);
                       });
    EXPECT_THAT(error, HasSubstr(std::string("script.lua:3: a\0b\nstack traceback:\n", 35)));
    EXPECT_EQ(project.tracks().size(), 0U);
}

TEST_F(ScriptTest, KnowsItsArgumentsAndItsFile) {
    const auto outcome = run(R"(
        assert(table.concat({...}, " ") == "one -2")
        assert(table.concat(arg, " ") == "one -2")
        local path = debug.getinfo(1, "S").source:match("^@(.*[/\\])script.lua$")
        assert(arg[0] == path .. "script.lua")
        assert(select(2, reaper.get_action_context()) == arg[0]))");
    EXPECT_EQ(outcome.error, "");
}

TEST_F(ScriptTest, DeferredAndExitFunctionsRunInOrder) {
    const auto outcome = run(R"(
        local log = {}
        local function note(what) log[#log + 1] = what end
        reaper.atexit(function() io.open("log", "w"):write(table.concat(log, " ")):close() end)
        reaper.defer(function() note "a" reaper.defer(function() note "c" error("stop") end) end)
        reaper.runloop(function() note "b" end)
        note "script")");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(bytes_of(folder / "log"), "script a b c");
}

TEST_F(ScriptTest, EndsCleanlyWhereverMemoryRunsOut) {
    std::size_t runs = 0;
    script::ScriptOutcome outcome{1};
    for (std::size_t bytes = 1000; outcome.status != 0; bytes += 500, ++runs) {
        outcome = run(R"(
            local array = reaper.new_array(100)
            local name = select(2, reaper.GetTrackName(reaper.GetTrack(0, 0))) .. #array.table()
            require "reaper_MERIDEK_FELSPAR"
            local ok, parts = reaper.MK_GetStringSplitList(name, "c")
            assert(ok == true and #parts == 2, "not enough memory, as the module tells it"))",
                      bytes);
        ASSERT_TRUE(outcome.status == 0 || outcome.error.find("not enough memory") != std::string::npos)
            << outcome.error;
    }
    EXPECT_GT(runs, 50U);
}

TEST_F(ScriptTest, ReportsAnUnreadableScript) {
    const auto outcome = script::run_script(workstation, plugin, {folder / "none.lua", {}});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.error, HasSubstr("none.lua: No such file"));
}

} // namespace
} // namespace headless::test
