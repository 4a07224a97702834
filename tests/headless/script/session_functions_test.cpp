// Functions about screen, commands, preferences, programs and changes, by what scripts may rely on.

#include "headless/rpp/rpp.hpp"
#include "tests/headless/script/script_fixture.hpp"
#include "tests/headless/support/failures.hpp"

namespace headless::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct SessionFunctions : ScriptTest {
    /// `expect(wanted, ...)` compares what a call returns with a text.
    void expect_runs(const std::string& text) {
        const script::ScriptOutcome outcome = run(R"(
            local track = reaper.GetTrack(0, 0)
            local item = reaper.GetTrackMediaItem(track, 0)
            local function expect(wanted, ...)
                local shown = {}
                for i = 1, select("#", ...) do shown[i] = tostring((select(i, ...))) end
                local got = table.concat(shown, " ")
                if got ~= wanted then error(got .. " instead of " .. wanted, 2) end
            end
        )" + text);
        EXPECT_EQ(outcome.error, "");
    }
};

TEST_F(SessionFunctions, AnswerForAClosedWindow) {
    expect_runs(R"(
        expect("0 0", reaper.GetMousePosition())
        expect("nil 0", reaper.GetTrackFromPoint(10, 10))
        expect("nil ", reaper.GetThingFromPoint(10, 10))
        expect("nil nil", reaper.GetItemFromPoint(10, 10, true))
        expect("unknown  ", reaper.BR_GetMouseCursorContext())
        expect("nil", reaper.BR_GetMouseCursorContext_Item())
        expect("-1.0", reaper.BR_PositionAtMouseCursor(true))
        expect("nil -1 -1.0", reaper.BR_TrackAtMouseCursor())
        expect("nil -1.0", reaper.BR_ItemAtMouseCursor())
        expect("0 0", reaper.GR_SelectColor())
        expect("0 0", reaper.GR_SelectColor(nil, 255))
        expect("", reaper.UpdateItemInProject(item))
        expect("false ", reaper.GetMIDIOutputName(0, ""))
        expect("nil", reaper.MIDIEditor_GetTake(reaper.MIDIEditor_GetActive()))
        expect("0 0 0 0", reaper.GetFocusedFX())
        expect("false 0 0 0 0 0", reaper.GetTouchedOrFocusedFX(0)))");
    EXPECT_THAT(workstation.take_failures(), IsEmpty());
}

TEST_F(SessionFunctions, KeepWhatScriptsSetOnTheScreen) {
    expect_runs(R"(
        expect("1", reaper.GetCursorContext())
        reaper.SetCursorContext(0, nil)
        reaper.SetCursorContext(7)
        expect("0", reaper.GetCursorContext2(true))
        reaper.InsertTrackAtIndex(1, false)
        local second = reaper.GetTrack(0, 1)
        expect(tostring(track), reaper.GetMixerScroll())
        expect(tostring(second), reaper.SetMixerScroll(second))
        reaper.DeleteTrack(second)
        expect(tostring(track), reaper.GetMixerScroll())
        local _, _, section, id = reaper.get_action_context()
        expect("-1", reaper.GetToggleCommandStateEx(section, id))
        expect("true", reaper.SetToggleCommandState(section, id, 1))
        reaper.RefreshToolbar2(section, id)
        expect("1", reaper.GetToggleCommandState(id))
        expect("-1", reaper.GetToggleCommandStateEx(section + 1, id))
        for _ = 1, 2 do expect("-1", reaper.GetToggleCommandState(1157)) end)");
    EXPECT_THAT(workstation.take_failures(), ElementsAre(tells("state of command 1157")));
}

TEST_F(SessionFunctions, FindCommandsByName) {
    expect_runs(R"(
        local id = reaper.NamedCommandLookup("_S&M_TAKEENV2")
        assert(id > 0)
        expect("S&M_TAKEENV2", reaper.ReverseNamedCommandLookup(id))
        expect("0", reaper.NamedCommandLookup("_NO_SUCH_COMMAND"))
        expect("40131", reaper.NamedCommandLookup("40131"))
        expect("nil", reaper.ReverseNamedCommandLookup(40131))
        local found, i = {}, 0
        while true do
            local command, title = reaper.CF_EnumerateActions(0, i, "")
            if command == 0 then break end
            found[command], i = title, i + 1
            expect(command .. " " .. title, reaper.kbd_enumerateActions(0, i - 1))
        end
        expect("SWS/S&M: Show take pan envelope", found[id])
        expect("0 ", reaper.CF_EnumerateActions(32060, 0, ""))
        expect("0 ", reaper.CF_EnumerateActions(0, -1, ""))

        reaper.SetMediaItemSelected(item, true)
        for _ = 1, 2 do reaper.Main_OnCommand(id, 0) end
        local take = reaper.GetActiveTake(item)
        assert(reaper.GetTakeEnvelopeByName(take, "Pan"))
        assert(not reaper.GetTakeEnvelopeByName(take, "Volume"))

        local function command(name) reaper.Main_OnCommand(reaper.NamedCommandLookup(name), 0) end
        reaper.InsertTrackAtIndex(1, false)
        reaper.SetOnlyTrackSelected(track)
        command("_SWS_SAVESEL")
        reaper.SetOnlyTrackSelected(reaper.GetTrack(0, 1))
        command("_SWS_RESTORESEL")
        expect("1", reaper.CountSelectedTracks(0))
        expect("true", reaper.IsTrackSelected(track)))");
    const auto* envelope = project.item(0)->active_take()->envelope("Pan");
    ASSERT_NE(envelope, nullptr);
    ASSERT_EQ(envelope->points().size(), 1U);
    EXPECT_EQ(envelope->points()[0].value, 0.0);
    EXPECT_TRUE(envelope->properties.visible);
    EXPECT_THAT(workstation.take_failures(), IsEmpty());
    expect_runs("reaper.Main_OnCommand(reaper.NamedCommandLookup('_NO_SUCH_COMMAND'), 0)");
    EXPECT_THAT(workstation.take_failures(), ElementsAre(tells("command _NO_SUCH_COMMAND is not known")));
}

TEST_F(SessionFunctions, ReadAndWritePreferences) {
    expect_runs(R"(
        expect("0", reaper.SNM_GetIntConfigVar("undomask", -7))
        expect("true", reaper.SNM_SetIntConfigVar("undomask", 3))
        expect("true 3", reaper.get_config_var_string("undomask"))
        expect("true", reaper.SNM_SetDoubleConfigVar("undomask", 2.5))
        expect("2.5", reaper.SNM_GetDoubleConfigVar("undomask", 0))
        expect("-7", reaper.SNM_GetIntConfigVar("nosuchthing", -7))
        assert(reaper.get_ini_file():match("/reaper%.ini$"))

        expect("true", reaper.BR_Win32_WritePrivateProfileString("Main", "key", "one", "a.ini"))
        expect("true", reaper.BR_Win32_WritePrivateProfileString("main", "KEY", "three", "a.ini"))
        expect("5 three", reaper.BR_Win32_GetPrivateProfileString("MAIN", "key", "none", "a.ini"))
        expect("4 none", reaper.BR_Win32_GetPrivateProfileString("MAIN", "other", "none", "a.ini"))
        expect("false", reaper.BR_Win32_WritePrivateProfileString("m", "k", "v", "no/such/folder/a.ini")))");
    EXPECT_THAT(
        workstation.take_failures(),
        ElementsAre(tells("SNM_GetIntConfigVar: the key \"nosuchthing\" is not known"), tells("no/such")));
}

TEST_F(SessionFunctions, TalkToTheSystem) {
    workstation.dialog_answers.add("Open", "/some/file.wav");
    workstation.dialog_answers.add("Where", "/some");
    expect_runs(R"(
        expect("0\na b c\n", reaper.ExecProcess("echo 'a b'  \"c\"", 0))
        expect("3\n", reaper.ExecProcess("sh -c 'exit 3'", 60000))
        expect("nil", reaper.ExecProcess("felspar-no-such-program", 0))
        expect("nil", reaper.ExecProcess("sleep 1000", 1))
        expect("", reaper.ExecProcess("true", -1))
        expect("nil", reaper.ExecProcess("", -2))
        reaper.CF_SetClipboard("kept")
        expect("kept", reaper.CF_GetClipboard(""))
        expect("false", reaper.CF_ShellExecute("https://example.org"))
        expect("Volume", reaper.LocalizeString("Volume", "envname", 0))
        expect("false ", reaper.GetAudioDeviceInfo("SRATE", ""))
        expect("true /some/file.wav", reaper.GetUserFileNameForRead("", "Open", "wav"))
        expect("false start", reaper.GetUserFileNameForRead("start", "Unanswered", ""))
        expect("1 /some", reaper.JS_Dialog_BrowseForFolder("Where", ""))
        expect("0 ", reaper.JS_Dialog_BrowseForFolder("Unanswered", "")))");
}

TEST_F(SessionFunctions, ConvertIdentifiersAndTexts) {
    expect_runs(R"(
        local guid = reaper.genGuid("")
        assert(guid:match("^{%x%x%x%x%x%x%x%x%-%x%x%x%x%-4%x%x%x%-[89AB]%x%x%x%-%x%x%x%x%x%x%x%x%x%x%x%x}$"), guid)
        assert(guid ~= reaper.genGuid(), "a new one each time")
        expect(guid, reaper.stringToGuid(guid, ""))
        expect(guid, reaper.guidToString(guid:lower(), ""))
        expect("{00000000-0000-0000-0000-000000000000}", reaper.stringToGuid("none", ""))

        local text = reaper.SNM_CreateFastString("one")
        expect(tostring(text), reaper.SNM_SetFastString(text, ("x"):rep(3000000)))
        expect("3000000", reaper.SNM_GetFastStringLength(text))
        expect("3000000", #reaper.SNM_GetFastString(text))
        reaper.SNM_DeleteFastString(text)
        assert(not pcall(reaper.SNM_GetFastString, text)))");
    char text[64] = "";
    std::array<unsigned char, 16> bytes{};
    workstation.function_as<void(const char*, void*)>("stringToGuid")(
        "{01234567-89AB-CDEF-0123-456789ABCDEF}", bytes.data());
    EXPECT_EQ(bytes[0], 0x67);
    EXPECT_EQ(bytes[8], 0x01);
    workstation.function_as<void(const void*, char*)>("guidToString")(bytes.data(), text);
    EXPECT_STREQ(text, "{01234567-89AB-CDEF-0123-456789ABCDEF}");
    project::Track& track = *project.track(0);
    const void* guid = workstation.function_as<void*(MediaTrack*)>("GetTrackGUID")(workstation.handle(track));
    workstation.function_as<void(const void*, char*)>("guidToString")(guid, text);
    EXPECT_EQ(text, chunk::text_of(track.id));
}

TEST_F(SessionFunctions, ChangeThePlayState) {
    expect_runs(R"(
        local function state(wanted) expect(wanted, reaper.GetPlayState()) expect(wanted, reaper.GetPlayStateEx(0)) end
        reaper.SetEditCurPos(1.5, false, false)
        state("0")
        expect("1.5", reaper.GetPlayPosition())
        reaper.OnPauseButton() state("0")
        reaper.OnPlayButton() state("1")
        reaper.SetEditCurPos(2.5, false, false)
        expect("1.5", reaper.GetPlayPosition())
        reaper.OnPauseButtonEx(0) state("2")
        reaper.CSurf_OnPlay() state("1")
        reaper.CSurf_OnStop() state("0")
        expect("2.5", reaper.GetPlayPosition2())
        reaper.CSurf_OnRecord() state("5")
        reaper.CSurf_OnPause() state("6")
        reaper.CSurf_OnRecord() state("0"))");
}

TEST_F(SessionFunctions, KnowWhetherTheProjectHasChanged) {
    project.file = folder / "project.rpp";
    ASSERT_TRUE(rpp::save_project(project, project.file));
    const char* is_dirty = "expect('1', reaper.IsProjectDirty(0))";
    const char* is_clean = "expect('0', reaper.IsProjectDirty(0))";
    expect_runs(R"(
        local count = reaper.GetProjectStateChangeCount(0)
        reaper.GetTrackName(track)
        expect("true", reaper.GetProjectStateChangeCount(0) == count)
        reaper.SetMediaItemInfo_Value(item, "D_POSITION", 3)
        expect("false", reaper.GetProjectStateChangeCount(0) == count)
        reaper.Undo_OnStateChangeEx("moved", -1, -1)
        expect("nil", reaper.Undo_CanUndo2(0)))");
    EXPECT_THAT(workstation.take_failures(), IsEmpty());
    expect_runs(is_dirty);
    expect_runs("reaper.Main_SaveProject(0, false) expect('0', reaper.Undo_DoUndo2(0))");
    EXPECT_THAT(workstation.take_failures(), ElementsAre(tells("cannot be saved"), tells("undone")));
    workstation.save_project = [&] { return rpp::save_project(project, project.file); };
    expect_runs("reaper.Main_SaveProject(0)");
    expect_runs(is_clean);
    expect_runs("reaper.MarkProjectDirty(0)");
    expect_runs(is_dirty);
    expect_runs("reaper.Main_SaveProject(-1, true)");
    expect_runs(is_clean);
}

TEST_F(SessionFunctions, KeepTextsInTheProject) {
    expect_runs(R"(
        expect("0 ", reaper.GetProjExtState(0, "My Script", "key"))
        expect("6", reaper.SetProjExtState(0, "My Script", "key", "one"))
        expect("12", reaper.SetProjExtState(0, "my script", "Two", "2\n3"))
        expect("1 one", reaper.GetProjExtState(0, "MY SCRIPT", "KEY"))
        reaper.SetProjExtState(0, "My Script", "KEY", "new")
        expect("true KEY new", reaper.EnumProjExtState(0, "My Script", 0))
        expect("true TWO 2\n3", reaper.EnumProjExtState(0, "My Script", 1))
        expect("false  ", reaper.EnumProjExtState(0, "My Script", 2))
        expect("false  ", reaper.EnumProjExtState(0, "My Script", -1))
        expect("6", reaper.SetProjExtState(0, "My Script", "key", ""))
        expect("0 ", reaper.GetProjExtState(0, "My Script", "key"))
        reaper.SetProjExtState(0, "Other", "a", "b")
        expect("0", reaper.SetProjExtState(0, "My Script", "", ""))
        expect("1 b", reaper.GetProjExtState(0, "Other", "a")))");
    ASSERT_EQ(project.extension_data.sections().size(), 1U);
    EXPECT_EQ(project.extension_data.sections()[0].name, "OTHER");
}

TEST_F(SessionFunctions, ReportAScriptsOwnErrors) {
    EXPECT_EQ(run("reaper.ReaScriptError('odd') done = true").status, 0);
    EXPECT_THAT(workstation.take_failures(), ElementsAre(tells("odd")));
    const auto ended = run("reaper.ReaScriptError('!over') os.exit(0)");
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.error, testing::HasSubstr("script.lua:1: over\n"));
    EXPECT_THAT(workstation.take_failures(), IsEmpty());
}

} // namespace
} // namespace headless::test
