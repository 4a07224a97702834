// What scripts do to items and takes, and which lines of the project file that changes.

#include "tests/headless/script/item_fixture.hpp"

#include <array>

namespace headless::test {
namespace {

TEST_F(ItemScripts, KeysOfItemsReadTheirLines) {
    EXPECT_EQ(changes(R"(
        local function key(item, name) return r.GetMediaItemInfo_Value(item, name) end
        for name, value in pairs{D_FADEINLEN = 0.5, D_FADEINLEN_AUTO = 0, D_FADEOUTLEN_AUTO = 0.1,
                                 C_FADEOUTSHAPE = 1, D_FADEINDIR = 0.2, B_MUTE = 0, C_MUTE_SOLO = -1, I_GROUPID = 3,
                                 C_LOCK = 0, C_BEATATTACHMODE = -1, I_CUSTOMCOLOR = 0, I_CURTAKE = 3, D_PLAYRATE = 0,
                                 F_FREEMODE_H = 1} do
            equal({value}, key(one, name))
        end
        equal({3, 0}, key(old, "C_FADEOUTSHAPE"), key(old, "I_GROUPID"))
        equal({0x1302010, 0x1302010}, key(two, "I_CUSTOMCOLOR"), r.GetDisplayedMediaItemColor(two))
        assert(r.SetMediaItemInfo_Value(two, "I_CUSTOMCOLOR", 0x1302010))
        equal({2, -1, 0.0025}, r.GetMediaItemTakeInfo_Value(take, "D_PLAYRATE"),
              r.GetMediaItemTakeInfo_Value(take, "D_PANLAW"), r.GetMediaItemTakeInfo_Value(take, "F_STRETCHFADESIZE"))
        assert(r.SetMediaItemInfo_Value(one, "D_PLAYRATE", 3) == false)
        for _, item in ipairs{one, old, two} do
            for _, name in ipairs{"D_POSITION", "D_FADEINLEN", "C_FADEINSHAPE", "I_GROUPID", "D_VOL", "C_LOCK"} do
                assert(r.SetMediaItemInfo_Value(item, name, key(item, name)))
            end
        end
    )"),
              "");
    EXPECT_TRUE(workstation.take_failures().empty());
    changes(R"(r.GetMediaItemInfo_Value(one, "D_NOTHING"))");
    EXPECT_EQ(workstation.take_failures().size(), 1U) << "a key that is not known";
}

TEST_F(ItemScripts, KeysChangeTheirFieldsOnly) {
    EXPECT_EQ(changes(R"(
        local function set(item, name, value) assert(r.SetMediaItemInfo_Value(item, name, value)) end
        set(one, "D_FADEOUTLEN", -1)
        set(one, "C_FADEOUTSHAPE", 5.9)
        set(one, "D_FADEINDIR", -3)
        set(old, "C_FADEINSHAPE", 9)
        set(old, "D_FADEINLEN_AUTO", 0.5)
        set(one, "B_MUTE", 1)
        set(two, "I_CUSTOMCOLOR", 0x1010203)
        set(two, "C_LOCK", 1)
        r.SetMediaItemTakeInfo_Value(take, "D_PANLAW", 0.5)
        r.SetMediaItemTakeInfo_Value(take, "I_PITCHMODE", 65536)
        r.SetMediaItemTakeInfo_Value(take, "I_CUSTOMCOLOR", 0x1000000)
    )"),
              R"(-FADEIN 1 0.5 0 1 0 0.2 0.2
-FADEOUT 1.1 0.25 0.1 1 1 0 0
-MUTE 0 -1
+FADEIN 1 0.5 0 1 0 -1 -1
+FADEOUT 5.1 0 0.1 5 1 0 0
+MUTE 1 0
-TAKEVOLPAN 0.00 1.000 -1
+TAKEVOLPAN 0.00 1.000 0.5
-PLAYRATE 2 1 0 -1 0 0.0025
+PLAYRATE 2 1 0 65536 0 0.0025
+TAKECOLOR 16777216 R
-FADEIN 0 0.01 0
+FADEIN 6 0.01 0.5
-COLOR 17834032 B
+COLOR 16843267 R
+LOCK 1
)");
}

TEST_F(ItemScripts, TextsStandWithTheirObjects) {
    EXPECT_EQ(changes(R"(
        equal({true, "one > two\n>"}, r.GetSetMediaItemInfo_String(one, "P_NOTES", "", false))
        equal({"one > two\n>", ""}, r.ULT_GetMediaItemNote(one), r.ULT_GetMediaItemNote(two))
        r.ULT_SetMediaItemNote(one, "<ITEM\r\n\r\n>")
        r.GetSetMediaItemInfo_String(two, "P_NOTES", "new", true)
        equal({false, ""}, r.GetSetMediaItemInfo_String(two, "P_EXT:a key", "", false))
        r.GetSetMediaItemInfo_String(two, "P_EXT:a key", 'say "no"', true)
        equal({true, 'say "no"'}, r.GetSetMediaItemInfo_String(two, "P_EXT:a key", "", false))
        r.GetSetMediaItemTakeInfo_String(take, "P_EXT:gone", "x", true)
        r.GetSetMediaItemTakeInfo_String(take, "P_EXT:gone", "", true)
        r.GetSetMediaItemTakeInfo_String(take, "P_NAME", "Room", true)
        equal({"{B0000000-0000-4000-8000-000000000001}"}, r.BR_GetMediaItemGUID(one))
        assert(r.BR_GetMediaItemByGUID(0, "{b0000000-0000-4000-8000-000000000003}") == two)
        assert(r.BR_GetMediaItemByGUID(0, r.BR_GetMediaItemGUID(old)) == old)
        assert(r.BR_GetMediaItemByGUID(0, "{00000000-0000-0000-0000-000000000000}") == nil)
        assert(r.GetMediaItemTakeByGUID(0, r.BR_GetMediaItemTakeGUID(midi)) == midi)
        assert(r.GetSetMediaItemInfo_String(two, "GUID", "none", true) == false)
        r.GetSetMediaItemInfo_String(two, "GUID", "{b0000000-0000-4000-8000-00000000000F}", true)
    )"),
              R"(-|one > two
+|<ITEM
+|
-NAME "line 1"
+NAME "Room"
-IGUID {B0000000-0000-4000-8000-000000000003}
+IGUID {B0000000-0000-4000-8000-00000000000F}
+<NOTES
+|new
+<EXT
+"a key" 'say "no"'
+>
+>
)");
    EXPECT_TRUE(workstation.take_failures().empty());
    changes(R"(assert(r.GetSetMediaItemInfo_String(two, "P_EXT:key", "two\nlines", true) == false))");
    EXPECT_EQ(workstation.take_failures().size(), 1U) << "a text that no line can hold";
}

TEST_F(ItemScripts, EmptyTakesAreCountedButNotFound) {
    EXPECT_EQ(changes(R"(
        equal({4}, r.CountTakes(one))
        assert(r.GetTake(one, 0) == nil and r.GetMediaItemTake(one, 2) == nil)
        assert(r.GetActiveTake(one) == midi)
        r.SetMediaItemInfo_Value(one, "I_CURTAKE", 2)
        assert(r.GetActiveTake(one) == nil and r.GetMediaItemTake(one, -1) == nil)
        command(40289)
        r.SetMediaItemSelected(one, true)
        command(40693)
        command(40289)
        r.SetMediaItemSelected(old, true)
    )"),
              "-TAKE NULL\n-TAKE SEL\n+TAKE NULL SEL\n+TAKE\n");
}

TEST_F(ItemScripts, ASplitCutsAllThatRunsThroughIt) {
    EXPECT_EQ(changes(R"(
        assert(r.SplitMediaItem(one, 2) == nil and r.SplitMediaItem(one, 6) == nil)
        local right = r.SplitMediaItem(one, 3)
        equal({2, 1, 3, 3}, r.GetMediaItemInfo_Value(one, "D_POSITION"), r.GetMediaItemInfo_Value(one, "D_LENGTH"),
              r.GetMediaItemInfo_Value(right, "D_POSITION"), r.GetMediaItemInfo_Value(right, "D_LENGTH"))
        assert(r.GetTake(one, 1) == take and r.GetMediaItem(0, 1) == right)
    )"),
              R"(-LENGTH 4
+LENGTH 1
-FADEOUT 1.1 0.25 0.1 1 1 0 0
+FADEOUT 1.1 0 0 1 1 0 0
-TKM 6 "late one" 0 0.25
-PT 8 0 0
+PT 2 0.75 0
-SM 0 1 0 1 + 4 6 0.5 + 8 9
+SM 0 1 0 1 + 2 3.5
+POSITION 3
+SNAPOFFS 0
+LENGTH 3
+LOOP 0
+ALLTAKES 0
+FADEIN 1 0 0 1 0 0.2 0.2
+FADEOUT 1.1 0.25 0.1 1 1 0 0
+MUTE 0 -1
+SEL 0
+GROUP 3
+IGUID {FE15BA40-0000-4000-8000-000000000001}
+IID 7
+<NOTES
+|one > two
+|>
+>
+UNKNOWN 1  2   "3"
+TAKE
+NAME "line 1"
+TAKEVOLPAN 0.00 1.000 -1
+SOFFS 3
+PLAYRATE 2 1 0 -1 0 0.0025
+CHANMODE 0
+GUID {FE15BA40-0000-4000-8000-000000000002}
+TKM 6 "late one" 0 0.25
+<SOURCE SECTION
+LENGTH 9
+STARTPOS 1
+OVERLAP 0.01
+<SOURCE WAVE
+FILE "a.wav"
+>
+>
+<TAKEFX
+BYPASS 0 0 0
+FXID {FE15BA40-0000-4000-8000-000000000004}
+>
+<VOLENV
+EGUID {FE15BA40-0000-4000-8000-000000000003}
+ACT 1 -1
+PT 0 0.75 0
+PT 6 0 0
+>
+SM 0 3.5 + 2 6 0.5 + 6 9
+TAKE NULL
+TAKE SEL
+NAME notes
+TAKEVOLPAN 0 1 -1
+SOFFS 1.5 3
+PLAYRATE 1 1 0 -1 0 0.0025
+CHANMODE 0
+GUID {FE15BA40-0000-4000-8000-000000000005}
+<SOURCE MIDI
+HASDATA 1 960 QN
+POOLEDEVTS {D0000000-0000-4000-8000-000000000003}
+E 1920 b0 7b 00
+>
+>
+<ITEM
)");
}

TEST_F(ItemScripts, StretchMarkersStayInOrder) {
    EXPECT_EQ(changes(R"(
        equal({3}, r.GetTakeNumStretchMarkers(take))
        equal({1, 4, 6}, r.GetTakeStretchMarker(take, 1))
        equal({-1}, r.GetTakeStretchMarker(take, 3))
        equal({1}, r.SetTakeStretchMarker(take, -1, 2))
        equal({1, 2, 3.5}, r.GetTakeStretchMarker(take, 1))
        equal({-1}, r.SetTakeStretchMarker(take, -1, 2))
        equal({2}, r.SetTakeStretchMarker(take, 2, 1, 99))
        equal({2, 2, 9}, r.GetTakeStretchMarker(take, 2))
        assert(r.SetTakeStretchMarkerSlope(take, 1, 2) and not r.SetTakeStretchMarkerSlope(take, 3, 0.5))
        equal({1, 0.5}, r.GetTakeStretchMarkerSlope(take, 1), r.GetTakeStretchMarkerSlope(take, 2))
        equal({1, 2, 0}, r.DeleteTakeStretchMarkers(take, 0), r.DeleteTakeStretchMarkers(take, 1, 9),
              r.DeleteTakeStretchMarkers(take, 7))
        equal({0}, r.SetTakeStretchMarker(midi, -1, 0.25))
    )"),
              R"(-SM 0 1 0 1 + 4 6 0.5 + 8 9
+SM 2 3.5 1
+SM 0.25 0.75
)");
}

TEST_F(ItemScripts, ACutStretchKeepsItsRates) {
    // From 4 to 8 the rate rises from 0.375 to 1.125.
    changes(R"(
        local right = r.SplitMediaItem(one, 5)
        local after = r.GetTake(right, 1)
        local function near(wanted, found) assert(math.abs(wanted - found) < 1e-12, found) end
        local _, position, source = r.GetTakeStretchMarker(take, 2)
        near(6, position)
        near(6 + 2 * (0.375 + 0.75) / 2, source)
        near((0.75 - 0.375) / (0.75 + 0.375), r.GetTakeStretchMarkerSlope(take, 1))
        _, position, source = r.GetTakeStretchMarker(after, 0)
        near(0, position)
        near(7.125, source)
        near((1.125 - 0.75) / (1.125 + 0.75), r.GetTakeStretchMarkerSlope(after, 0))
    )");
}

TEST_F(ItemScripts, TakeMarkersAreLinesInOrder) {
    EXPECT_EQ(changes(R"(
        equal({2}, r.GetNumTakeMarkers(take))
        equal({6, "late one", 0}, r.GetTakeMarker(take, 1))
        equal({-1}, r.GetTakeMarker(take, 2))
        equal({1}, r.SetTakeMarker(take, -1, "new", 3, 0x1000001))
        equal({2}, r.SetTakeMarker(take, 0, "early", 7))
        equal({1}, r.SetTakeMarker(take, 1, "late", nil, nil))
        equal({-1}, r.SetTakeMarker(take, 9, "none"))
        assert(r.DeleteTakeMarker(take, 0) and not r.DeleteTakeMarker(take, 2))
        equal({0}, r.SetTakeMarker(midi, -1, ""))
    )"),
              R"(-TKM 1.50 early 0
-TKM 6 "late one" 0 0.25
+TKM 6 late 0 0.25
+TKM 7 early 0
+TKM 0.5 "" 0
)");
}

TEST_F(ItemScripts, EdgesMoveOverWhatAnItemPlays) {
    EXPECT_EQ(changes(R"(
        assert(not r.BR_SetItemEdges(one, 2, 6) and not r.BR_SetItemEdges(one, 5, 5))
        assert(r.BR_SetItemEdges(one, 2.25, 7))
    )"),
              R"(-POSITION 2.00000000000000
-SNAPOFFS 0.5
-LENGTH 4
+POSITION 2.25
+SNAPOFFS 0.25
+LENGTH 4.75
-SOFFS 1
+SOFFS 1.5
-PT 0 1 0
-PT 8 0 0
+PT -0.5 1 0
+PT 7.5 0 0
-SM 0 1 0 1 + 4 6 0.5 + 8 9
+SM -0.5 1 0 1 + 3.5 6 0.5 + 7.5 9
-SOFFS 0.5 1
+SOFFS 0.75 1.5
)");
}

TEST_F(ItemScripts, ItemsMoveToOtherTracksWhole) {
    EXPECT_EQ(changes(R"(
        assert(not r.MoveMediaItemToTrack(old, first))
        assert(r.MoveMediaItemToTrack(old, second) and r.MoveMediaItemToTrack(one, second))
        equal({0, 3, 3}, r.CountTrackMediaItems(first), r.CountTrackMediaItems(second), r.CountMediaItems(0))
        assert(r.GetSelectedMediaItem(0, 0) == old and r.GetMediaItemTrack(old) == second)
        equal({0, 1, 2}, r.GetMediaItemInfo_Value(one, "IP_ITEMNUMBER"), r.GetMediaItemInfo_Value(two, "IP_ITEMNUMBER"),
              r.GetMediaItemInfo_Value(old, "IP_ITEMNUMBER"))
        assert(r.GetMediaItem(0, 1) == two)
        assert(r.MoveMediaItemToTrack(one, first) and r.MoveMediaItemToTrack(old, first))
    )"),
              "");
    EXPECT_EQ(changes(R"(
        r.MoveMediaItemToTrack(two, first)
        assert(r.DeleteTrackMediaItem(first, two) and not r.DeleteTrackMediaItem(second, old))
    )"),
              R"(-<ITEM
-POSITION 4
-LENGTH 1
-SEL 0
-GROUP 3
-COLOR 17834032 B
-IGUID {B0000000-0000-4000-8000-000000000003}
->
)");
}

TEST_F(ItemScripts, NewItemsHaveStandardLines) {
    EXPECT_EQ(changes(R"(
        local item = r.AddMediaItemToTrack(second)
        equal({0, 0, 0}, r.GetMediaItemInfo_Value(item, "D_LENGTH"), r.CountTakes(item),
              r.GetMediaItemInfo_Value(item, "B_UISEL"))
        local added = r.AddTakeToMediaItem(item)
        assert(r.GetActiveTake(item) == added and r.GetMediaItemTake_Source(added) == nil)
        r.DeleteTrackMediaItem(second, item)
        item = r.CreateNewMIDIItemInProj(second, 1, 3, true)
        equal({0.5, 1}, r.GetMediaItemInfo_Value(item, "D_POSITION"), r.GetMediaItemInfo_Value(item, "D_LENGTH"))
        r.GetSetMediaItemInfo_String(item, "GUID", "{B0000000-0000-4000-8000-000000000009}", true)
        r.GetSetMediaItemTakeInfo_String(r.GetTake(item, 0), "GUID", "{C0000000-0000-4000-8000-000000000009}", true)
        local _, state = r.GetItemStateChunk(item, "", false)
        state = state:gsub("POOLEDEVTS.-\n", ""):gsub("<SOURCE MIDI.-\n>", function(source)
            return (source:gsub("GUID.-\n", ""))
        end)
        assert(r.SetItemStateChunk(item, state, false))
    )"),
              R"(+POSITION 0.5
+SNAPOFFS 0
+LENGTH 1
+LOOP 1
+ALLTAKES 0
+FADEIN 1 0 0 1 0 0 0
+FADEOUT 1 0 0 1 0 0 0
+MUTE 0 0
+SEL 0
+IGUID {B0000000-0000-4000-8000-000000000009}
+NAME ""
+VOLPAN 1 0 1 -1
+SOFFS 0
+PLAYRATE 1 1 0 -1 0 0.0025
+CHANMODE 0
+GUID {C0000000-0000-4000-8000-000000000009}
+<SOURCE MIDI
+HASDATA 1 960 QN
+CCINTERP 32
+E 1920 b0 7b 00
+CCINTERP 32
+IGNTEMPO 0 120 4 4
+SRCCOLOR 0
+VELLANE -1 100 0
+>
+>
+<ITEM
)");
}

TEST_F(ItemScripts, StatesAreBlocksOfTheFile) {
    EXPECT_EQ(changes(R"(
        local found, state = r.GetItemStateChunk(two, "", false)
        equal({true, "<ITEM\nPOSITION 4\nLENGTH 1\nSEL 0\nGROUP 3\nCOLOR 17834032 B\nIGUID {B0000000-0000-4000-8000-000000000003}\n>\n"},
              found, state)
        for _, bad in ipairs{"", "<TRACK\n>\n", "<ITEM\nPOSITION 9\n", "<ITEM\nPOSITION x\n>\n"} do
            assert(not r.SetItemStateChunk(two, bad, false), bad)
        end
        for _, item in ipairs{one, old} do
            found, state = r.GetItemStateChunk(item, "", false)
            assert(r.SetItemStateChunk(item, state, true))
            local _, again = r.GetItemStateChunk(item, "")
            assert(again == state)
        end
        assert(r.ValidatePtr(one, "MediaItem*") and r.ValidatePtr(old, "MediaItem*"))
        local text = r.SNM_CreateFastString("")
        assert(r.SNM_GetSetObjectState(two, text, false, false) and r.SNM_GetFastString(text):sub(1, 6) == "<ITEM\n")
        assert(r.SNM_GetSetObjectState(two, text, true, false))
        assert(not r.SNM_GetSetObjectState(first, text, true, false))
        assert(r.SNM_GetSetObjectState(r.GetTakeEnvelope(r.GetTake(one, 1), 0), text, false, false))
        assert(r.SNM_GetFastString(text):find("^<VOLENV\n.*PT 8 0 0\n>\n$"))
        found, state = r.GetTrackStateChunk(second, "", false)
        assert(r.SetTrackStateChunk(second, state:gsub("LENGTH 1", "LENGTH 2"), false))
        equal({1, 2}, r.CountTrackMediaItems(second), r.GetMediaItemInfo_Value(r.GetMediaItem(0, 2), "D_LENGTH"))
    )"),
              "-LENGTH 1\n+LENGTH 2\n");
}

TEST_F(ItemScripts, TextsOfAnyLengthComeWhole) {
    changes(R"(
        local note = ("long "):rep(700000)
        r.ULT_SetMediaItemNote(two, note)
        local _, text = r.GetSetMediaItemInfo_String(two, "P_NOTES", "", false)
        assert(text == note)
        local found, state = r.GetItemStateChunk(two, "", false)
        assert(found and state:sub(-3) == "\n>\n" and #state > #note)
        assert(r.SetItemStateChunk(one, state, false) and r.ULT_GetMediaItemNote(one) == note)
    )");
    std::array<char, 16> small{};
    const auto get_state = workstation.function_as<bool(MediaItem*, char*, int, bool)>("GetItemStateChunk");
    EXPECT_FALSE(get_state(workstation::Workstation::handle(*project.item(0)), small.data(), 16, false));
    EXPECT_STREQ(small.data(), "<ITEM\nPOSITION ");
}

TEST_F(ItemScripts, CommandsSelectItems) {
    EXPECT_EQ(changes(R"(
        local function selected(...)
            equal({select("#", ...)}, r.CountSelectedMediaItems(0))
            for _, item in ipairs{...} do assert(r.IsMediaItemSelected(item)) end
        end
        command(40182) selected(one, old, two)
        command(40290)
        command(40289) selected()
        command(40421) selected(two)
        command(40034) selected(one, two)
        command(40541) command(41173)
        equal({2}, r.GetCursorPosition())
        r.SetMediaItemSelected(one, false)
        command(40290)
        r.SetMediaItemSelected(old, true)
        command(40717) selected(one, two)
        command(40718) selected(two)
        command(40769) selected()
        equal({0}, r.CountSelectedTracks(0))
    )"),
              R"(-CURSOR 0
+CURSOR 2
-SELECTION 0 0
-SELECTION2 0 0
+SELECTION 4 5
+SELECTION2 4 5
-SEL 1
+SEL 0
-SEL 1
+SEL 0
)");
}

TEST_F(ItemScripts, CommandsChangeGroupsTakesAndSettings) {
    EXPECT_EQ(changes(R"(
        command(40032)
        equal({4}, r.GetMediaItemInfo_Value(old, "I_GROUPID"))
        command(40033)
        r.SetMediaItemSelected(one, true)
        command(40129)
        assert(r.GetActiveTake(one) == nil)
        equal({3, 1}, r.CountTakes(one), r.CountTakes(old))
        r.SetActiveTake(take)
        command(40131)
        equal({1, 1}, r.CountTakes(one), r.CountTakes(old))
        equal({1}, r.GetToggleCommandState(40041))
        command(41120) command(40041)
        equal({0}, r.GetToggleCommandState(40041))
    )"),
              R"(-AUTOXFADE 129
+AUTOXFADE 130
-SEL 0
+SEL 1
-TAKE
-TAKEVOLPAN 0.00 1.000 -1
+VOLPAN 1 0 1 -1
-TAKE NULL
-TAKE SEL
-NAME notes
-TAKEVOLPAN 0 1 -1
-SOFFS 0.5 1
-PLAYRATE 1 1 0 -1 0 0.0025
-CHANMODE 0
-GUID {C0000000-0000-4000-8000-000000000002}
-<SOURCE MIDI
-HASDATA 1 960 QN
-POOLEDEVTS {D0000000-0000-4000-8000-000000000003}
-E 1920 b0 7b 00
->
+GROUP 0
)");
    EXPECT_EQ(workstation.take_failures().size(), 1U) << "an item keeps its only take";
    changes("command(40006)");
    EXPECT_EQ(project.item_count(), 1U);
    changes("command(40029) command(1)");
    EXPECT_EQ(workstation.take_failures().size(), 2U) << "undo, and a number that is not known";
}

TEST_F(ItemScripts, CommandsPasteWithNewIdentifiersAndGroups) {
    EXPECT_EQ(changes(R"(
        r.SetMediaItemSelected(one, true)
        r.SetMediaItemSelected(two, true)
        r.SetMediaItemSelected(old, false)
        r.SetEditCurPos(20, false, false)
        command(40698) command(40058)
        equal({24, 5, 2, 3}, r.GetCursorPosition(), r.CountMediaItems(0), r.CountSelectedMediaItems(0), r.CountTracks(0))
        local pasted = r.GetSelectedMediaItem(0, 0)
        local other = r.GetSelectedMediaItem(0, 1)
        equal({4, 4, 20, 22}, r.GetMediaItemInfo_Value(pasted, "I_GROUPID"), r.GetMediaItemInfo_Value(other, "I_GROUPID"),
              r.GetMediaItemInfo_Value(pasted, "D_POSITION"), r.GetMediaItemInfo_Value(other, "D_POSITION"))
        local ids = {}
        for _, item in ipairs{one, pasted} do
            local _, state = r.GetItemStateChunk(item, "", false)
            for token, id in state:gmatch('\n(%u+) ({%x+%-.-})') do
                assert(not ids[id] or token == "POOLEDEVTS", token)
                ids[id] = true
            end
        end
        command(40307)
        equal({3}, r.CountMediaItems(0))
        r.DeleteTrack(r.GetTrack(0, 2))
    )"),
              "-CURSOR 0\n+CURSOR 24\n-SEL 1\n+SEL 0\n");
}

TEST_F(ItemScripts, CommandsSplitSelectedItemsOrElseAll) {
    changes(R"(
        r.SetEditCurPos(4.5, false, false)
        command(40759)
        equal({3}, r.CountMediaItems(0))
        r.SetMediaItemSelected(one, true)
        command(40759)
        equal({4}, r.CountMediaItems(0))
        assert(not r.IsMediaItemSelected(one) and r.IsMediaItemSelected(r.GetMediaItem(0, 1)))
        command(40289)
        command(40012)
        equal({5}, r.CountMediaItems(0))
        r.SetMediaItemSelected(old, true)
        command(40290)
        r.SetMediaItemInfo_Value(old, "D_LENGTH", 3)
        command(40061)
        equal({6}, r.CountMediaItems(0))
        r.GetSetProjectGrid(0, true, 0.25)
        local item = r.AddMediaItemToTrack(first)
        r.SetMediaItemInfo_Value(item, "D_POSITION", 30.25)
        r.SetMediaItemInfo_Value(item, "D_LENGTH", 1)
        r.SelectAllMediaItems(0, false)
        r.SetMediaItemSelected(item, true)
        command(40932)
        equal({9, 0.25, 3}, r.CountMediaItems(0), r.GetMediaItemInfo_Value(item, "D_LENGTH"), r.CountSelectedMediaItems(0))
    )");
}

} // namespace
} // namespace headless::test
