#include "headless/rpp/rpp.hpp"
#include "tests/headless/rpp/sample_project.hpp"
#include "tests/headless/support/failures.hpp"
#include "tests/headless/support/scratch_folder.hpp"

#include <algorithm>
#include <map>
#include <tuple>

namespace headless::project { // the overloads of contents() are found beside the types

using test::fails_telling;

const std::filesystem::path home = "/home/somebody/my project";

template <class Parts>
static auto each(const Parts& parts) {
    std::vector<decltype(contents(*parts[0]))> all;
    for (const auto& part : parts)
        all.push_back(contents(*part));
    return all;
}

static auto contents(const project::Envelope& envelope) {
    const std::vector<project::EnvelopePoint> points(envelope.points().begin(), envelope.points().end());
    return std::tuple(envelope.name(), envelope.properties, points);
}

// Line breaks and NULs cannot be written as they are.
static auto contents(const project::Take& take) {
    std::string name = take.name;
    std::ranges::replace_if(
        name, [](char letter) { return letter == '\r' || letter == '\n' || letter == '\0'; }, ' ');
    return std::tuple(name, take.source, take.volume, take.pan, take.start_offset_seconds, take.play_rate,
                      take.preserve_pitch, take.pitch_semitones, take.channel_mode, each(take.envelopes()),
                      take.item().active_take() == &take);
}

static auto contents(const project::Item& item) {
    return std::tuple(item.position_seconds(), item.length_seconds(), item.selected(), item.volume,
                      item.snap_offset_seconds, item.mute, item.loop, item.plays_all_takes, item.color,
                      each(item.takes()));
}

static auto contents(const project::Track& track) {
    return std::tuple(track.name, track.color, track.volume, track.pan, track.mute, track.solo,
                      track.selected(), track.folder_depth_change(), each(track.items()));
}

static auto contents(const project::Project& project) {
    return std::tuple(project.record_path, project.cursor_seconds, project.frame_rate, project.drop_frame,
                      project.sample_rate, project.tempo_bpm, project.meter_numerator,
                      project.meter_denominator, project.markers.all(), contents(project.master()),
                      each(project.tracks()));
}

TEST(ProjectText, ReadsBackUnchanged) {
    project::Project project;
    test::fill_sample(project, home);
    const std::string text = rpp::project_text(project, home);
    project::Project again;
    const auto parsed = rpp::parse_project(again, text, home);
    ASSERT_TRUE(parsed) << parsed.error().message;
    EXPECT_EQ(contents(project), contents(again));
    EXPECT_EQ(rpp::project_text(again, home), text);
}

static std::map<std::string, std::string> object_names(const project::Project& project) {
    return {{"track 1", project.track(0)->name},
            {"take 1 of item 1 on track 1", project.item(0)->active_take()->name},
            {"marker 3", project.markers.all()[0].name},
            {"region 4", project.markers.all()[1].name}};
}

TEST(ProjectText, ReportsEveryNameItChanges) {
    struct Name {
        std::string text;
        std::size_t changed; ///< of the track, the take, the marker and the region with that name
    };
    const Name names[] = {{"", 0},
                          {" |bar ", 0},
                          {"say \"no\", it's", 0},
                          {"all \"of\" 'the' `quotes` ", 2},
                          {"\"'`", 2},
                          {"\"'`\t|> <", 2},
                          {"tab\t\x01\x1B[2J\x7F", 0},
                          {"a\nb", 4},
                          {"\"'`\rb\r", 4},
                          {std::string("a\0b", 3), 4}};
    for (const auto& [text, changed] : names) {
        project::Project project;
        project::Track& track = project.insert_track(0);
        track.name = text;
        test::add_take(track.add_item(0.0, 1.0), "/a.wav", text);
        project.markers.add({false, 1.0, 0.0, text, 3, 0});
        project.markers.add({true, 2.0, 3.0, text, 4, 0});
        for (const auto line_end : {"\n", "\r\n"}) {
            std::string file;
            for (const char letter : rpp::project_text(project, home))
                file += letter == '\n' ? line_end : std::string(1, letter);
            project::Project again;
            ASSERT_TRUE(rpp::parse_project(again, file, home)) << file;
            auto expected = object_names(project);
            EXPECT_EQ(rpp::names_that_do_not_fit(project).size(), changed) << text;
            for (const rpp::ChangedName& name : rpp::names_that_do_not_fit(project)) {
                EXPECT_EQ(name.name, text);
                EXPECT_NE(name.written, text);
                expected[name.object] = name.written;
            }
            EXPECT_EQ(object_names(again), expected) << file;
            EXPECT_EQ(rpp::project_text(again, home), file);
        }
    }
}

TEST(ProjectText, ClosesExactlyTheOpenFolders) {
    project::Project project;
    for (const int change : {1, 0, 1, 1, -2})
        project.insert_track(0).set_folder_depth_change(change); // before the others
    project::Project again;
    ASSERT_TRUE(rpp::parse_project(again, rpp::project_text(project, home), home));
    for (std::size_t i = 0; const int written : {0, 1, 1, 0, -2})
        EXPECT_EQ(again.track(i++)->folder_depth_change(), written);
}

TEST(ProjectText, StoresPathsBelowItsFolderAsRelative) {
    const std::pair<std::filesystem::path, std::string> paths[] = {
        {home / "x/../audio/a.wav", "audio/a.wav"},
        {"/home/somebody/my project 2/a.wav", "/home/somebody/my project 2/a.wav"},
        {home / "..a.wav", "..a.wav"}};
    for (const auto& [file, written] : paths) {
        project::Project project;
        test::add_take(project.insert_track(0).add_item(0.0, 1.0), file, "");
        EXPECT_THAT(rpp::project_text(project, home), testing::HasSubstr("FILE \"" + written + "\"\n"));
    }
}

TEST(ProjectFile, NamesTheFileThatFails) {
    const test::ScratchFolder folder;
    project::Project project;
    std::filesystem::create_directories(folder / "taken.rpp" / "inside");
    EXPECT_THAT(rpp::save_project(project, folder / "none/a.rpp"), fails_telling("none/a.rpp"));
    EXPECT_THAT(rpp::save_project(project, folder / "taken.rpp"), fails_telling("taken.rpp"));
    EXPECT_THAT(test::names_in(folder.path), testing::ElementsAre("taken.rpp"));
    EXPECT_THAT(rpp::load_project(project, folder / "missing.rpp"), fails_telling("missing.rpp"));
    EXPECT_THAT(rpp::load_project(project, folder.path), fails_telling(folder.path.string()));
}

TEST(ProjectFile, NamesTheMalformedLine) {
    std::string deep = "<REAPER_PROJECT 0.1\n";
    for (int i = 0; i < 1'000'000; ++i)
        deep += "<TRACK\n";
    const std::pair<std::string, std::string> malformed[] = {
        {deep, "line 5001: blocks are nested too deeply"},
        {"", "line 0: there is no block"},
        {"<ITEM\n>\n", "line 1: not a project file"},
        {">\n", "line 1: '>' ends a block that never began"},
        {"<REAPER_PROJECT 0.1\nCURSOR inf\n>\n", "line 2: 'inf' is no number"}};
    for (const auto& [text, message] : malformed) {
        project::Project project;
        EXPECT_THAT(rpp::parse_project(project, text, "/"), fails_telling(message));
    }
}

TEST(ProjectFile, ReadsAmongUnknownLinesAndBlocks) {
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
    project::Project project;
    const auto parsed = rpp::parse_project(project, text, "/songs");
    ASSERT_TRUE(parsed) << parsed.error().message;
    EXPECT_EQ(project.tempo_bpm, 90.0);
    const std::vector<project::Marker> markers{{false, 1.5, 0.0, "cue", 3, 0},
                                               {true, 2.0, 4.0, "scene", 1, 0},
                                               {true, 5.0, 5.0, "never closed", 9, 0}};
    EXPECT_EQ(project.markers.all(), markers);
    EXPECT_EQ(project.track(0)->name, "Drums");
    const project::Item& item = *project.item(0);
    ASSERT_EQ(item.takes().size(), 3U);
    EXPECT_EQ(item.take(0)->source.file, "/songs/a b.wav");
    EXPECT_TRUE(item.take(1)->is_empty);
    EXPECT_EQ(item.active_take(), item.take(2));
    EXPECT_EQ(item.take(2)->source.root().file, "/songs/c.wav");
    EXPECT_EQ(item.take(2)->source.section, (project::Section{.start_seconds = 0.0, .length_seconds = 1.0}));
    EXPECT_EQ(rpp::project_text(project, "/songs"), text);
}

} // namespace headless::project
