#include "tests/headless/script/script_fixture.hpp"

namespace headless::test {
namespace {

using testing::HasSubstr;

TEST_F(ScriptTest, CallsReturnTheirValueThenTheirOutputs) {
    project.markers.add({true, 1.0, 2.5, "scene", 7, 0x1000003});
    project.insert_track(1);
    const auto outcome = run(R"(
        local track, unnamed, item = reaper.GetTrack(0, 0), reaper.GetTrack(0, 1), reaper.GetMediaItem(0, 0)
        local source = reaper.GetMediaItemTake_Source(reaper.GetActiveTake(item))
        local wrong = {}
        local function expect(wanted, ...)
            local shown = {}
            for i = 1, select("#", ...) do shown[i] = tostring((select(i, ...))) end
            local got = table.concat(shown, " ")
            if got ~= wanted then wrong[#wrong + 1] = got .. " instead of " .. wanted end
        end
        expect("", reaper.UpdateArrange())
        expect("nil", reaper.GetParentTrack(track))
        expect(tostring(track), reaper.GetMediaItemInfo_Value(item, "P_TRACK"))
        expect("nil", reaper.GetMediaTrackInfo_Value(track, "P_PARTRACK"))
        expect("0.5", reaper.GetMediaItemInfo_Value(item, "D_LENGTH"))
        expect("true voice", reaper.GetTrackName(track, ""))
        expect("true Track 2", reaper.GetTrackName(unnamed))
        expect("WAVE", reaper.GetMediaSourceType(source, ""))
        expect("true new", reaper.GetSetMediaTrackInfo_String(track, "P_NAME", "new", true))
        expect("1 true 1.0 2.5 scene 7 16777219", reaper.EnumProjectMarkers3(0, 0))
        expect("0 false 0.0 0.0  0 0", reaper.EnumProjectMarkers3(nil, 1))
        expect("1 0 1", reaper.CountProjectMarkers())
        expect("3 2 1", reaper.ColorFromNative(0x010203))
        expect("24.0 false", reaper.TimeMap_curFrameRate(0))
        expect("true 0 0 0 0", reaper.MK_GetTrackItemColor(track))
        expect("true a+b", reaper.MK_ReplaceSearchString("a-b", "-", "+"))
        expect("true 1.0 2.5", reaper.MK_GetRegionMarkerPosition(0, 0))
        expect("513", reaper.ColorToNative("1", 2.9, 0/0))
        expect("255 255 255", reaper.ColorFromNative(0xFFFFFFFF))
        expect("0 nil", reaper.MK_GetPathInfo("x")) -- it only documents the Lua module
        local _, tracks = require("reaper_MERIDEK_FELSPAR").MK_GetTrackItemList(0)
        expect(tostring(track), tracks[1])
        assert(#wrong == 0, table.concat(wrong, "\n")))");
    EXPECT_EQ(outcome.error, "");
}

TEST_F(ScriptTest, WrongArgumentsRaiseTheWorkstationsError) {
    const std::pair<const char*, const char*> calls[] = {
        {"reaper.GetTrackDepth()", "#1 to 'GetTrackDepth' (MediaTrack expected)"},
        {"reaper.MK_RenderMediaItemActiveTake(track)",
         "#1 to 'MK_RenderMediaItemActiveTake' (MediaItem expected)"},
        {"reaper.GetTrack(0, 'x')", "#2 to 'GetTrack' (number expected, got string)"},
        {"reaper.GetSetMediaTrackInfo_String(track, 'P_NAME', {}, true)",
         "#3 to 'GetSetMediaTrackInfo_String' (string expected, got table)"},
        {"reaper.SetTrackSelected(track)", "#2 to 'SetTrackSelected' (boolean expected, got no value)"},
        {"reaper.DeleteTrack(track) reaper.DeleteTrack(track)", "#1 to 'DeleteTrack' (MediaTrack expected)"}};
    for (const auto& [call, message] : calls) {
        const auto outcome = run(std::string("local track = reaper.GetTrack(0, 0)\n") + call);
        EXPECT_EQ(outcome.status, 1) << call;
        EXPECT_THAT(outcome.error, HasSubstr(std::string("script.lua:2: bad argument ") + message));
    }
}

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
        reaper.SetMediaItemTakeInfo_Value(take, "D_VOL", 0.25) -- peaks are those of the file
        assert(reaper.GetMediaItemTake_Peaks(take, 100, 1, 1, 10, 0, peaks) == 10)
        assert(math.abs(peaks[1] - 0.5) < 0.01)
        assert(math.abs(peaks[20] + 0.5) < 0.01)
        reaper.SetMediaItemTakeInfo_Value(take, "D_STARTOFFS", 0.45)
        assert(reaper.GetMediaItemTake_Peaks(take, 100, 1.02, 1, 10, 0, peaks) == 3)
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
