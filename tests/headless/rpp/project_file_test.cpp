#include "headless/rpp/rpp.hpp"
#include "tests/headless/rpp/sample_project.hpp"
#include "tests/headless/support/scratch_folder.hpp"

#include <algorithm>
#include <gmock/gmock.h>
#include <iterator>
#include <tuple>

namespace headless::test {
namespace {

using testing::HasSubstr;

const std::filesystem::path home = "/home/somebody/my project";

template <class Parts, class Read>
auto each(const Parts& parts, Read read) {
    std::vector<decltype(read(*parts[0]))> all;
    std::transform(parts.begin(), parts.end(), std::back_inserter(all),
                   [&](const auto& part) { return read(*part); });
    return all;
}

auto contents(const Envelope& envelope) {
    const std::vector<EnvelopePoint> points(envelope.points().begin(), envelope.points().end());
    return std::tuple(envelope.name(), envelope.properties, points);
}

// The one name with all three quotes cannot be written as it is.
auto contents(const Take& take) {
    std::string name = take.name;
    std::ranges::replace(name, '`', '\'');
    return std::tuple(name, take.source, take.volume, take.pan, take.start_offset_seconds, take.play_rate,
                      take.preserve_pitch, take.pitch_semitones, take.channel_mode,
                      each(take.envelopes(), [](const Envelope& envelope) { return contents(envelope); }));
}

auto contents(const Item& item) {
    return std::tuple(item.position_seconds(), item.length_seconds(), item.selected(), item.volume,
                      item.snap_offset_seconds, item.mute, item.loop, item.plays_all_takes, item.color,
                      each(item.takes(), [&](const Take& take) {
                          return std::tuple(contents(take), &take == item.active_take());
                      }));
}

auto contents(const Track& track) {
    return std::tuple(track.name, track.color, track.volume, track.pan, track.mute, track.solo,
                      track.selected(), track.folder_depth_change(),
                      each(track.items(), [](const Item& item) { return contents(item); }));
}

auto contents(const Project& project) {
    return std::tuple(project.record_path, project.cursor_seconds, project.frame_rate, project.drop_frame,
                      project.sample_rate, project.tempo_bpm, project.meter_numerator,
                      project.meter_denominator, project.markers.all(), contents(project.master()),
                      each(project.tracks(), [](const Track& track) { return contents(track); }));
}

TEST(ProjectText, reads_back_as_the_project_it_was_written_from) {
    Project project;
    fill_sample(project, home);
    const std::string text = project_text(project, home);
    Project again;
    const auto parsed = parse_project(again, text, home);
    ASSERT_TRUE(parsed) << parsed.error().message;
    EXPECT_EQ(contents(project), contents(again));
    EXPECT_EQ(project_text(again, home), text);
}

TEST(ProjectText, closes_every_folder_and_none_that_was_not_opened) {
    Project project;
    for (const int change : {-2, 1, 1, 0, 1}) {
        project.insert_track(project.tracks().size()).set_folder_depth_change(change);
    }
    Project again;
    ASSERT_TRUE(parse_project(again, project_text(project, home), home));
    std::vector<int> changes;
    for (const auto& track : again.tracks()) {
        changes.push_back(track->folder_depth_change());
    }
    EXPECT_EQ(changes, (std::vector{0, 1, 1, 0, -2}));
}

TEST(ProjectText, names_audio_relative_below_the_projects_folder_and_absolutely_elsewhere) {
    const std::pair<std::filesystem::path, std::string> paths[] = {
        {home / "x/../audio/a.wav", "audio/a.wav"},
        {"/home/somebody/a.wav", "/home/somebody/a.wav"},
        {"/home/somebody/my project 2/a.wav", "/home/somebody/my project 2/a.wav"},
        {home / "..a.wav", "..a.wav"}};
    for (const auto& [file, written] : paths) {
        Project project;
        add_take(project.insert_track(0).add_item(0.0, 1.0), file, "");
        const std::string text = project_text(project, home);
        EXPECT_THAT(text, HasSubstr("FILE \"" + written + "\"\n"));
        Project again;
        ASSERT_TRUE(parse_project(again, text, home));
        EXPECT_EQ(again.item(0)->take(0)->source.file, file.lexically_normal());
    }
}

TEST(ProjectFile, that_cannot_be_written_or_read_is_a_failure_that_names_it_and_leaves_nothing) {
    const ScratchFolder folder;
    Project project;
    const auto without_folder = save_project(project, folder / "none/a.rpp");
    ASSERT_FALSE(without_folder);
    EXPECT_THAT(without_folder.error().message, HasSubstr("none/a.rpp"));
    std::filesystem::create_directories(folder / "taken.rpp" / "inside");
    EXPECT_FALSE(save_project(project, folder / "taken.rpp"));
    EXPECT_EQ(folder.entry_count(), 1U);
    for (const auto& file : {folder / "missing.rpp", folder.path}) {
        const auto loaded = load_project(project, file);
        ASSERT_FALSE(loaded);
        EXPECT_THAT(loaded.error().message, HasSubstr(file.string()));
    }
}

TEST(ProjectFile, that_is_malformed_is_a_failure_with_the_number_of_the_line) {
    const std::pair<const char*, const char*> malformed[] = {
        {"", "line 0: not a project file"},
        {"<ITEM\n>\n", "line 1: not a project file"},
        {">\n", "line 1: '>' ends a block that never began"},
        {"<REAPER_PROJECT 0.1\n<TRACK\nNAME x\n", "line 3: the file ends within a block"},
        {"<REAPER_PROJECT 0.1\nCURSOR here\n>\n", "line 2: 'here' is no number"},
        {"<REAPER_PROJECT 0.1\nCURSOR inf\n>\n", "line 2: 'inf' is no number"}};
    for (const auto& [text, message] : malformed) {
        Project project;
        const auto parsed = parse_project(project, text, "/");
        ASSERT_FALSE(parsed) << text;
        EXPECT_EQ(parsed.error().message, message);
    }
}

TEST(ProjectFile, nested_a_million_deep_is_read_without_harm) {
    std::string text = "<REAPER_PROJECT 0.1\n";
    for (int i = 0; i < 1'000'000; ++i) {
        text += "<TRACK\n";
    }
    Project cut;
    EXPECT_FALSE(parse_project(cut, text, "/"));
    for (int i = 0; i < 1'000'001; ++i) {
        text += ">\n";
    }
    Project whole;
    EXPECT_TRUE(parse_project(whole, text, "/"));
    EXPECT_EQ(whole.tracks().size(), 1U);
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
    EXPECT_EQ(item.take(1)->source.type, "SECTION");
    EXPECT_TRUE(item.take(1)->source.file.empty());
}

} // namespace
} // namespace headless::test
