// What stays of a project file that another program wrote: everything that nothing has changed.

#include "headless/rpp/rpp.hpp"
#include "headless/rpp/state.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <gmock/gmock.h>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace headless::rpp {
namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAreArray;

const std::filesystem::path home = "/songs";

// Something of every corner of the format; GUIDs end in the line's subject.
const std::string corners = R"raw(<REAPER_PROJECT 0.1 "6.80/win64" 1700000000
  <NOTES 0 2
    |> no end, <TRACK "no block"
  >
  RIPPLE 2 1
  PANLAW 0.70710678118655
  TIMEMODE 1 5 -1 30 1 0 -1 7
  CURSOR 1.50000000000000
  RECORD_PATH "Audio Files" "second"
  SAMPLERATE 44100 1 1
  <RENDER_CFG
    ZXZhdxgAAA==
  >
  <METRONOME 6 2
    PATTERN 2863311530 2863311529
  >
  TEMPO 97.5 3 8 16
  PLAYRATE 1 0 0.25 4
  SELECTION 8 2
  MASTERMUTESOLO 5
  MASTER_VOLUME 1 0 -1 -1 1
  <MASTERVOLENV2
    ACT 1 -1
    PT 0 0.5 0
  >
  <TEMPOENVEX
    ACT 1 -1
    PT 0 97.5 1 524291 0 3 0 "" 0 169 0 ABB
    PT 4 110 0
  >
  UNKNOWN "one 'two' line" `three` 'four
  MARKER 3 1.5 cue 8 0 1 B {0000000A-0000-0000-0000-000000000001} 0
  MARKER 1 2 scène 13 25198720 1 B {0000000A-0000-0000-0000-000000000002} 0
  <REGIONRENDER 1
    TRACK {00000001-0000-0000-0000-000000000002}
    TRACK {00000009-0000-0000-0000-000000000009}
  >
  MARKER 1 4 "" 13
  MARKER 3 9 twin 0
  <PROJBAY
  >
  <TRACK {00000001-0000-0000-0000-000000000001}
    NAME Räume
    PEAKCOL 4
    VOLPAN 1.00000000000000 0 -1 -1 1
    MUTESOLO 0 0 0
    ISBUS 1 1
    SEL 0
    TRACKID {00000001-0000-0000-0000-000000000001}
    MAINSEND 0 0
  >
  <TRACK {00000001-0000-0000-0000-000000000002}
    NAME `all "of" 'the' 'quotes'`
    <NAME
      |all "of" 'the' `quotes`
    >
    VOLPAN 0.5 0 -1 -1 1
    MUTESOLO 0 0 0
    ISBUS 2 -1
    REC 0 5088 1 0 0 0 0 0
    TRACKID {00000001-0000-0000-0000-000000000002}
    AUXRECV 0 3 0.5 0 0 0 0 0 0 -1:U 0 -1 ''
    <AUXVOLENV
      EGUID {00000002-0000-0000-0000-000000000001}
      ACT 1 -1
      PT 0 1 0
    >
    AUXRECV 2 0 1 0 0 0 0 0 0 -1 31 -1 ''
    MAINSEND 0 0
    <VOLENV2
      EGUID {00000002-0000-0000-0000-000000000002}
      ACT 1 -1
      VIS 1 1 1
      PT -0.000001 1 0
      PT 1 0.25 5 1 1 0 0.3
      PT 2 1
    >
    <FXCHAIN
      SHOW 0
      BYPASS 0 0 0
      <VST "VST: Reverb" reverb.dll 0 "" 1919247213<ABCD> ""
        bWNlcu9e7f4E
        AAAQAAAA
      >
      FXID {00000003-0000-0000-0000-000000000001}
      <PARMENV 5:_1 0 2 1 "Mix / Reverb"
        ACT 1 -1
        PT 0 0.5 0
      >
      WAK 0
    >
    <ITEM
      POSITION 2.00000000000000
      LENGTH 3
      SNAPOFFS 0
      SEL 0
      FADEIN 5 0.25 0 5 0 0.4 0.4
      MUTE 0 0
      IGUID {00000004-0000-0000-0000-000000000001}
      <NOTES
        |> second pass
      >
      NAME "door 04"
      VOLPAN 0.8 0 1 -1
      SOFFS 0.125
      PLAYRATE 1 1 0 -1 0 0.0025
      GUID {00000005-0000-0000-0000-000000000001}
      TKM 0.5 breath 0
      <SOURCE WAVE
        FILE "Media\door 04.wav"
      >
      SM 0 0.125 + 1.5 1.6 -0.2
      <VOLENV
        ACT 1 -1
        PT 0 1 0
        PT 1.25 0.5 5 0 0 0 0.3
      >
      TAKE NULL
      TAKE SEL
      NAME reverse
      TAKEVOLPAN 0 -0.9 -1
      GUID {00000005-0000-0000-0000-000000000002}
      <SOURCE SECTION
        LENGTH 3.5
        MODE 3
        STARTPOS 0
        OVERLAP 0.01
        <SOURCE WAVE
          FILE "C:\Sound\door.wav" 1
        >
      >
    >
    <ITEM
      POSITION 1
      LENGTH 1
      TAKE
      NAME "after an empty take"
      <SOURCE MIDI
        HASDATA 1 960 QN
        E 0 90 3c 60
        <X 480 0
          /wNMeXJpYw==
        >
        E 960 b0 7b 00
      >
    >
  >
  <TRACK {00000001-0000-0000-0000-000000000003}
    NAME last
    ISBUS 0 0
    <FREEZE 0
      <ITEM
        POSITION 7
      >
    >
  >
  <EXTENSIONS
    <SWSSNAPSHOT mix 0
      <TRACK {00000001-0000-0000-0000-000000000003} 1
        NAME "no track"
      >
    >
  >
  <EXTSTATE
    <MY_SCRIPT
      KEY.ONE "two words"
      <BIN LINES
        YQpi
      >
    >
  >
>
)raw";

// The first versions have shorter lines and no identifiers.
const std::string version_3 = R"raw(<REAPER_PROJECT 0.1
  TEMPO 120.00000000 4 4
  PLAYRATE 1.00000000
  SELECTION 0.00000000 0.00000000
  <TRACK
    NAME "bus"
    VOLPAN 1.000000 0.000000
    MUTESOLO 0 0
    ISBUS 1
    MAINSEND 1
  >
  <TRACK
    NAME "child"
    VOLPAN 1.000000 0.000000 -1.000000
    ISBUS 2
    <ITEM
      POSITION 0.50000000
      LENGTH 2.00000000
      SNAPOFFS 0.00000000
      FADEIN 1 0.01000000 0.00000000
      MUTE 0
      SEL 1
      NAME "take"
      VOLPAN 1.000000 0.000000 1.000000
      SOFFS 0.00000000
      PLAYRATE 1.00000000000000 1 0.00000000000000 -1
      CHANMODE 0
      <SOURCE MP3
        FILE "a.mp3" 1
      >
    >
  >
>
)raw";

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

struct Loaded {
    explicit Loaded(const std::string& text) {
        const auto parsed = parse_project(project, text, home);
        EXPECT_TRUE(parsed) << parsed.error().message;
    }

    std::string text() { return project_text(project, home); }

    project::Project project;
};

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line.substr(std::min(line.find_first_not_of(' '), line.size())));
    return lines;
}

// Lines that only the first text has, in order; lines that occur more than once count as often.
std::vector<std::string> only_in(const std::string& text, const std::string& other) {
    std::vector<std::string> left = lines_of(text);
    for (const std::string& line : lines_of(other))
        if (const auto found = std::ranges::find(left, line); found != left.end())
            left.erase(found);
    return left;
}

TEST(KeptLines, ComeBackAsTheyWere) {
    const std::string head = corners.substr(0, corners.find("  <EXTENSIONS"));
    for (const std::string& text :
         {corners, version_3, replaced(corners, "\n", "\r\n"), "\xEF\xBB\xBF\n" + corners + "\n\n",
          corners.substr(0, corners.size() - 1), head, head + "    <ITEM\n      POSI",
          replaced(corners, "  ", "\t"), replaced(corners, ">\n", "> \n"),
          std::string("<REAPER_PROJECT 0.1\n>")}) {
        Loaded loaded(text);
        EXPECT_EQ(loaded.text(), text);
        project_text(loaded.project, home / "elsewhere");
        EXPECT_EQ(loaded.text(), text) << "writing changes nothing";
    }
}

TEST(KeptLines, AreReadForWhatTheyHold) {
    Loaded loaded(corners);
    const project::Project& project = loaded.project;
    EXPECT_NEAR(project.frame_rate, 29.97, 1e-9);
    EXPECT_TRUE(project.drop_frame);
    EXPECT_EQ(project.time_selection(), (project::TimeRange{2.0, 8.0}));
    EXPECT_TRUE(project.master().mute);
    ASSERT_EQ(project.markers.all().size(), 3U);
    EXPECT_EQ(project.markers.all()[1].end_seconds, 4.0);
    EXPECT_THAT(project.markers.all()[1].renders, testing::SizeIs(1));
    EXPECT_EQ(project.tempo_map.tempo_at(1.0), 97.5);
    EXPECT_EQ(*project.extension_data.value("my_script", "lines"), "a\nb");
    ASSERT_EQ(project.tracks().size(), 3U);
    EXPECT_EQ(project.track(1)->name, "all \"of\" 'the' `quotes`");
    EXPECT_THAT(project.track(1)->envelopes(), testing::SizeIs(3));
    const project::Item& item = *project.track(1)->items()[1];
    EXPECT_EQ(item.take(0)->source.file, "/songs/Media/door 04.wav");
    EXPECT_TRUE(item.take(1)->is_empty);
    EXPECT_EQ(item.active_take(), item.take(2));
    EXPECT_TRUE(item.take(2)->source.section.reversed);
    EXPECT_EQ(item.take(2)->source.root().file, "C:\\Sound\\door.wav");
    EXPECT_TRUE(project.track(1)->items()[0]->take(0)->is_empty);
    EXPECT_EQ(project.track(1)->items()[0]->take(1)->source.type, "MIDI");
    EXPECT_EQ(project.end_seconds(), 9.0);

    Loaded old(version_3);
    EXPECT_EQ(old.project.track(1)->parent(), old.project.track(0));
}

struct Change {
    std::string subject;
    std::function<void(project::Project&)> make;
    std::vector<std::string> removed;
    std::vector<std::string> added;
};

TEST(KeptLines, ChangeOnlyWithWhatTheyHold) {
    const auto item = [](project::Project& project) -> project::Item& {
        return *project.track(1)->items()[1];
    };
    const std::vector<Change> changes{
        {"the cursor",
         [](auto& project) { project.cursor_seconds = 2.25; },
         {"CURSOR 1.50000000000000"},
         {"CURSOR 2.25"}},
        {"the tempo",
         [](auto& project) { project.tempo_bpm = 60.0; },
         {"TEMPO 97.5 3 8 16"},
         {"TEMPO 60 3 8 16"}},
        {"the frame rate",
         [](auto& project) {
             project.frame_rate = 23.976;
             project.drop_frame = false;
         },
         {"TIMEMODE 1 5 -1 30 1 0 -1 7"},
         {"TIMEMODE 1 5 -1 24 2 0 -1 7"}},
        {"the master",
         [](auto& project) { project.master().mute = false; },
         {"MASTERMUTESOLO 5"},
         {"MASTERMUTESOLO 4"}},
        {"a marker's name",
         [](auto& project) {
             project::Marker marker = project.markers.all()[1];
             marker.name = "two words";
             project.markers.replace(marker);
         },
         {"MARKER 1 2 scène 13 25198720 1 B {0000000A-0000-0000-0000-000000000002} 0"},
         {"MARKER 1 2 \"two words\" 13 25198720 1 B {0000000A-0000-0000-0000-000000000002} 0"}},
        {"a region",
         [](auto& project) { project.markers.erase(1); },
         {"MARKER 1 2 scène 13 25198720 1 B {0000000A-0000-0000-0000-000000000002} 0", "<REGIONRENDER 1",
          "TRACK {00000001-0000-0000-0000-000000000002}", "TRACK {00000009-0000-0000-0000-000000000009}", ">",
          "MARKER 1 4 \"\" 13"},
         {}},
        {"a name in a block",
         [](auto& project) { project.track(1)->name = "plain"; },
         {"NAME `all \"of\" 'the' 'quotes'`", "<NAME", "|all \"of\" 'the' `quotes`", ">"},
         {"NAME \"plain\""}},
        {"a track's volume",
         [](auto& project) { project.track(1)->volume = 0.25; },
         {"VOLPAN 0.5 0 -1 -1 1"},
         {"VOLPAN 0.25 0 -1 -1 1"}},
        {"a folder",
         [](auto& project) {
             project.track(0)->set_folder_depth_change(0);
             project.track(1)->set_folder_depth_change(0);
         },
         {"ISBUS 1 1", "ISBUS 2 -1"},
         {"ISBUS 0 0", "ISBUS 0 0"}},
        {"a new track",
         [](auto& project) { project.insert_track(1).name = "new"; },
         {"AUXRECV 2 0 1 0 0 0 0 0 0 -1 31 -1 ''"},
         {"AUXRECV 3 0 1 0 0 0 0 0 0 -1 31 -1 ''", "<TRACK {FE15BA40-0000-4000-8000-000000000001}"}},
        {"a track that sends",
         [](auto& project) { project.erase_track(*project.track(0)); },
         {"<TRACK {00000001-0000-0000-0000-000000000001}", "NAME Räume",
          "AUXRECV 0 3 0.5 0 0 0 0 0 0 -1:U 0 -1 ''", "<AUXVOLENV",
          "EGUID {00000002-0000-0000-0000-000000000001}", "AUXRECV 2 0 1 0 0 0 0 0 0 -1 31 -1 ''",
          "ISBUS 1 1", "ISBUS 2 -1"},
         {"AUXRECV 1 0 1 0 0 0 0 0 0 -1 31 -1 ''", "ISBUS 0 0"}},
        {"an item's place",
         [&](auto& project) { item(project).set_position_seconds(0.25); },
         {"POSITION 2.00000000000000"},
         {"POSITION 0.25"}},
        {"the active take",
         [&](auto& project) { item(project).set_active_take(*item(project).take(0)); },
         {"TAKE SEL"},
         {"TAKE"}},
        {"an item's and a take's volume",
         [&](auto& project) {
             item(project).volume = 0.5;
             item(project).take(0)->volume = -0.75;
             item(project).take(2)->volume = 0.125;
         },
         {"VOLPAN 0.8 0 1 -1", "TAKEVOLPAN 0 -0.9 -1"},
         {"VOLPAN 0.5 0 -0.75 -1", "TAKEVOLPAN 0 0.125 -1"}},
        {"a take's file",
         [&](auto& project) { item(project).take(2)->source.root().file = "/songs/new.wav"; },
         {"FILE \"C:\\Sound\\door.wav\" 1"},
         {"FILE \"new.wav\" 1"}},
        {"the points of an envelope",
         [&](auto& project) {
             item(project).take(0)->envelope("Volume")->set_points(
                 {{0.0, 1.0}, {0.5, 2.0}, {1.25, 0.75, project::PointShape::bezier, false, 0.3}});
         },
         {"PT 1.25 0.5 5 0 0 0 0.3"},
         {"PT 0.5 2 0", "PT 1.25 0.75 5 0 0 0 0.3"}},
        {"what scripts keep",
         [](auto& project) {
             project.extension_data.set("my_script", "key.one", "1");
             project.extension_data.set("other", "lines", "x\ny");
         },
         {"KEY.ONE \"two words\""},
         {"KEY.ONE 1", "<OTHER", "<BIN LINES", "eAp5", ">", ">"}},
        {"the tempo map", [](auto& project) { project.tempo_map.erase(1); }, {"PT 4 110 0"}, {}},
    };
    for (const std::string line_end : {"\n", "\r\n"}) {
        for (const Change& change : changes) {
            Loaded loaded(replaced(corners, "\n", line_end));
            change.make(loaded.project);
            const std::string text = replaced(loaded.text(), line_end, "\n");
            EXPECT_EQ(text.find('\r'), std::string::npos);
            for (const std::string& line : change.removed)
                EXPECT_THAT(only_in(corners, text), testing::Contains(line)) << change.subject;
            for (const std::string& line : change.added)
                EXPECT_THAT(only_in(text, corners), testing::Contains(line)) << change.subject;
            const bool is_of_an_object = change.subject.find("track") != std::string::npos;
            if (!is_of_an_object) {
                EXPECT_THAT(only_in(corners, text), UnorderedElementsAreArray(change.removed))
                    << change.subject;
                EXPECT_THAT(only_in(text, corners), UnorderedElementsAreArray(change.added))
                    << change.subject;
            }
            Loaded again(text);
            EXPECT_EQ(again.text(), text) << change.subject;
        }
    }
}

TEST(KeptLines, NameTheSameFilesFromAnotherFolder) {
    Loaded loaded(replaced(corners, "Media\\", "Media/"));
    const std::string moved = project_text(loaded.project, home / "sub");
    EXPECT_THAT(only_in(moved, corners), testing::Contains("FILE \"/songs/Media/door 04.wav\""));
    project::Project again;
    ASSERT_TRUE(parse_project(again, moved, home / "sub"));
    for (std::size_t take : {0U, 2U})
        EXPECT_EQ(again.track(1)->items()[1]->take(take)->source,
                  loaded.project.track(1)->items()[1]->take(take)->source);
}

TEST(State, OfAnObjectReplacesIt) {
    Loaded loaded(corners);
    for (std::size_t i = 0; i < loaded.project.tracks().size(); ++i) {
        project::Track& track = *loaded.project.track(i);
        ASSERT_TRUE(set_state(track, state_of(track)));
        for (const auto& item : track.items())
            ASSERT_TRUE(set_state(*item, state_of(*item)));
    }
    EXPECT_THAT(only_in(corners, loaded.text()), IsEmpty());
    EXPECT_THAT(only_in(loaded.text(), corners), IsEmpty());
    project::Item& item = *loaded.project.track(1)->items()[1];
    const std::string before = loaded.text();
    for (const char* text : {"", "<TRACK\n>", "<ITEM\n", "<ITEM\nPOSITION x\n>", "no block"})
        EXPECT_FALSE(set_state(item, text)) << text;
    EXPECT_EQ(loaded.text(), before);
    ASSERT_TRUE(set_state(item, "<ITEM\nPOSITION 3\nLENGTH 1\nFADEIN 1 2\n>"));
    EXPECT_THAT(item.takes(), IsEmpty());
    EXPECT_EQ(state_of(item), "<ITEM\nPOSITION 3\nLENGTH 1\nFADEIN 1 2\n>\n");
}

// Random changes, then the text is read again and must give the same text and the same model.
TEST(KeptLines, HoldWhateverChanges) {
    std::mt19937 random(11);
    const auto below = [&](std::size_t end) { return end == 0 ? 0 : random() % end; };
    for (int round = 0; round < 200; ++round) {
        Loaded loaded(round % 3 == 0 ? version_3 : corners);
        project::Project& project = loaded.project;
        for (int step = 0; step < 12; ++step) {
            project::Track* track = project.track(below(project.tracks().size()));
            project::Item* item =
                track
                    ? (track->items().empty() ? nullptr : track->items()[below(track->items().size())].get())
                    : nullptr;
            switch (below(12)) {
            case 0:
                project.insert_track(below(5)).name = "new " + std::to_string(step);
                break;
            case 1:
                if (track)
                    project.erase_track(*track);
                break;
            case 2:
                if (track)
                    track->add_item(static_cast<double>(below(10)), 1.0)
                        .add_take({.file = "/songs/n.wav"}, "n");
                break;
            case 3:
                if (item)
                    track->erase_item(*item);
                break;
            case 4:
                if (item)
                    item->set_position_seconds(static_cast<double>(below(8)) / 3.0);
                break;
            case 5:
                if (item)
                    item->add_take({.file = "/other/t.wav"}, "t")
                        .add_envelope("Volume")
                        .set_points({{0.0, 0.5}});
                break;
            case 6:
                if (item && !item->takes().empty())
                    item->set_active_take(*item->take(below(item->takes().size())));
                break;
            case 7:
                if (item && item->active_take() && !item->active_take()->is_empty)
                    item->crop_to_active_take();
                break;
            case 8:
                if (track)
                    track->set_folder_depth_change(static_cast<int>(below(3)) - 1);
                break;
            case 9:
                project.markers.add({true, static_cast<double>(below(9)), 9.0, "m", -1});
                break;
            case 10:
                project.markers.erase(below(4));
                break;
            default:
                if (track)
                    track->name = "`'\" " + std::to_string(step);
            }
        }
        const std::string text = loaded.text();
        Loaded again(text);
        ASSERT_EQ(again.text(), text);
        ASSERT_EQ(again.project.tracks().size(), project.tracks().size());
        ASSERT_EQ(again.project.markers.all(), project.markers.all());
        for (std::size_t i = 0; i < project.tracks().size(); ++i) {
            project::Track& track = *project.track(i);
            ASSERT_EQ(again.project.track(i)->name, track.name);
            ASSERT_EQ(again.project.track(i)->items().size(), track.items().size());
            for (std::size_t k = 0; k < track.items().size(); ++k) {
                const project::Item& item = *track.items()[k];
                const project::Item& read = *again.project.track(i)->items()[k];
                ASSERT_EQ(read.position_seconds(), item.position_seconds());
                ASSERT_EQ(read.takes().size(), item.takes().size());
                for (std::size_t t = 0; t < item.takes().size(); ++t) {
                    ASSERT_EQ(read.take(t)->is_empty, item.take(t)->is_empty);
                    ASSERT_EQ(read.take(t)->name, item.take(t)->name);
                    ASSERT_EQ(read.take(t)->source.root().file, item.take(t)->source.root().file);
                    ASSERT_EQ(read.active_take() == read.take(t), item.active_take() == item.take(t));
                }
            }
        }
    }
}

} // namespace
} // namespace headless::rpp
