#include "headless/rpp/rpp.hpp"
#include "tests/headless/rpp/sample_project.hpp"
#include "tests/headless/support/failures.hpp"
#include "tests/headless/support/scratch_folder.hpp"

#include <algorithm>
#include <cctype>
#include <tuple>

namespace headless {

using test::fails_telling;

const std::filesystem::path home = "/home/somebody/my project";

template <class Parts>
static auto each(const Parts& parts) {
    std::vector<decltype(contents(*parts[0]))> all;
    for (const auto& part : parts) {
        all.push_back(contents(*part));
    }
    return all;
}

static auto contents(const Envelope& envelope) {
    const std::vector<EnvelopePoint> points(envelope.points().begin(), envelope.points().end());
    return std::tuple(envelope.name(), envelope.properties, points);
}

// The name with all three quotes and the one with control characters cannot be written as they are.
static auto contents(const Take& take) {
    std::string name = take.name;
    std::ranges::replace(name, '`', '\'');
    std::ranges::replace_if(
        name, [](unsigned char letter) { return std::iscntrl(letter) != 0; }, ' ');
    return std::tuple(name, take.source, take.volume, take.pan, take.start_offset_seconds, take.play_rate,
                      take.preserve_pitch, take.pitch_semitones, take.channel_mode, each(take.envelopes()),
                      take.item().active_take() == &take);
}

static auto contents(const Item& item) {
    return std::tuple(item.position_seconds(), item.length_seconds(), item.selected(), item.volume,
                      item.snap_offset_seconds, item.mute, item.loop, item.plays_all_takes, item.color,
                      each(item.takes()));
}

static auto contents(const Track& track) {
    return std::tuple(track.name, track.color, track.volume, track.pan, track.mute, track.solo,
                      track.selected(), track.folder_depth_change(), each(track.items()));
}

static auto contents(const Project& project) {
    return std::tuple(project.record_path, project.cursor_seconds, project.frame_rate, project.drop_frame,
                      project.sample_rate, project.tempo_bpm, project.meter_numerator,
                      project.meter_denominator, project.markers.all(), contents(project.master()),
                      each(project.tracks()));
}

TEST(ProjectText, reads_back_as_the_project_it_was_written_from) {
    Project project;
    test::fill_sample(project, home);
    const std::string text = project_text(project, home);
    Project again;
    const auto parsed = parse_project(again, text, home);
    ASSERT_TRUE(parsed) << parsed.error().message;
    EXPECT_EQ(contents(project), contents(again));
    EXPECT_EQ(project_text(again, home), text);
}

TEST(ProjectText, closes_every_folder_and_none_that_was_not_opened) {
    Project project;
    for (const int change : {1, 0, 1, 1, -2}) {
        project.insert_track(0).set_folder_depth_change(change); // before the others
    }
    Project again;
    ASSERT_TRUE(parse_project(again, project_text(project, home), home));
    for (std::size_t i = 0; const int written : {0, 1, 1, 0, -2}) {
        EXPECT_EQ(again.track(i++)->folder_depth_change(), written);
    }
}

TEST(ProjectText, names_audio_relative_below_the_projects_folder_and_absolutely_elsewhere) {
    const std::pair<std::filesystem::path, std::string> paths[] = {
        {home / "x/../audio/a.wav", "audio/a.wav"},
        {"/home/somebody/my project 2/a.wav", "/home/somebody/my project 2/a.wav"},
        {home / "..a.wav", "..a.wav"}};
    for (const auto& [file, written] : paths) {
        Project project;
        test::add_take(project.insert_track(0).add_item(0.0, 1.0), file, "");
        EXPECT_THAT(project_text(project, home), testing::HasSubstr("FILE \"" + written + "\"\n"));
    }
}

TEST(ProjectFile, that_cannot_be_written_or_read_is_a_failure_that_names_it_and_leaves_nothing) {
    const test::ScratchFolder folder;
    Project project;
    std::filesystem::create_directories(folder / "taken.rpp" / "inside");
    EXPECT_THAT(save_project(project, folder / "none/a.rpp"), fails_telling("none/a.rpp"));
    EXPECT_THAT(save_project(project, folder / "taken.rpp"), fails_telling("taken.rpp"));
    EXPECT_THAT(test::names_in(folder.path), testing::ElementsAre("taken.rpp"));
    EXPECT_THAT(load_project(project, folder / "missing.rpp"), fails_telling("missing.rpp"));
    EXPECT_THAT(load_project(project, folder.path), fails_telling(folder.path.string()));
}

TEST(ProjectFile, that_is_malformed_is_a_failure_with_the_number_of_the_line) {
    std::string deep = "<REAPER_PROJECT 0.1\n";
    for (int i = 0; i < 1'000'000; ++i) {
        deep += "<TRACK\n";
    }
    const std::pair<std::string, std::string> malformed[] = {
        {deep, "line 1000001: the file ends within a block"},
        {"", "line 0: not a project file"},
        {"<ITEM\n>\n", "line 1: not a project file"},
        {">\n", "line 1: '>' ends a block that never began"},
        {"<REAPER_PROJECT 0.1\nCURSOR inf\n>\n", "line 2: 'inf' is no number"}};
    for (const auto& [text, message] : malformed) {
        Project project;
        EXPECT_THAT(parse_project(project, text, "/"), fails_telling(message));
    }
}

TEST(ProjectFile, of_a_workstation_is_read_past_all_that_is_unknown) {
    const char* text =
        "\xEF\xBB\xBF<REAPER_PROJECT 0.1 \"6.80/win64\" 1700000000\r\n"
        "  <NOTES 0 2\r\n    |> no end\r\n  >\r\n\r\n  TEMPO 90 3 4\r\n"
        "  MARKER 3 1.5 cue 8\r\n  MARKER 1 2 scene 1 0 1 R {A} 0\r\n  MARKER 1 4 \"\" 1\r\n"
        "  MARKER 9 5 \"never closed\" 1\r\n"
        "  <TRACK\r\n    NAME Drums\r\n    PEAKCOL 16576\r\n    <FXCHAIN\r\n      <VST \"x\" y 0 \"\"\r\n"
        "        ZXZhdw==\r\n      >\r\n    >\r\n    <ITEM\r\n      POSITION 2\r\n      LENGTH 3\r\n"
        "      <SOURCE WAVE\r\n        FILE \"a b.wav\" 1\r\n      >\r\n      TAKE NULL\r\n"
        "      TAKE SEL\r\n      NAME second\r\n      <SOURCE SECTION\r\n        LENGTH 1\r\n"
        "        <SOURCE WAVE\r\n          FILE c.wav\r\n        >\r\n      >\r\n    >\r\n  >\r\n>\r\n";
    Project project;
    const auto parsed = parse_project(project, text, "/songs");
    ASSERT_TRUE(parsed) << parsed.error().message;
    EXPECT_EQ(project.tempo_bpm, 90.0);
    const std::vector<Marker> markers{{false, 1.5, 0.0, "cue", 3, 0},
                                      {true, 2.0, 4.0, "scene", 1, 0},
                                      {true, 5.0, 5.0, "never closed", 9, 0}};
    EXPECT_EQ(project.markers.all(), markers);
    EXPECT_EQ(project.track(0)->name, "Drums");
    const Item& item = *project.item(0);
    ASSERT_EQ(item.takes().size(), 2U);
    EXPECT_EQ(item.take(0)->source.file, "/songs/a b.wav");
    EXPECT_EQ(item.active_take(), item.take(1));
    EXPECT_EQ(item.take(1)->source, (Source{.file = {}, .type = "SECTION"}));
}

} // namespace headless
