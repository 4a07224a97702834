// What scripts are told when they call what the table `reaper` does not have.

#include "headless/script/missing_functions.hpp"
#include "tests/headless/script/script_fixture.hpp"
#include "tests/headless/support/failures.hpp"

namespace headless::test {
namespace {

using testing::HasSubstr;
using testing::Not;

struct MissingFunction : ScriptTest {};

TEST_F(MissingFunction, SaysSoHoweverItIsCalled) {
    struct Call {
        const char* text;
        std::string name;
        std::string nearest{};
    };
    const Call calls[] = {
        {"reaper.No_Such(0)", "No_Such"},
        {"local r = reaper r.No_Such(0)", "No_Such"},
        {"local r = reaper return r.No_Such(r.CountTracks(0))", "No_Such"},
        {"reaper['No_Such']()", "No_Such"},
        {"local name = 'No_Such' reaper[name]()", "No_Such"},
        {"local No_Such = reaper.No_Such No_Such()", "No_Such"},
        {"local ok, message = pcall(reaper.No_Such, 1) error(message, 0)", "No_Such"},
        {"local _, message = pcall(function() reaper.No_Such() end) error(message, 0)", "No_Such"},
        {"coroutine.wrap(function() reaper.No_Such() end)()", "No_Such"},
        {"reaper.defer(function() reaper.No_Such() end)", "No_Such"},
        {"reaper.No_Such_At_All()", "No_Such_At_All"},
        {"reaper.TakeisMIDI()", "TakeisMIDI", "; the nearest name is TakeIsMIDI"},
        {"reaper.CountTrack(0)", "CountTrack", "; the nearest name is CountTracks"}};
    for (const auto& [call, name, nearest] : calls) {
        const auto outcome = run(std::string("assert(not reaper.No_Such)\n") + call);
        EXPECT_EQ(outcome.status, 1) << call;
        EXPECT_THAT(outcome.error,
                    HasSubstr("the headless workstation has no " + name + " (line 2)" + nearest + '\n'));
        EXPECT_TRUE(workstation.take_failures().empty()) << call;
    }
    EXPECT_THAT(run("\n\nreaper.No_Such()").error, HasSubstr("script.lua:3: the headless workstation"));
}

TEST_F(MissingFunction, LeavesOtherCallsOfNilToLua) {
    const std::pair<const char*, const char*> calls[] = {
        {"helper()", "attempt to call a nil value (global 'helper')"},
        {"local t = {} t.x()", "attempt to call a nil value (field 'x')"},
        {"local t = {} t:x()", "attempt to call a nil value (method 'x')"},
        {"local f f(reaper.No_Such)", "attempt to call a nil value (local 'f')"},
        {"local _ = reaper.No_Such\npcall(error) local t, i = {}, 1 t[i]()", "attempt to call a nil value"},
        {"for _ in nil do end", "attempt to call a nil value"}};
    for (const auto& [call, message] : calls) {
        const auto outcome = run(call);
        EXPECT_EQ(outcome.status, 1) << call;
        EXPECT_THAT(outcome.error, HasSubstr(message));
        EXPECT_THAT(outcome.error, Not(HasSubstr("workstation")));
    }
    EXPECT_EQ(run("assert(not getmetatable(nil)) assert(not pcall(nil)) assert(not nil)").error, "");
}

TEST_F(MissingFunction, IsReportedWhenTheScriptCatchesTheError) {
    EXPECT_EQ(run("for _ = 1, 2 do pcall(reaper.No_Such) end\n if reaper.Other then end").status, 0);
    EXPECT_THAT(
        workstation.take_failures(),
        testing::ElementsAre(tells("a missing function: the headless workstation has no No_Such (line 1)")));
}

TEST_F(MissingFunction, CanBeAskedFor) {
    const auto outcome = run(R"(
        for _, name in pairs {"GetTrack", "MK_GetTrackItemMute", "defer", "APIExists", "new_array", "MB"} do
            assert(reaper.APIExists(name), name)
        end
        assert(not reaper.APIExists("No_Such") and not reaper.Other and not reaper.APIExists("plugin_register"))
        pcall(reaper.Called)
        for name in pairs(reaper) do assert(reaper.APIExists(name), name) end)");
    EXPECT_EQ(outcome.error, "");
    EXPECT_THAT(outcome.asked_for, testing::ElementsAre("No_Such", "Other", "plugin_register"));
}

TEST(NearName, IsOneOfFewDifferences) {
    const std::vector<std::string> names{"GetTrack", "GetTake", "GetTrackName", "MB"};
    const std::pair<const char*, const char*> cases[] = {{"gettrackname", "GetTrackName"},
                                                         {"GetTracks", "GetTrack"},
                                                         {"GetTrakc", "GetTrack"},
                                                         {"SetTrackNames", "GetTrackName"},
                                                         {"CountTrack", ""},
                                                         {"MA", ""},
                                                         {"", ""}};
    for (const auto& [wanted, nearest] : cases)
        EXPECT_EQ(script::near_name(wanted, names), nearest) << wanted;
}

} // namespace
} // namespace headless::test
