// Scripts that ask for time, tempo, selection, view and markers. The project has 120 bpm, 4/4 and 48 kHz, and an
// item from 1 to 1.5 s.

#include "tests/headless/script/script_fixture.hpp"
#include "tests/headless/support/failures.hpp"

#include <string>

namespace headless::test {
namespace {

struct TimeFunctions : ScriptTest {
    void expect_runs(const std::string& text) {
        const script::ScriptOutcome outcome = run(R"(
            local item = reaper.GetMediaItem(0, 0)
            local take = reaper.GetActiveTake(item)
            local function is(wanted, ...)
                local got = {...}
                for i = 1, select("#", ...) do
                    got[i] = math.type(got[i]) == "float" and ("%.9g"):format(got[i]) or tostring(got[i])
                end
                got = table.concat(got, " ")
                if got ~= wanted then error(got .. " instead of " .. wanted, 2) end
            end
            local function item_is(wanted)
                local value = reaper.GetMediaItemInfo_Value
                is(wanted, value(item, "D_POSITION"), value(item, "D_LENGTH"),
                   reaper.GetMediaItemTakeInfo_Value(take, "D_STARTOFFS"))
            end
            )" + text);
        EXPECT_EQ(outcome.error, "");
    }
};

TEST_F(TimeFunctions, ConvertOverATempoMap) {
    expect_runs(R"(
        is("0", reaper.CountTempoTimeSigMarkers(0))
        is("-1", reaper.FindTempoTimeSigMarker(0, 9))
        is("3.5", reaper.TimeMap2_timeToQN(0, 1.75))
        is("1.75", reaper.TimeMap_QNToTime(3.5))
        assert(reaper.AddTempoTimeSigMarker(0, 4, 60, 6, 8, false))
        is("2", reaper.CountTempoTimeSigMarkers(0))
        is("true 0 0 0 120 4 4 false", reaper.GetTempoTimeSigMarker(0, 0))
        is("true 4 2 0 60 6 8 false", reaper.GetTempoTimeSigMarker(0, 1))
        is("false", (reaper.GetTempoTimeSigMarker(0, 2)))
        is("1 2 6 9 8", reaper.TimeMap2_timeToBeats(0, 4.5))
        is("4.5", reaper.TimeMap2_beatsToTime(0, 1, 2))
        is("4.5", reaper.TimeMap2_beatsToTime(0, 9))
        is("120 120", reaper.TimeMap2_GetDividedBpmAtTime(0, 1), reaper.TimeMap_GetDividedBpmAtTime(5))
        is("6 8 60", reaper.TimeMap_GetTimeSigAtTime(0, 5))
        is("4 -1", reaper.TimeMap2_GetNextChangeTime(0, 0), reaper.TimeMap2_GetNextChangeTime(0, 4))
        is("4 8 11 6 8 60", reaper.TimeMap_GetMeasureInfo(0, 2))
        is("3 8 11", reaper.TimeMap_QNToMeasures(0, 9))
        is("120 4", reaper.GetProjectTimeSignature2(0))
        is("120", reaper.Master_GetTempo())
        reaper.SetEditCurPos(9, false, false)
        is("60", reaper.Master_GetTempo())
        reaper.SetCurrentBPM(0, 90, true)
        is("true 4 2 0 90 6 8 false", reaper.GetTempoTimeSigMarker(0, 1)))");
}

TEST_F(TimeFunctions, ChangeAndDeleteTempoPoints) {
    expect_runs(R"(
        assert(reaper.SetTempoTimeSigMarker(0, -1, 0, -1, -1, 60, 0, 0, true))
        assert(reaper.SetTempoTimeSigMarker(0, -1, 4, -1, -1, 120, 3, 4, false))
        is("true 0 0 0 60 0 0 true", reaper.GetTempoTimeSigMarker(0, 0))
        is("75", reaper.TimeMap2_GetDividedBpmAtTime(0, 1))
        assert(reaper.SetTempoTimeSigMarker(0, 0, 0, -1, -1, 120, 0, 0, false))
        assert(reaper.SetTempoTimeSigMarker(0, 1, -1, 1, 2, 120, 0, 0, false))
        is("true 3 1 2 120 0 0 false", reaper.GetTempoTimeSigMarker(0, 1))
        assert(not reaper.SetTempoTimeSigMarker(0, 2, 4, -1, -1, 120, 3, 4, false))
        assert(not reaper.SetTempoTimeSigMarker(0, 1, -1, -1, -1, 120, 3, 4, false))
        assert(not reaper.AddTempoTimeSigMarker(0, 1, 0, 0, 0, false))
        assert(not reaper.AddTempoTimeSigMarker(0, 1/0, 120, 0, 0, false))
        assert(reaper.DeleteTempoTimeSigMarker(0, 1))
        assert(not reaper.DeleteTempoTimeSigMarker(0, 1))
        assert(not reaper.DeleteTempoTimeSigMarker(0, -1))
        is("1", reaper.CountTempoTimeSigMarkers(0))
        reaper.DeleteTempoTimeSigMarker(0, 0)
        reaper.SetCurrentBPM(0, 100, true)
        is("100 4", reaper.GetProjectTimeSignature2(0)))");
    EXPECT_EQ(project.tempo_bpm, 100.0);
}

TEST_F(TimeFunctions, FormatAndParseTimes) {
    project.start_seconds = 10.01;
    project.frame_rate = 25.0;
    expect_runs(R"(
        is("10.01 10", reaper.GetProjectTimeOffset(0, false), reaper.GetProjectTimeOffset(0, true))
        is("48000", reaper.format_timestr_pos(1 - reaper.GetProjectTimeOffset(0, false), "", 4))
        is("1:02.500", reaper.format_timestr(62.5, ""))
        is("1:02.500", reaper.format_timestr(62.5))
        is("2.1.00", reaper.format_timestr_pos(2, "", 2))
        is("2.1.00 / 0:12.010", reaper.format_timestr_pos(2, "", -1))
        is("1.2.00", reaper.format_timestr_len(3, "", 2, 2))
        is("62.5", reaper.parse_timestr("1:02.5"))
        is("2", reaper.parse_timestr_pos("0:12.01", 0))
        is("3", reaper.parse_timestr_len("1.2", 2, 2))
        reaper.format_timestr_pos(0, "", 77))");
    EXPECT_THAT(workstation.take_failures(), testing::ElementsAre(tells("unit 77")));
}

TEST_F(TimeFunctions, SetGridAndSnapToIt) {
    expect_runs(R"(
        is("1 0.25 0 0", reaper.GetSetProjectGrid(0, false))
        reaper.GetSetProjectGrid(0, true, 0.125, 1, 0.5)
        is("1 0.125 1 0.5", reaper.GetSetProjectGrid(0, false, 0, 0, 0))
        reaper.SetProjectGrid(0, 0.25)
        reaper.GetSetProjectGrid(0, true, nil, 0)
        is("1 0.25 0 0", reaper.GetSetProjectGrid(0, false))
        is("1.5", reaper.SnapToGrid(0, 1.3))
        is("1.5 1 1.5", reaper.BR_GetClosestGridDivision(1.3), reaper.BR_GetPrevGridDivision(1.3),
           reaper.BR_GetNextGridDivision(1.3)))");
}

TEST_F(TimeFunctions, MoveTimeSelectionAndLoopTogetherWhileTheyAreEqual) {
    expect_runs(R"(
        is("0 0", reaper.GetSet_LoopTimeRange(false, false, 0, 0, false))
        is("1 3", reaper.GetSet_LoopTimeRange(true, false, 3, 1, false))
        is("1 3", reaper.GetSet_LoopTimeRange2(0, false, true, 0, 0, false))
        reaper.GetSet_LoopTimeRange(1, 0, 5, 5, 0)
        is("0 0", reaper.GetSet_LoopTimeRange(0, 0, 0, 0, 0)))");
    project.load_ranges({9.0, 4.0}, {1.0, 2.0});
    expect_runs(R"(
        is("4 9", reaper.GetSet_LoopTimeRange(false, false, 0, 0, false))
        reaper.GetSet_LoopTimeRange(true, true, 6, 7, false)
        is("4 9", reaper.GetSet_LoopTimeRange(false, false, 0, 0, false))
        reaper.SetEditCurPos(9, false, false)
        reaper.MoveEditCursor(1.5, true)
        is("4 10.5", reaper.GetSet_LoopTimeRange(false, false, 0, 0, false))
        reaper.MoveEditCursor(-99, false)
        is("0 0", reaper.GetCursorPosition(), reaper.GetPlayPosition())
        is("1 0 0", reaper.GetSetRepeat(2), reaper.GetSetRepeatEx(0, 0), reaper.GetSetRepeat(-1))
        is("0", reaper.GetPlayStateEx(0)))");
}

TEST_F(TimeFunctions, KeepAView) {
    expect_runs(R"(
        is("0 10", reaper.GetSet_ArrangeView2(0, false, 0, 0))
        is("100", reaper.GetHZoomLevel())
        is("2 4", reaper.GetSet_ArrangeView2(0, true, 0, 0, 2, 4))
        is("500", reaper.GetHZoomLevel())
        is("2.2 3", reaper.GetSet_ArrangeView2(0, false, 100, 500))
        reaper.BR_SetArrangeView(0, 5, 5)
        reaper.BR_SetArrangeView(0, 3, 1/0)
        is("2 4", reaper.BR_GetArrangeView(0))
        reaper.GetSet_ArrangeView2(0, true, 100, 200, 5, 6)
        is("4 14", reaper.BR_GetArrangeView(0))
        reaper.SetEditCurPos(6, false, false)
        reaper.adjustZoom(200, 1, true, -1)
        is("5 10", reaper.BR_GetArrangeView(0))
        reaper.adjustZoom(1, 0, true, -1))");
    EXPECT_THAT(workstation.take_failures(), testing::ElementsAre(tells("adjustZoom")));
}

TEST_F(TimeFunctions, FindAndChangeMarkers) {
    expect_runs(R"(
        reaper.AddProjectMarker2(0, true, 1, 9, "outer", 1, 0x1000001)
        reaper.AddProjectMarker2(0, true, 2, 4, "inner", 2, 0)
        reaper.AddProjectMarker2(0, false, 3, 0, "mark", 7, 0)
        is("-1 -1", reaper.GetLastMarkerAndCurRegion(0, 0.5))
        is("-1 1", reaper.GetLastMarkerAndCurRegion(0, 2))
        is("2 0", reaper.GetLastMarkerAndCurRegion(0, 4))
        is("2 -1", reaper.GetLastMarkerAndCurRegion(0, 9))
        reaper.GoToMarker(0, 1, true)
        is("3", reaper.GetCursorPosition())
        reaper.GoToRegion(0, 2, false)
        reaper.GoToMarker(0, 8, false)
        is("2", reaper.GetCursorPosition())
        assert(reaper.SetProjectMarker4(0, 1, true, 1, 8, "", 0, 0))
        is("1 true 1 8 outer 1 16777217", reaper.EnumProjectMarkers3(0, 0))
        assert(reaper.SetProjectMarker4(0, 1, true, 1, 8, "", 0x1000002, 1))
        is("1 true 1 8  1 16777218", reaper.EnumProjectMarkers3(0, 0))
        assert(not reaper.SetProjectMarkerByIndex(0, 1, true, 2, 4, 1, "taken", 0))
        assert(not reaper.SetProjectMarkerByIndex(0, 3, true, 2, 4, 9, "missing", 0))
        assert(reaper.SetProjectMarkerByIndex2(0, 0, true, 5, 8, 3, "late", 0, 2))
        is("1 true 5 8 late 3 16777218", reaper.EnumProjectMarkers3(0, 0))
        assert(reaper.SetProjectMarkerByIndex2(0, -1, false, 0, 0, 0, "", 0, 2))
        is("3 true 5 8 late 3 16777218", reaper.EnumProjectMarkers3(0, 2)))");
}

TEST_F(TimeFunctions, KeepTheTracksThatARegionRenders) {
    expect_runs(R"(
        reaper.AddProjectMarker(0, true, 1, 9, "", 4)
        reaper.InsertTrackAtIndex(1, false)
        local first, second, master = reaper.GetTrack(0, 0), reaper.GetTrack(0, 1), reaper.GetMasterTrack(0)
        reaper.SetRegionRenderMatrix(0, 4, second, 1)
        reaper.SetRegionRenderMatrix(0, 4, master, 4)
        reaper.SetRegionRenderMatrix(0, 4, second, 2)
        reaper.SetRegionRenderMatrix(0, 5, first, 1)
        assert(reaper.EnumRegionRenderMatrix(0, 4, 0) == second)
        assert(reaper.EnumRegionRenderMatrix(0, 4, 1) == master)
        assert(reaper.EnumRegionRenderMatrix(0, 4, 2) == nil)
        assert(reaper.EnumRegionRenderMatrix(0, 5, 0) == nil)
        reaper.SetProjectMarker(4, true, 2, 9, "moved")
        reaper.SetRegionRenderMatrix(0, 4, master, -1)
        assert(reaper.EnumRegionRenderMatrix(0, 4, 1) == nil)
        reaper.DeleteTrack(second)
        assert(reaper.EnumRegionRenderMatrix(0, 4, 0) == nil))");
}

TEST_F(TimeFunctions, NudgeSelectedItems) {
    expect_runs(R"(
        assert(not reaper.ApplyNudge(0, 0, 0, 1, 1, false, 0))
        reaper.SetMediaItemSelected(item, true)
        item_is("1 0.5 0")
        assert(reaper.ApplyNudge(0, 0, 0, 1, 1.5, false, 0))
        item_is("2.5 0.5 0")
        reaper.ApplyNudge(0, 0, 1, 0, 250, false, 0)
        item_is("2.75 0.25 0.25")
        reaper.ApplyNudge(0, 0, 2, 1, 0.25, true, 0)
        item_is("2.5 0.5 0.25")
        reaper.ApplyNudge(0, 0, 3, 17, 24000, false, 0)
        item_is("2.5 1 0.25")
        reaper.ApplyNudge(0, 0, 4, 1, 0.25, false, 0)
        item_is("2.5 1 0")
        reaper.ApplyNudge(0, 1, 0, 1, 7, true, 0)
        item_is("7 1 0")
        for unit, position in pairs {[13] = 7.5, [15] = 9, [16] = 9.75, [2] = 7.5, [20] = 8, [21] = 8, [12] = 7 + 1/3} do
            reaper.ApplyNudge(0, 1, 0, 1, 7, false, 0)
            reaper.ApplyNudge(0, 0, 0, unit, unit == 16 and 1.15 or 1, false, 0)
            assert(math.abs(reaper.GetMediaItemInfo_Value(item, "D_POSITION") - position) < 1e-9, unit)
        end
        reaper.ApplyNudge(0, 3, 0, 1, 7.3, false, 0)
        item_is("7.5 1 0")
        reaper.ApplyNudge(0, 0, 0, 1, 99, true, 0)
        item_is("0 1 0")
        assert(reaper.ApplyNudge(0, 1, 6, 1, 3, false, 0))
        is("3", reaper.GetCursorPosition())
        assert(not reaper.ApplyNudge(0, 0, 5, 1, 3, false, 1)))");
    EXPECT_THAT(workstation.take_failures(), testing::ElementsAre(tells("not duplicated")));
}

} // namespace
} // namespace headless::test
