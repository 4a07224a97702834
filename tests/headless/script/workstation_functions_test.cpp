// Functions of the workstation that scripts alone use, by what scripts may rely on.

#include "tests/headless/script/script_fixture.hpp"
#include "tests/headless/support/failures.hpp"

#include <filesystem>

namespace headless::test {
namespace {

struct WorkstationFunctions : ScriptTest {
    void expect_runs(const std::string& text) {
        const script::ScriptOutcome outcome = run("local track = reaper.GetTrack(0, 0) "
                                                  "local item = reaper.GetTrackMediaItem(track, 0) "
                                                  "local take = reaper.GetActiveTake(item)\n" +
                                                  text);
        EXPECT_EQ(outcome.error, "");
    }
};

TEST_F(WorkstationFunctions, ListFilesAndFoldersByName) {
    std::filesystem::create_directories(folder / "in/b.wav");
    for (const char* file : {"c.wav", "a.wav"})
        write_bytes(folder / "in" / file, "");
    expect_runs(R"(
        assert(reaper.EnumerateFiles("in", 1) == "c.wav")
        assert(reaper.EnumerateFiles("in", 0) == "a.wav")
        assert(reaper.EnumerateFiles("in", 2) == nil)
        assert(reaper.EnumerateFiles("none", 0) == nil)
        assert(reaper.EnumerateSubdirectories("in", 0) == "b.wav")
        assert(reaper.RecursiveCreateDirectory("in/d/e", 0) == 1)
        assert(reaper.EnumerateSubdirectories("in", 0) == "b.wav")
        assert(reaper.EnumerateSubdirectories("in", 1) == "d")
        assert(reaper.RecursiveCreateDirectory("in/a.wav/e", 0) == 0))");
}

TEST_F(WorkstationFunctions, KeepExtensionStates) {
    expect_runs(R"(
        assert(reaper.GetExtState("a", "b") == "")
        assert(not reaper.HasExtState("a", "b"))
        reaper.SetExtState("a", "b", "one", false)
        reaper.SetExtState("a", "c", "", true)
        assert(reaper.GetExtState("a", "b") == "one")
        assert(reaper.HasExtState("a", "c"))
        reaper.DeleteExtState("a", "b", true)
        assert(not reaper.HasExtState("a", "b"))
        assert(not reaper.HasExtState("b", "c"))
        assert(reaper.APIExists("GetTrack"))
        assert(not reaper.APIExists("NoSuchFunction")))");
}

TEST_F(WorkstationFunctions, ReadAndWriteItemsTakesAndSources) {
    expect_runs(R"(
        assert(reaper.SetMediaItemPosition(item, 2.5, true))
        assert(reaper.SetMediaItemLength(item, 0.25, false))
        assert(reaper.GetMediaItemInfo_Value(item, "D_POSITION") == 2.5)
        assert(not reaper.SetMediaItemPosition(item, 0/0, true))
        reaper.SetMediaItemSelected(item, true)
        assert(reaper.IsMediaItemSelected(item))
        assert(reaper.GetMediaItemTake(item, -1) == take)
        for key, value in pairs {D_VOL = 0.5, D_PAN = -1, D_STARTOFFS = 0.125, D_PITCH = 2, B_PPITCH = 0, I_CHANMODE = 3} do
            assert(reaper.SetMediaItemTakeInfo_Value(take, key, value))
            assert(reaper.GetMediaItemTakeInfo_Value(take, key) == value, key)
        end
        reaper.SetMediaItemTakeInfo_Value(take, "D_PLAYRATE", 0)
        assert(reaper.GetMediaItemTakeInfo_Value(take, "D_PLAYRATE") == 1)
        local source = reaper.GetMediaItemTake_Source(take)
        local length, is_in_quarter_notes = reaper.GetMediaSourceLength(source)
        assert(length == 0.5)
        assert(not is_in_quarter_notes))");
}

TEST_F(WorkstationFunctions, ReadSamplesAndMakeSources) {
    expect_runs(R"(
        local accessor = reaper.CreateTakeAudioAccessor(take)
        local samples = reaper.new_array(4)
        assert(reaper.GetAudioAccessorEndTime(accessor) == 0.5)
        assert(reaper.GetAudioAccessorSamples(accessor, 8000, 2, 0, 2, samples) == 1)
        assert(samples[1] == 0 and samples[3] > 0.3 and samples[4] == samples[3])
        assert(reaper.GetAudioAccessorSamples(accessor, 8000, 2, 0, 3, samples) == -1)
        reaper.DestroyAudioAccessor(accessor)
        assert(not pcall(reaper.GetAudioAccessorEndTime, accessor))
        assert(reaper.BR_SetMediaSourceProperties(take, true, 0.125, 0.25, 0.01, true))
        local ok, is_section, start, length, fade, is_reversed = reaper.BR_GetMediaSourceProperties(take)
        assert(ok and is_section and start == 0.125 and length == 0.25 and fade == 0.01 and is_reversed)
        local parent = reaper.GetMediaSourceParent(reaper.GetMediaItemTake_Source(take))
        assert(reaper.GetMediaSourceFileName(parent):match("line.wav$"))
        assert(reaper.PCM_Source_CreateFromFile("missing.wav") == nil)
        assert(reaper.SetMediaItemTake_Source(take, reaper.PCM_Source_CreateFromFile("line.wav")))
        local measured, lufs = reaper.NF_AnalyzeTakeLoudness_IntegratedOnly(take)
        assert(measured and lufs < 0)
        assert(reaper.NF_GetMediaItemMaxPeak(item) < -6))");
    EXPECT_THAT(workstation.take_failures(),
                testing::ElementsAre(tells("room for 4 values, not for 2 times 3")));
}

TEST_F(WorkstationFunctions, ReportUnknownKeysOnce) {
    project.track(0)->add_item(9.0, 1.0);
    expect_runs(R"(
        assert(reaper.GetMediaTrackInfo_Value(track, "IP_TRACKNUMBER") == 1)
        assert(reaper.GetMediaTrackInfo_Value(reaper.GetMasterTrack(0), "IP_TRACKNUMBER") == -1)
        assert(reaper.GetMediaItemInfo_Value(reaper.GetTrackMediaItem(track, 1), "IP_ITEMNUMBER") == 1)
        assert(reaper.GetMediaItemTakeInfo_Value(take, "P_ITEM") == item)
        assert(reaper.GetMediaItemTakeInfo_Value(take, "IP_TAKENUMBER") == 0)
        assert(not reaper.SetMediaItemTakeInfo_Value(take, "IP_TAKENUMBER", 1))
        local is_known, text = reaper.GetSetMediaTrackInfo_String(track, "P_RAZOREDITS", "x", false)
        assert(is_known and text == "")
        for _ = 1, 2 do
            assert(reaper.GetMediaTrackInfo_Value(track, "I_NCHAN") == 0)
            assert(reaper.GetMediaTrackInfo_Value(track, "B_PHASE") == 0)
            assert(not reaper.SetMediaItemTakeInfo_Value(take, "I_NCHAN", 1))
            assert(not reaper.GetSetMediaTrackInfo_String(track, "GUID", "", false))
        end)");
    EXPECT_THAT(workstation.take_failures(),
                testing::ElementsAre(
                    tells("GetMediaTrackInfo_Value: the key \"I_NCHAN\" is not known"), tells("B_PHASE"),
                    tells("SetMediaItemTakeInfo_Value: the key \"I_NCHAN\""), tells("GUID")));
}

TEST_F(WorkstationFunctions, AddChangeAndDeleteMarkers) {
    expect_runs(R"(
        assert(reaper.AddProjectMarker2(0, true, 1, 2, "region", 5, 0x1000012) == 5)
        assert(reaper.AddProjectMarker2(0, false, 0.5, 0, "marker", 5, 0) == 5)
        assert(reaper.AddProjectMarker2(0, false, 1/0, 0, "never", -1, 0) == -1)
        assert(reaper.SetProjectMarker(5, true, 3, 4, "moved"))
        assert(not reaper.SetProjectMarker(6, true, 3, 4, "missing"))
        local shown = {}
        for i, value in ipairs {reaper.EnumProjectMarkers3(0, 1)} do shown[i] = tostring(value) end
        assert(table.concat(shown, " ") == "2 true 3.0 4.0 moved 5 16777234")
        assert(not reaper.DeleteProjectMarker(0, 6, true))
        assert(reaper.DeleteProjectMarker(0, 5, true))
        assert(not reaper.DeleteProjectMarkerByIndex(0, 1))
        assert(not reaper.DeleteProjectMarkerByIndex(0, -1))
        assert(reaper.DeleteProjectMarkerByIndex(0, 0))
        assert(reaper.CountProjectMarkers(0) == 0))");
}

} // namespace
} // namespace headless::test
