// Sends, receives and outputs in the lines of tracks that come, go and move.

#include "tests/headless/functions/project_lines.hpp"

#include <array>

namespace headless {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string send_envelope =
    "    <AUXVOLENV\n      EGUID {30000000-0000-4000-8000-0000000000E1}\n      ACT 1 -1\n"
    "      VOLTYPE 1\n      PT 0 0.5 0\n    >\n";

// "a" sends to "b" and "c", "c" sends to "b" and "a".
const std::string sample =
    project_of("  <TRACK\n    NAME a\n    AUXRECV 2 0 1 0 0 0 0 0 0 -1:U 0 -1 ''\n"
               "    HWOUT 0 0 1 0 0 0 0 -1:U -1\n    <HWVOLENV\n      PT 0 1 0\n    >\n"
               "    HWOUT 1026 3 0.5 0 0 0 0 -1:U -1\n    <VOLENV2\n      PT 0 1 0\n    >\n  >\n"
               "  <TRACK\n    NAME b\n    AUXRECV 0 0 1 0 0 0 0 0 0 -1:U 0 -1 '' newer\n" +
               send_envelope +
               "    AUXRECV 2 3 0.5 -0.5 1 0 0 1024 2 -1.00000000\n    <PANENV2\n      PT 0 0 0\n    >\n  >\n"
               "  <TRACK\n    NAME c\n    AUXRECV 0 0 1 0 0 0 0 0 0 -1:U 31 -1 ''\n  >\n");

class Sends : public ProjectLines {
protected:
    Sends() { read(sample); }

    int count(MediaTrack* track, int category) const {
        return function<int(MediaTrack*, int)>("GetTrackNumSends")(track, category);
    }

    double send_value(MediaTrack* track, int category, int index, const char* key) const {
        return function<double(MediaTrack*, int, int, const char*)>("GetTrackSendInfo_Value")(track, category,
                                                                                              index, key);
    }

    bool set_send_value(MediaTrack* track, int category, int index, const char* key, double value) const {
        return function<bool(MediaTrack*, int, int, const char*, double)>("SetTrackSendInfo_Value")(
            track, category, index, key, value);
    }

    MediaTrack* other_end(MediaTrack* track, int category, int index) const {
        return function<MediaTrack*(MediaTrack*, int, int, int)>("BR_GetMediaTrackSendInfo_Track")(
            track, category, index, category < 0 ? 0 : 1);
    }

    /// "sender>receiver" for each send of the project, by names.
    Lines connections() const {
        Lines found;
        for (std::size_t sender = 0; sender < project.tracks().size(); ++sender)
            for (int i = 0; i < count(track(sender), 0); ++i)
                found.push_back(project.track(sender)->name + ">" +
                                workstation.live(other_end(track(sender), 0, i))->name);
        return found;
    }
};

TEST_F(Sends, AreCountedFromBothEnds) {
    EXPECT_THAT(connections(), ElementsAre("a>b", "a>c", "c>a", "c>b"));
    EXPECT_EQ(count(track(1), -1), 2);
    EXPECT_EQ(other_end(track(1), -1, 1), track(2));
    EXPECT_EQ(count(track(0), 1), 2);
    EXPECT_EQ(count(master(), 1), 0);
    EXPECT_EQ(send_value(track(0), 1, 1, "I_DSTCHAN"), 1026);
    EXPECT_EQ(send_value(track(1), -1, 1, "I_SRCCHAN"), 1024);
    EXPECT_EQ(send_value(track(1), -1, 1, "D_PANLAW"), -1.0);
    EXPECT_EQ(send_value(track(1), -1, 1, "I_AUTOMODE"), -1.0) << "the line is too short";
    EXPECT_EQ(send_value(track(1), -1, 2, "D_VOL"), 0.0);
    std::array<char, 32> name{};
    const auto send_name = function<bool(MediaTrack*, int, char*, int)>("GetTrackSendName");
    EXPECT_TRUE(send_name(track(0), 3, name.data(), name.size()));
    EXPECT_STREQ(name.data(), "c") << "outputs are counted first";
    EXPECT_FALSE(send_name(track(0), 4, name.data(), name.size()));
    EXPECT_THAT(workstation.take_failures(), IsEmpty());
}

TEST_F(Sends, OnlyTheirFieldChanges) {
    EXPECT_TRUE(set_send_value(track(0), 0, 0, "D_VOL", 0.25));
    EXPECT_TRUE(set_send_value(track(1), -1, 0, "D_PANLAW", 0.5));
    EXPECT_TRUE(set_send_value(track(1), -1, 1, "I_MIDIFLAGS", 31.0));
    EXPECT_THAT(changes(), ElementsAre("-AUXRECV 0 0 1 0 0 0 0 0 0 -1:U 0 -1 '' newer",
                                       "+AUXRECV 0 0 0.25 0 0 0 0 0 0 0.5:U 0 -1 '' newer",
                                       "-AUXRECV 2 3 0.5 -0.5 1 0 0 1024 2 -1.00000000",
                                       "+AUXRECV 2 3 0.5 -0.5 1 0 0 1024 2 -1.00000000 31"));
    EXPECT_TRUE(function<bool(MediaTrack*, int)>("ToggleTrackSendUIMute")(track(0), 1));
    EXPECT_TRUE(function<bool(MediaTrack*, int)>("ToggleTrackSendUIMute")(track(1), -2));
    EXPECT_THAT(changes(),
                ElementsAre("-HWOUT 1026 3 0.5 0 0 0 0 -1:U -1", "+HWOUT 1026 3 0.5 0 1 0 0 -1:U -1",
                            "-AUXRECV 2 3 0.5 -0.5 1 0 0 1024 2 -1.00000000 31",
                            "+AUXRECV 2 3 0.5 -0.5 0 0 0 1024 2 -1.00000000 31"));
    const auto midi =
        function<double(MediaTrack*, int, int, const char*, bool, double)>("BR_GetSetTrackSendInfo");
    EXPECT_EQ(midi(track(1), -1, 1, "I_MIDI_SRCCHAN", false, 0.0), -1.0);
    EXPECT_EQ(midi(track(1), -1, 1, "I_MIDI_DSTBUS", true, 3.0), 3.0);
    EXPECT_EQ(send_value(track(1), -1, 1, "I_MIDIFLAGS"), 31 + (3 << 22));
    EXPECT_FALSE(set_send_value(track(0), 0, 0, "P_DESTTRACK", 1.0));
}

TEST_F(Sends, FollowTheTracks) {
    function<void(int, bool)>("InsertTrackAtIndex")(0, false);
    EXPECT_THAT(connections(), ElementsAre("a>b", "a>c", "c>a", "c>b"));
    function<void(MediaTrack*)>("SetOnlyTrackSelected")(track(3));
    EXPECT_TRUE(function<bool(int, int)>("ReorderSelectedTracks")(1, 0));
    EXPECT_THAT(connections(), ElementsAre("c>a", "c>b", "a>c", "a>b"));
    function<void(MediaTrack*)>("DeleteTrack")(track(1));
    EXPECT_THAT(connections(), ElementsAre("a>b"));
    const std::string text = written();
    EXPECT_NE(text.find("AUXRECV 1 0 1 0 0 0 0 0 0 -1:U 0 -1 '' newer\n" + send_envelope), text.npos);
    function<void(MediaTrack*)>("DeleteTrack")(track(1));
    EXPECT_EQ(written().find("AUX"), std::string::npos) << "the send's envelope goes with it";
    EXPECT_NE(written().find("<PANENV2"), std::string::npos) << "the track's own envelope stays";
}

TEST_F(Sends, AreMadeAndRemoved) {
    const auto create = function<int(MediaTrack*, MediaTrack*)>("CreateTrackSend");
    EXPECT_EQ(create(track(0), track(1)), 1) << "a second one between the same tracks";
    EXPECT_EQ(create(track(0), nullptr), 2);
    EXPECT_THAT(changes(),
                ElementsAre("+HWOUT 0 0 1 0 0 0 0 -1:U -1", "+AUXRECV 0 0 1 0 0 0 0 0 0 -1:U 0 -1 ''"));
    EXPECT_EQ(create(track(0), track(0)), -1);
    EXPECT_EQ(create(track(0), master()), -1);
    EXPECT_EQ(create(master(), nullptr), 0);
    EXPECT_THAT(changes(), ElementsAre("+MASTERHWOUT 0 0 1 0 0 0 0 -1"));
    const auto remove = function<bool(MediaTrack*, int, int)>("RemoveTrackSend");
    EXPECT_TRUE(remove(master(), 1, 0));
    EXPECT_THAT(changes(), ElementsAre("-MASTERHWOUT 0 0 1 0 0 0 0 -1", "+MASTERHWOUT"));
    EXPECT_TRUE(remove(track(0), 1, 0));
    EXPECT_THAT(changes(), ElementsAre("-HWOUT 0 0 1 0 0 0 0 -1:U -1", "-<HWVOLENV", "-PT 0 1 0", "->"));
    EXPECT_TRUE(remove(track(1), -1, 0));
    EXPECT_EQ(changes().size(), 7);
    EXPECT_FALSE(remove(track(1), -1, 2));
}

TEST_F(Sends, EnvelopesBelongToTheSender) {
    const auto envelope =
        function<TrackEnvelope*(MediaTrack*, int, int, int)>("BR_GetMediaTrackSendInfo_Envelope");
    TrackEnvelope* volume = envelope(track(0), 0, 0, 0);
    ASSERT_NE(volume, nullptr);
    EXPECT_EQ(envelope(track(1), -1, 0, 0), volume);
    EXPECT_EQ(envelope(track(0), 0, 0, 1), nullptr);
    EXPECT_EQ(envelope(track(0), 0, 1, 0), nullptr);
    EXPECT_EQ(function<int(MediaTrack*)>("CountTrackEnvelopes")(track(0)), 3)
        << "of an output, its own, of the send";
    EXPECT_EQ(function<int(MediaTrack*)>("CountTrackEnvelopes")(track(1)), 1);
    const auto info = function<double(TrackEnvelope*, const char*)>("GetEnvelopeInfo_Value");
    EXPECT_EQ(info(volume, "I_SEND_IDX"), 1.0);
    EXPECT_EQ(info(volume, "I_RECV_IDX"), 1.0);
    EXPECT_EQ(info(volume, "I_HWOUT_IDX"), 0.0);
    EXPECT_EQ(info(volume, "P_TRACK"), static_cast<double>(reinterpret_cast<std::uintptr_t>(track(0))));
    EXPECT_EQ(info(volume, "P_DESTTRACK"), static_cast<double>(reinterpret_cast<std::uintptr_t>(track(1))));
}

TEST_F(Sends, AreCopiedWithTheTracks) {
    project.track(0)->set_selected(true);
    project.track(1)->set_selected(true);
    function<void(int, int)>("Main_OnCommand")(40062, 0);
    ASSERT_EQ(project.tracks().size(), 5);
    project.track(2)->name = "a2";
    project.track(3)->name = "b2";
    EXPECT_THAT(connections(),
                testing::UnorderedElementsAre("a>b", "a>c", "c>a", "c>b", "a2>b2", "a2>c", "c>a2", "c>b2"));
    const std::string text = written();
    project::Project again;
    ASSERT_TRUE(rpp::parse_project(again, text, folder.path));
    EXPECT_EQ(rpp::project_text(again, folder.path), text);
}

} // namespace
} // namespace headless
