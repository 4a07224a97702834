// What functions change of the lines of tracks, and that nothing else changes.

#include "headless/rpp/state.hpp"
#include "tests/headless/functions/project_lines.hpp"

#include <array>

namespace headless {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Three tracks as another program may write them: line ends, number formats and names of its own, lines that
// nobody knows, and an effect with its state.
const std::string sample =
    "<REAPER_PROJECT 0.1 \"6.81/win64\" 1690000000\r\n"
    "  RIPPLE 0\r\n"
    "  MASTERAUTOMODE 0\r\n"
    "  MASTERTRACKVIEW 1 0.6667 0.5 0.5 0 0 0\r\n"
    "  MASTERHWOUT 0 0 1 0 0 0 0 -1\r\n"
    "  MASTER_NCH 2 2\r\n"
    "  MASTER_VOLUME 0.5 0 -1 -1 1\r\n"
    "  MASTER_FX 1\r\n"
    "  <MASTERVOLENV2\r\n"
    "    EGUID {10000000-0000-4000-8000-0000000000E0}\r\n"
    "    ACT 1 -1\r\n"
    "    VOLTYPE 1\r\n"
    "    PT 0 1 0\r\n"
    "  >\r\n"
    "  <TRACK {10000000-0000-4000-8000-000000000001}\r\n"
    "    NAME \"Größe 1\"\r\n"
    "    PEAKCOL 16576\r\n"
    "    VOLPAN 1.00000000000000 0.25000000000000 -1.00000000000000 -1.00000000000000 1.00000000000000\r\n"
    "    MUTESOLO 0 0 0\r\n"
    "    ISBUS 1 1\r\n"
    "    REC 0 5088 1 0 0 0 0 7\r\n"
    "    GROUP_FLAGS 0 0 0 0 1 4\r\n"
    "    NEWER 1 \"kept  as it is\" 2\r\n"
    "    TRACKID {10000000-0000-4000-8000-000000000001}\r\n"
    "    MAINSEND 1 0\r\n"
    "    <FXCHAIN\r\n"
    "      SHOW 0\r\n"
    "      BYPASS 0 0 0\r\n"
    "      <VST \"VST: Warm Room (Maker)\" room.dll 0 \"\" 1919247729\r\n"
    "        cWVlcu5e7f4CAAAAAQAAAAAAAAAC\r\n"
    "      >\r\n"
    "      FXID {10000000-0000-4000-8000-0000000000F1}\r\n"
    "      <PARMENV 3:_Size 0 2 1 \"Size / Warm Room\"\r\n"
    "        EGUID {10000000-0000-4000-8000-0000000000E1}\r\n"
    "        PT 0 0.5 0\r\n"
    "      >\r\n"
    "      WAK 0 0\r\n"
    "      BYPASS 1 0 0\r\n"
    "      <JS \"Guitar/amp\" \"My amp\"\r\n"
    "        0.5 - -\r\n"
    "      >\r\n"
    "      FXID {10000000-0000-4000-8000-0000000000F2}\r\n"
    "    >\r\n"
    "  >\r\n"
    "  <TRACK {10000000-0000-4000-8000-000000000002}\r\n"
    "    NAME Second\r\n"
    "    ISBUS 0 0\r\n"
    "    TRACKID {10000000-0000-4000-8000-000000000002}\r\n"
    "  >\r\n"
    "  <TRACK {10000000-0000-4000-8000-000000000003}\r\n"
    "    NAME \"\"\r\n"
    "    ISBUS 2 -1\r\n"
    "    TRACKID {10000000-0000-4000-8000-000000000003}\r\n"
    "  >\r\n"
    ">\r\n";

class TrackLines : public ProjectLines {
protected:
    TrackLines() { read(sample); }

    bool text_of(MediaTrack* track, const char* key, std::string& text, bool is_set = false) const {
        std::array<char, 1024> buffer{};
        std::copy(text.begin(), text.end(), buffer.begin());
        const bool done = function<bool(MediaTrack*, const char*, char*, bool)>(
            "GetSetMediaTrackInfo_String")(track, key, buffer.data(), is_set);
        text = buffer.data();
        return done;
    }

    std::string get_text(MediaTrack* track, const char* key) const {
        std::string text;
        return text_of(track, key, text) ? text : "(none)";
    }

    bool set_text(MediaTrack* track, const char* key, std::string text) const {
        return text_of(track, key, text, true);
    }
};

TEST_F(TrackLines, OnlyTheFieldOfAKeyChanges) {
    EXPECT_EQ(value(track(0), "I_RECINPUT"), 5088);
    EXPECT_EQ(value(track(0), "I_RECMODE_FLAGS"), 7);
    EXPECT_THAT(changes(), IsEmpty());
    EXPECT_TRUE(set_value(track(0), "I_RECARM", 1.0));
    EXPECT_THAT(changes(), ElementsAre("-REC 0 5088 1 0 0 0 0 7\r", "+REC 1 5088 1 0 0 0 0 7\r"));
    EXPECT_TRUE(set_value(track(0), "D_PANLAW", 0.5));
    EXPECT_THAT(
        changes(),
        ElementsAre("-VOLPAN 1.00000000000000 0.25000000000000 -1.00000000000000 -1.00000000000000 "
                    "1.00000000000000\r",
                    "+VOLPAN 1.00000000000000 0.25000000000000 0.5 -1.00000000000000 1.00000000000000\r"));
    EXPECT_TRUE(set_value(track(1), "I_NCHAN", 5.0));
    EXPECT_TRUE(set_value(track(1), "D_WIDTH", -3.0));
    EXPECT_THAT(changes(), ElementsAre("+WIDTH -1\r", "+NCHAN 6\r"));
    EXPECT_TRUE(set_value(track(1), "B_MAINSEND", 1.0)) << "the default needs no line";
    EXPECT_FALSE(set_value(track(1), "IP_TRACKNUMBER", 1.0));
    EXPECT_FALSE(set_value(track(1), "I_UNHEARD_OF", 1.0));
    EXPECT_THAT(changes(), IsEmpty());
    EXPECT_EQ(workstation.take_failures().size(), 1) << "the unknown key";
}

TEST_F(TrackLines, TheMastersLinesAreTheProjects) {
    EXPECT_EQ(value(master(), "I_NCHAN"), 2);
    EXPECT_TRUE(set_value(master(), "I_NCHAN", 4.0));
    EXPECT_TRUE(set_value(master(), "I_FXEN", 0.0));
    EXPECT_TRUE(set_value(master(), "D_VOL", 1.0));
    EXPECT_EQ(function<int(int)>("SetMasterTrackVisibility")(2), 1);
    EXPECT_THAT(changes(),
                ElementsAre("-MASTERTRACKVIEW 1 0.6667 0.5 0.5 0 0 0\r",
                            "+MASTERTRACKVIEW 2 0.6667 0.5 0.5 0 0 0\r", "-MASTER_NCH 2 2\r",
                            "-MASTER_VOLUME 0.5 0 -1 -1 1\r", "-MASTER_FX 1\r", "+MASTER_NCH 4 2\r",
                            "+MASTER_VOLUME 1 0 -1 -1 1\r", "+MASTER_FX 0\r"));
    EXPECT_FALSE(set_value(master(), "I_RECARM", 1.0));
    EXPECT_FALSE(set_value(master(), "B_MAINSEND", 1.0));
    EXPECT_FALSE(set_text(master(), "P_EXT:key", "text"));
    EXPECT_THAT(changes(), IsEmpty());
}

TEST_F(TrackLines, TheMastersStateIsThatOfATrack) {
    project.master().mute = true;
    EXPECT_EQ(
        rpp::state_of(project.master()),
        "<TRACK\nMUTESOLO 1 0 0\nAUTOMODE 0\nVOLPAN 0.5 0 -1 -1 1\nNCHAN 2 2\nFX 1\nHWOUT 0 0 1 0 0 0 0 -1\n"
        "<VOLENV2\nEGUID {10000000-0000-4000-8000-0000000000E0}\nACT 1 -1\nVOLTYPE 1\nPT 0 1 0\n>\n>\n");
    EXPECT_FALSE(rpp::set_state(project.master(), "<TRACK\n>\n"));
}

TEST_F(TrackLines, TextsReadBack) {
    EXPECT_EQ(get_text(track(0), "P_NAME"), "Größe 1");
    EXPECT_EQ(get_text(track(0), "P_EXT:maker"), "(none)");
    EXPECT_TRUE(set_text(track(0), "P_EXT:maker", "two words"));
    EXPECT_TRUE(set_text(track(0), "P_MCP_LAYOUT", "Wide"));
    EXPECT_TRUE(set_text(track(1), "P_ICON", "drum.png"));
    EXPECT_TRUE(set_text(track(1), "P_RAZOREDITS", "1 2.5 \"\""));
    EXPECT_THAT(changes(), ElementsAre("+LAYOUTS \"\" Wide\r", "+<EXT\r", "+maker \"two words\"\r", "+>\r",
                                       "+TRACKIMGFN \"drum.png\"\r"));
    EXPECT_EQ(get_text(track(0), "P_EXT:maker"), "two words");
    EXPECT_EQ(get_text(track(0), "P_MCP_LAYOUT"), "Wide");
    EXPECT_EQ(get_text(track(1), "P_ICON"), "drum.png");
    EXPECT_EQ(get_text(track(1), "P_RAZOREDITS"), "1 2.5 \"\"");
    EXPECT_TRUE(set_text(track(0), "P_EXT:maker", ""));
    EXPECT_TRUE(set_text(track(1), "P_ICON", ""));
    EXPECT_THAT(changes(),
                ElementsAre("-<EXT\r", "-maker \"two words\"\r", "->\r", "-TRACKIMGFN \"drum.png\"\r"));
}

TEST_F(TrackLines, IdentifiersAreFoundAndSetInBothPlaces) {
    const auto find = function<MediaTrack*(ReaProject*, const char*)>("BR_GetMediaTrackByGUID");
    EXPECT_EQ(find(nullptr, "{10000000-0000-4000-8000-000000000002}"), track(1));
    EXPECT_EQ(find(nullptr, "{00000000-0000-0000-0000-000000000000}"), master());
    EXPECT_EQ(find(nullptr, "{20000000-0000-4000-8000-000000000002}"), nullptr);
    EXPECT_EQ(find(nullptr, "Second"), nullptr);
    EXPECT_FALSE(set_text(track(1), "GUID", "no identifier"));
    EXPECT_TRUE(set_text(track(1), "GUID", "{20000000-0000-4000-8000-000000000002}"));
    EXPECT_THAT(changes(), ElementsAre("-<TRACK {10000000-0000-4000-8000-000000000002}\r",
                                       "+<TRACK {20000000-0000-4000-8000-000000000002}\r",
                                       "-TRACKID {10000000-0000-4000-8000-000000000002}\r",
                                       "+TRACKID {20000000-0000-4000-8000-000000000002}\r"));
    EXPECT_EQ(find(nullptr, "{20000000-0000-4000-8000-000000000002}"), track(1));
}

TEST_F(TrackLines, GroupsAreWordsOfALineWithoutTrailingZeros) {
    const auto groups = function<int(MediaTrack*, const char*, int, int)>("GetSetTrackGroupMembership");
    EXPECT_EQ(groups(track(0), "MUTE_FOLLOW", 0, 0), 4);
    EXPECT_EQ(groups(track(0), "MUTE_MASTER", 0, 0), 1) << "the earlier name";
    EXPECT_EQ(groups(track(0), "MUTE_FOLLOW", 4, 0), 4);
    EXPECT_THAT(changes(), ElementsAre("-GROUP_FLAGS 0 0 0 0 1 4\r", "+GROUP_FLAGS 0 0 0 0 1\r"));
    EXPECT_EQ(groups(track(0), "MUTE_LEAD", 1, 0), 1);
    EXPECT_EQ(function<int(MediaTrack*, const char*, int, int)>("GetSetTrackGroupMembershipHigh")(
                  track(1), "VOLUME_FOLLOW", -1, 1 << 31),
              0);
    EXPECT_THAT(changes(), ElementsAre("-GROUP_FLAGS 0 0 0 0 1\r", "+GROUP_FLAGS_HIGH 0 2147483648\r"));
}

TEST_F(TrackLines, EffectsComeAndGoWithAllTheirLines) {
    const auto name = [&](int index) {
        std::array<char, 64> buffer{};
        function<bool(MediaTrack*, int, char*, int)>("TrackFX_GetFXName")(track(0), index, buffer.data(),
                                                                          buffer.size());
        return std::string(buffer.data());
    };
    const auto find = function<int(MediaTrack*, const char*, bool, int)>("TrackFX_AddByName");
    EXPECT_EQ(name(0), "VST: Warm Room (Maker)");
    EXPECT_EQ(name(1), "My amp");
    EXPECT_EQ(find(track(0), "VST:warm room", false, 0), 0);
    EXPECT_EQ(find(track(0), "Cold Room", false, 0), -1);
    EXPECT_THAT(workstation.take_failures(), IsEmpty());
    EXPECT_EQ(find(track(0), "Cold Room", false, 1), -1);
    EXPECT_EQ(workstation.take_failures().size(), 1) << "an effect that would have to be loaded";
    function<void(MediaTrack*, int, bool)>("TrackFX_SetEnabled")(track(0), 1, true);
    EXPECT_THAT(changes(), ElementsAre("-BYPASS 1 0 0\r", "+BYPASS 0 0 0\r"));

    const auto count_envelopes = function<int(MediaTrack*)>("CountTrackEnvelopes");
    TrackEnvelope* size =
        function<TrackEnvelope*(MediaTrack*, int, int, bool)>("GetFXEnvelope")(track(0), 0, 3, false);
    int effect = -1;
    int parameter = -1;
    EXPECT_EQ(function<MediaTrack*(TrackEnvelope*, int*, int*)>("Envelope_GetParentTrack")(size, &effect,
                                                                                           &parameter),
              track(0));
    EXPECT_EQ(effect, 0);
    EXPECT_EQ(parameter, 3);
    EXPECT_EQ(count_envelopes(track(0)), 1);
    EXPECT_TRUE(function<bool(MediaTrack*, int)>("TrackFX_Delete")(track(0), 0));
    EXPECT_EQ(count_envelopes(track(0)), 0);
    const Lines gone = changes();
    EXPECT_EQ(gone.size(), 10) << "from the one BYPASS to the next";
    for (const char* line : {"-BYPASS 0 0 0\r", "-PT 0 0.5 0\r", "-WAK 0 0\r"})
        EXPECT_EQ(std::ranges::count(gone, line), 1) << line;
    EXPECT_EQ(name(0), "My amp");
    EXPECT_FALSE(function<bool(MediaTrack*, int)>("TrackFX_Delete")(track(0), 1));
}

TEST_F(TrackLines, CommandsSelectAndDuplicate) {
    const auto run = function<void(int, int)>("Main_OnCommand");
    const auto last_touched = function<MediaTrack*()>("GetLastTouchedTrack");
    EXPECT_EQ(last_touched(), nullptr);
    function<void(MediaTrack*)>("SetOnlyTrackSelected")(track(1));
    EXPECT_EQ(last_touched(), track(1));
    run(40285, 0);
    EXPECT_EQ(last_touched(), track(2));
    EXPECT_EQ(function<MediaTrack*(ReaProject*, int)>("GetSelectedTrack")(nullptr, 0), track(2));
    run(40285, 0);
    EXPECT_EQ(last_touched(), track(2)) << "there is no next one";
    run(40286, 0);
    run(40286, 0);
    EXPECT_EQ(last_touched(), track(0));
    changes();
    run(40062, 0); // the folder with its two tracks
    ASSERT_EQ(project.tracks().size(), 6);
    EXPECT_EQ(last_touched(), track(3));
    EXPECT_EQ(project.track(3)->name, "Größe 1");
    EXPECT_EQ(project.track(4)->depth(), 1);
    EXPECT_EQ(project.track(5)->parent(), project.track(3));
    EXPECT_NE(get_text(track(3), "GUID"), get_text(track(0), "GUID"));
    const Lines added = changes();
    EXPECT_EQ(std::ranges::count(added, "+NEWER 1 \"kept  as it is\" 2\r"), 1);
    EXPECT_EQ(std::ranges::count(added, "+FXID {10000000-0000-4000-8000-0000000000F1}\r"), 0)
        << "copies have their own";
    run(40005, 0);
    EXPECT_EQ(project.tracks().size(), 5) << "the folder itself";
    EXPECT_EQ(project.track(4)->depth(), 0);
    EXPECT_THAT(workstation.take_failures(), IsEmpty());
}

// Sixty folders, one in the other, and a track behind them.
TEST_F(ProjectLines, MovedFoldersKeepWhatTheyHold) {
    constexpr int levels = 60;
    std::string lines;
    for (int level = 0; level < levels; ++level)
        lines += "  <TRACK\n    NAME " + std::to_string(level) +
                 (level + 1 < levels ? "\n    ISBUS 1 1\n  >\n" : "\n    ISBUS 2 -59\n  >\n");
    read(project_of(lines + "  <TRACK\n    NAME last\n    ISBUS 0 0\n    SEL 1\n    ODD line\n  >\n"));
    const auto reorder = function<bool(int, int)>("ReorderSelectedTracks");
    EXPECT_EQ(project.track(59)->depth(), 59);

    EXPECT_TRUE(reorder(30, 0));
    EXPECT_EQ(project.track(30)->name, "last");
    EXPECT_EQ(project.track(30)->depth(), 30);
    EXPECT_EQ(project.track(31)->parent(), project.track(29));
    EXPECT_EQ(project.track(60)->depth(), 59);
    EXPECT_EQ(changes().size(), 12) << "the moved track's lines, nothing else";

    EXPECT_TRUE(reorder(61, 2));
    EXPECT_EQ(project.track(60)->depth(), 59) << "the innermost folder grows";
    EXPECT_TRUE(reorder(61, 1));
    EXPECT_EQ(project.track(60)->depth(), 60) << "the track before becomes a folder";
    EXPECT_TRUE(reorder(61, 0));
    EXPECT_EQ(project.track(60)->depth(), 0);
    changes();

    function<void(MediaTrack*)>("SetOnlyTrackSelected")(track(40));
    changes();
    EXPECT_TRUE(reorder(61, 0));
    EXPECT_EQ(project.track(40)->name, "last");
    EXPECT_EQ(project.track(41)->depth(), 0);
    EXPECT_EQ(project.track(60)->depth(), 19);
    EXPECT_EQ(project.track(60)->name, "59");
    EXPECT_EQ(project.selected_tracks().at(0), project.track(41));
    function<void(MediaTrack*)>("SetOnlyTrackSelected")(nullptr);
    EXPECT_FALSE(reorder(0, 0)) << "nothing is selected";
}

} // namespace
} // namespace headless
