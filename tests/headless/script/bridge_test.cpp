#include "tests/headless/script/script_fixture.hpp"

namespace headless::test {
namespace {

using testing::HasSubstr;

/// A call, and all that it returns, as %q and numbers show it.
struct Call {
    const char* name;
    const char* call;
    const char* results;
};

struct BridgedCall : ScriptTest, testing::WithParamInterface<Call> {};

TEST_P(BridgedCall, ReturnsItsValueThenItsOutputs) {
    project.markers.add({true, 1.0, 2.5, "scene", 7, 0x1000003});
    const auto outcome = run(std::string(R"(
        local track, item = reaper.GetTrack(0, 0), reaper.GetMediaItem(0, 0)
        local take = reaper.GetActiveTake(item)
        local shown = {}
        local function show(...)
            for i = 1, select("#", ...) do shown[i] = tostring((select(i, ...))) end
            return table.concat(shown, " ")
        end
        local got, wanted = show()") +
                             GetParam().call + "), [[" + GetParam().results + R"(]]
        assert(got == wanted, got))");
    EXPECT_EQ(outcome.error, "");
}

INSTANTIATE_TEST_SUITE_P(
    , BridgedCall,
    testing::Values(
        Call{"nothing", "reaper.UpdateArrange()", ""}, Call{"handle", "reaper.GetParentTrack(track)", "nil"},
        Call{"handle_by_its_key",
             "reaper.GetMediaItemInfo_Value(item, 'P_TRACK') == track, "
             "reaper.GetMediaTrackInfo_Value(track, 'P_PARTRACK')",
             "true nil"},
        Call{"number", "reaper.GetMediaItemInfo_Value(item, 'D_LENGTH')", "0.5"},
        Call{"text_out", "reaper.GetTrackName(track, '')", "true voice"},
        Call{"text_alone", "reaper.GetMediaSourceType(reaper.GetMediaItemTake_Source(take), '')", "WAVE"},
        Call{"text_in_and_out", "reaper.GetSetMediaTrackInfo_String(track, 'P_NAME', 'new', true)",
             "true new"},
        Call{"region", "reaper.EnumProjectMarkers3(0, 0)", "1 true 1.0 2.5 scene 7 16777219"},
        Call{"past_the_last_region", "reaper.EnumProjectMarkers3(nil, 1)", "0 false 0.0 0.0  0 0"},
        Call{"counts", "reaper.CountProjectMarkers()", "1 0 1"},
        Call{"outputs_alone", "reaper.ColorFromNative(0x010203)", "3 2 1"},
        Call{"optional_output", "reaper.TimeMap_curFrameRate(0)", "24.0 false"},
        Call{"registered", "reaper.MK_GetTrackItemColor(track)", "true 0 0 0 0"},
        Call{"registered_texts", "reaper.MK_ReplaceSearchString('a-b', '-', '+')", "true a+b"},
        Call{"registered_double", "reaper.MK_GetRegionMarkerPosition(0, 0)", "true 1.0 2.5"},
        Call{"lenient_numbers", "reaper.ColorToNative('1', 2.9, 0/0)", "513"},
        Call{"unsigned_flag", "reaper.ColorFromNative(0xFFFFFFFF)", "255 255 255"},
        Call{"documentation_row", "reaper.MK_GetPathInfo('x')", "0 nil"}),
    [](const auto& call) { return std::string(call.param.name); });

struct RefusedCall : ScriptTest, testing::WithParamInterface<Call> {};

TEST_P(RefusedCall, RaisesTheWorkstationsError) {
    const auto outcome = run(std::string("local track = reaper.GetTrack(0, 0)\n") + GetParam().call);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.error, HasSubstr(std::string("script.lua:2: bad argument ") + GetParam().results));
}

INSTANTIATE_TEST_SUITE_P(
    , RefusedCall,
    testing::Values(
        Call{"missing_handle", "reaper.GetTrackDepth()", "#1 to 'GetTrackDepth' (MediaTrack expected)"},
        Call{"other_handle", "reaper.MK_RenderMediaItemActiveTake(track)",
             "#1 to 'MK_RenderMediaItemActiveTake' (MediaItem expected)"},
        Call{"stale_handle", "reaper.DeleteTrack(track) reaper.DeleteTrack(track)",
             "#1 to 'DeleteTrack' (MediaTrack expected)"},
        Call{"text_for_number", "reaper.GetTrack(0, 'x')", "#2 to 'GetTrack' (number expected, got string)"},
        Call{"table_for_text", "reaper.GetSetMediaTrackInfo_String(track, 'P_NAME', {}, true)",
             "#3 to 'GetSetMediaTrackInfo_String' (string expected, got table)"},
        Call{"nothing_for_boolean", "reaper.SetTrackSelected(track)",
             "#2 to 'SetTrackSelected' (boolean expected, got no value)"}),
    [](const auto& call) { return std::string(call.param.name); });

TEST_F(ScriptTest, LongTextsFitIntoBigBuffers) {
    const auto outcome = run(R"(
        local long = ("x"):rep(2000000)
        assert(reaper.GetSetMediaTrackInfo_String(reaper.GetTrack(0, 0), "P_NAME", long, true))
        io.open("text.txt", "w"):write(long:sub(1, 900000), "\n"):close()
        local read, text = reaper.MK_ReadFile(".", "text.txt")
        assert(read and #text == 900001, #text))");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(project.tracks()[0]->name.size(), 2'000'000U);
}

TEST_F(ScriptTest, ArraysAreFilledWithinTheirSize) {
    const auto outcome = run(R"(
        local take = reaper.GetActiveTake(reaper.GetMediaItem(0, 0))
        local peaks = reaper.new_array(20)
        assert(reaper.GetMediaItemTake_Peaks(take, 100, 1, 1, 10, 0, peaks) == 10)
        assert(math.abs(peaks[1] - 0.5) < 0.01)
        assert(math.abs(peaks[20] + 0.5) < 0.01)
        assert(#peaks.table(11) == 10)
        assert(peaks:get_alloc() == 20)
        peaks.resize(19)
        assert(reaper.GetMediaItemTake_Peaks(take, 100, 1, 1, 10, 0, peaks) == 0)
        peaks.clear(3, 2)
        assert(peaks[2] == 3 and #peaks == 19 and not pcall(function() return peaks[20] end))
        local copied = reaper.new_array({1, 2, 3}, 5)
        assert(table.concat(copied.table(), " ") == "1.0 2.0 3.0 0.0 0.0")
        assert(peaks.copy(copied, 2) == 4)
        assert(peaks[1] == 2))");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(workstation.take_failures().size(), 1U) << "the array was too small";
}

TEST_F(ScriptTest, RequireFindsTheLoadedModule) {
    const auto outcome = run(R"(
        assert(require "reaper_MERIDEK_FELSPAR" == reaper)
        local _, tracks = MK_FELSPAR.MK_GetTrackItemList(0)
        assert(#tracks == 1)
        assert(tracks[1] == reaper.GetTrack(0, 0))
        local _, peaks = reaper.MK_GetMediaItemPeakList(reaper.GetMediaItem(0, 0))
        assert(#peaks == 500)
        assert(peaks[500].Time > 0.49))");
    EXPECT_EQ(outcome.error, "");
}

TEST_F(ScriptTest, DialogsGetAnswersByTitleInOrder) {
    for (const char* answer : {"yes", "N", "maybe"})
        workstation.dialog_answers.add("Sure", answer);
    workstation.dialog_answers.add("Form", "new");
    workstation.dialog_answers.add("Unseen", "x");
    const auto outcome = run(R"(
        assert(reaper.ShowMessageBox("Really?", "Sure", 4) == 6)
        assert(reaper.MB("Really?", "Sure", 3) == 7)
        assert(reaper.MB("Really?", "Sure", 1) == 2, "no such button: the default")
        local answered, values = reaper.GetUserInputs("Form", 2, "a,b,separator=;", "old;kept")
        assert(answered and values == "new;kept", values)
        assert(not reaper.GetUserInputs("Other", 1, "a", "old")))");
    EXPECT_EQ(outcome.error, "");
    EXPECT_THAT(workstation.dialog_answers.never_asked(), testing::ElementsAre("Unseen"));
    EXPECT_EQ(workstation.take_failures().size(), 1U);
}

} // namespace
} // namespace headless::test
