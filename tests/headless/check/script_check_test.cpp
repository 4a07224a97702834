#include "headless/check/script_check.hpp"
#include "headless/functions/all_functions.hpp"
#include "headless/workstation/workstation.hpp"
#include "tests/headless/support/failures.hpp"
#include "tests/headless/support/sound_files.hpp"

#include <gmock/gmock.h>

namespace headless::test {
namespace {

using check::Finding;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;

struct ScriptChecking : testing::Test {
    Result<check::ScriptCheck> check(const std::string& text) {
        write_bytes(folder / "script.lua", text);
        return checker.check(folder / "script.lua");
    }

    ScratchFolder folder;
    workstation::Workstation workstation{functions::all_functions()};
    check::ScriptChecker checker{workstation};
};

auto finds(check::FindingKind kind, const std::string& name, const std::vector<int>& lines) {
    return AllOf(Field("kind", &Finding::kind, kind), Field("name", &Finding::name, name),
                 Field("lines", &Finding::lines, lines));
}

TEST_F(ScriptChecking, ListsMissingFunctionsKeysAndCommands) {
    using check::FindingKind;
    const auto checked = check(R"(reaper.ClearConsole()
        local item = reaper.No_Such(0) reaper.No_Such(1)
        reaper.GetMediaItemInfo_Value(item, "D_POSITION")
        reaper.SetMediaItemInfo_Value(item, "D_NONE", 1)
        reaper.GetMediaItemInfo_Value(item, "D_NO" .. "NE")
        local _, name = reaper.GetSetMediaTrackInfo_String(track, "P_NAME", "", false)
        reaper.GetSetMediaTrackInfo_String(track, "P_NONE", name, true)
        reaper.GetSetProjectInfo_String(0, "NO_KEY", "", false)
        reaper.Main_OnCommand(40131, 0) reaper.Main_OnCommand(99999999, 0)
        if reaper.Optional then reaper.Optional() end
        if reaper.No_Such then reaper.defer(main) end
        gfx.init("window") gfx.x = 1
        reaper.No_Such()
    )");
    ASSERT_TRUE(checked);
    EXPECT_THAT(checked->missing,
                ElementsAre(finds(FindingKind::function, "No_Such", {2, 13}),
                            finds(FindingKind::key, "SetMediaItemInfo_Value D_NONE", {4}),
                            finds(FindingKind::key, "GetSetMediaTrackInfo_String P_NONE", {7}),
                            finds(FindingKind::key, "GetSetProjectInfo_String NO_KEY", {8}),
                            finds(FindingKind::command, "99999999", {9}),
                            finds(FindingKind::function, "gfx.init", {12})));
    EXPECT_THAT(checked->optional, ElementsAre(finds(FindingKind::function, "Optional", {10})));
    EXPECT_EQ(checked->missing[1].message, "SetMediaItemInfo_Value: the key \"D_NONE\" is not known");
    const auto again = check("reaper.SetMediaItemInfo_Value(item, 'D_NONE', 1) reaper.MB('a', 'b', 0)");
    ASSERT_TRUE(again);
    EXPECT_THAT(again->missing, ElementsAre(finds(FindingKind::key, "SetMediaItemInfo_Value D_NONE", {1})));
}

TEST_F(ScriptChecking, FailsForWhatIsNoScript) {
    EXPECT_THAT(check("reaper.No_Such(\n= 1"), fails_telling("script.lua:2: unexpected symbol"));
    EXPECT_THAT(checker.check(folder / "none.lua"), fails_telling("none.lua"));
    EXPECT_THAT(checker.check(folder.path), fails_telling("regular file"));
}

} // namespace
} // namespace headless::test
