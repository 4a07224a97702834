#include "headless/check/source_survey.hpp"

#include <gmock/gmock.h>

namespace headless::check {
namespace {

/// As "A B? gfx.C": a question mark stands for optional.
std::string uses_in(std::string_view source) {
    std::string text;
    for (const FunctionUse& use : survey_source(source))
        text += (text.empty() ? "" : " ") + (use.table == "reaper" ? "" : use.table + '.') + use.name +
                (use.is_optional ? "?" : "");
    return text;
}

struct Case {
    const char* source;
    const char* uses;
};

void expect_uses(std::initializer_list<Case> cases) {
    for (const auto& [source, uses] : cases)
        EXPECT_EQ(uses_in(source), uses) << source;
}

TEST(SourceSurvey, FindsCallsByAnyName) {
    expect_uses({{"reaper.A() reaper['B']() _G.reaper.C() reaper.D'x' reaper.E{}", "A B C D E"},
                 {"local r = reaper r.A()", "A"},
                 {"local reaper, g = reaper, gfx reaper.A() g.init('x')", "A gfx.init"},
                 {"local function f() r.A() end r = reaper f()", "A"},
                 {"local r r = reaper r.A()", "A"},
                 {"local A <const>, B = reaper.A, reaper['B'] A() B(1)", "A? B? A B"},
                 {"local A = reaper.A", "A?"},
                 {"A = reaper.A function f() A() end", "A? A"},
                 {"pcall(reaper.A, 1) return reaper.B", "A B"},
                 {"reaper.A(reaper.B(), function() return reaper.C() end)", "A B C"},
                 {"for i = 0, reaper.A() - 1 do reaper.B() end", "A B"}});
}

TEST(SourceSurvey, LeavesOtherNamesAlone) {
    expect_uses({{"-- reaper.A()\nlocal s = 'reaper.B()' .. [[reaper.C()]]", ""},
                 {"my.reaper.A() other.A() reaper_A() reaper[name]()", ""},
                 {"local function f(reaper) reaper.A() end", ""},
                 {"for _, reaper in pairs(t) do reaper.A() end reaper.B()", "B"},
                 {"do local reaper = {} reaper.A() end reaper.B()", "B"},
                 {"local r = reaper.A() r.B()", "A"},
                 {"local t = {r = reaper} r.A()", ""},
                 {"function reaper.A() end reaper.B = print reaper.A() reaper.B()", ""}});
}

TEST(SourceSurvey, TakesFunctionsThatAreAskedForAsOptional) {
    expect_uses({{"if reaper.A then reaper.A() end", "A? A?"},
                 {"if not reaper.A then reaper.MB() return end reaper.A()", "A? MB A"},
                 {"if not (reaper.A) then else reaper.A() end reaper.A()", "A? A? A"},
                 {"if reaper.A ~= nil then reaper.A() elseif x then reaper.A() end", "A? A? A"},
                 {"if reaper.A == nil then reaper.A() else reaper.A() end", "A? A A?"},
                 {"if reaper.APIExists('A') then if x then reaper.A() end end", "APIExists A? A?"},
                 {"if not reaper.APIExists('A') then return end", "APIExists A?"},
                 {"local n = reaper.A and reaper.A() or 0\nreaper.A()", "A? A? A"},
                 {"local f = reaper.A or print if type(reaper.B) == 'function' then end", "A? B?"},
                 {"while reaper.A do reaper.A() end repeat until reaper.B", "A? A? B?"}});
}

TEST(SourceSurvey, KeepsLinesAndLiteralArguments) {
    const auto uses =
        survey_source("\nreaper.A('k', 7, -1, x, 'a' .. b, {1, 2}, function() if x then f(1, 2) "
                      "end end)\nreaper.B()\nreaper.C 'text'");
    ASSERT_EQ(uses.size(), 3U);
    EXPECT_EQ(uses[0].line, 2);
    EXPECT_THAT(uses[0].arguments, testing::ElementsAre("k", "7", std::nullopt, std::nullopt, std::nullopt,
                                                        std::nullopt, std::nullopt));
    EXPECT_EQ(uses[1].line, 3);
    EXPECT_THAT(uses[1].arguments, testing::IsEmpty());
    EXPECT_THAT(uses[2].arguments, testing::ElementsAre("text"));
}

TEST(SourceSurvey, EndsOnAnySource) {
    const std::string whole = "local r = reaper for _, x in f do if not r.A then r['B']({}, 'k') end end "
                              "function reaper.C(a) end local D <close>, e = r.D, (r.E) and 1";
    for (std::size_t begin = 0; begin < whole.size(); ++begin)
        for (std::size_t length = 0; length < whole.size() - begin; ++length)
            survey_source(std::string_view(whole).substr(begin, length));
}

} // namespace
} // namespace headless::check
