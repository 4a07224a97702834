#include "tests/headless/script/script_fixture.hpp"

namespace headless::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

struct Ending {
    const char* name;
    const char* script;
    int status;
    const char* error; ///< part of it, empty: none at all
};

struct ScriptEnding : ScriptTest, testing::WithParamInterface<Ending> {};

TEST_P(ScriptEnding, gives_its_status_and_error_and_leaves_the_project_whole) {
    const auto outcome = run(std::string("reaper.InsertTrackAtIndex(9, false)\n") + GetParam().script);
    EXPECT_EQ(outcome.status, GetParam().status);
    if (*GetParam().error)
        EXPECT_THAT(outcome.error, AllOf(HasSubstr("script.lua"), HasSubstr(GetParam().error)));
    else
        EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(run("assert(reaper.CountTracks(0) <= 2)").status, 0) << "the workstation goes on";
}

INSTANTIATE_TEST_SUITE_P(
    , ScriptEnding,
    testing::Values(
        Ending{"at_its_end", "return 3", 0, ""},
        Ending{"error", "local function f() error('boom') end\nf()", 1,
               "script.lua:2: boom\nstack traceback:\n"},
        Ending{"error_object", "error(setmetatable({}, {__tostring = function() return 'mine' end}))", 1,
               "mine\nstack traceback:"},
        Ending{"error_table", "error({})", 1, "(error object is a table value)"},
        Ending{"syntax", "x = = 1", 1, "script.lua:2: unexpected symbol"},
        Ending{"endless_recursion", "local function f() return 1 + f() end f()", 1, "stack overflow"},
        Ending{"endless_memory", "local t = {} while true do t[#t + 1] = {} end", 1, "not enough memory"},
        Ending{"exit", "os.exit(3)", 3, ""}, Ending{"exit_true", "os.exit(true) error()", 0, ""},
        Ending{"exit_false", "os.exit(false)", 1, ""},
        Ending{"caught_exit", "while true do pcall(os.exit, 4) end", 4, ""},
        Ending{"exit_in_a_coroutine", "while true do coroutine.resume(coroutine.create(os.exit), 5) end", 5,
               ""},
        Ending{"deferred_error", "reaper.defer(function() error('late') end)", 1, "script.lua:2: late"},
        Ending{"deferred_exit", "reaper.defer(function() os.exit(6) end)", 6, ""},
        Ending{"error_at_exit", "reaper.atexit(function() error('last') end)", 1, "script.lua:2: last"},
        Ending{"error_while_closing", "x = setmetatable({}, {__gc = function() reaper.GetTrack({}) end})", 0,
               ""}),
    [](const auto& ending) { return std::string(ending.param.name); });

TEST_F(ScriptTest, knows_its_arguments_its_file_and_its_globals) {
    const auto outcome = run(R"(
        local first, second, third = ...
        assert(first == "one" and second == "-2" and third == nil)
        assert(arg[1] == "one" and arg[2] == "-2" and #arg == 2)
        local path = debug.getinfo(1, "S").source:match("^@(.*[/\\])script.lua$")
        assert(path and arg[0] == path .. "script.lua")
        assert(select(2, reaper.get_action_context()) == arg[0]))");
    EXPECT_EQ(outcome.error, "");
}

TEST_F(ScriptTest, runs_deferred_functions_in_turns_and_the_last_ones_even_after_an_error) {
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

TEST_F(ScriptTest, ends_in_order_wherever_memory_runs_out) {
    std::size_t runs = 0;
    ScriptOutcome outcome{1};
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

TEST_F(ScriptTest, tells_a_script_that_cannot_be_read) {
    const auto outcome = run_script(workstation, plugin, {folder / "none.lua", {}});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.error, HasSubstr("none.lua: No such file"));
}

} // namespace
} // namespace headless::test
