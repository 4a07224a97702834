#include "headless/rpp/rpp.hpp"
#include "tests/headless/rpp/sample_project.hpp"
#include "tests/headless/support/scratch_folder.hpp"

#include <gtest/gtest.h>

namespace headless::test {
namespace {

TEST(ProjectFile, is_written_the_same_each_time_and_known_as_our_own) {
    const ScratchFolder folder;
    Project project;
    fill_sample(project, folder.path);
    ASSERT_TRUE(save_project(project, folder / "first.rpp"));
    ASSERT_TRUE(save_project(project, folder / "second.rpp"));
    EXPECT_EQ(bytes_of(folder / "first.rpp"), bytes_of(folder / "second.rpp"));
    EXPECT_TRUE(is_own_project(folder / "first.rpp"));
    Project again;
    ASSERT_TRUE(load_project(again, folder / "first.rpp"));
    EXPECT_EQ(again.file, folder / "first.rpp");
    EXPECT_EQ(again.item(0)->take(0)->source.file, project.item(0)->take(0)->source.file);
}

TEST(ProjectFile, of_another_program_is_not_known_as_our_own) {
    const ScratchFolder folder;
    write_bytes(folder / "other.rpp", "<REAPER_PROJECT 0.1 \"6.19/linux-x86_64\" 1700000000\n>\n");
    write_bytes(folder / "empty.rpp", "");
    EXPECT_FALSE(is_own_project(folder / "other.rpp"));
    EXPECT_FALSE(is_own_project(folder / "empty.rpp"));
    EXPECT_FALSE(is_own_project(folder / "missing.rpp"));
    EXPECT_FALSE(is_own_project(folder.path));
    Project project;
    EXPECT_TRUE(load_project(project, folder / "other.rpp"));
}

TEST(ProjectFile, that_cannot_be_written_leaves_the_old_one_and_nothing_else) {
    const ScratchFolder folder;
    Project project;
    const auto without_folder = save_project(project, folder / "none/a.rpp");
    ASSERT_FALSE(without_folder);
    EXPECT_NE(without_folder.error().message.find("none/a.rpp"), std::string::npos);
    std::filesystem::create_directories(folder / "taken.rpp" / "inside");
    EXPECT_FALSE(save_project(project, folder / "taken.rpp"));
    EXPECT_EQ(folder.entry_count(), 1U);
}

TEST(ProjectFile, that_cannot_be_read_is_a_failure_that_names_it) {
    const ScratchFolder folder;
    for (const auto& file : {folder / "missing.rpp", folder.path}) {
        Project project;
        const auto loaded = load_project(project, file);
        ASSERT_FALSE(loaded);
        EXPECT_NE(loaded.error().message.find(file.string()), std::string::npos);
    }
}

struct MalformedCase {
    const char* name;
    const char* text;
    const char* message;
};

class MalformedProject : public testing::TestWithParam<MalformedCase> {};

TEST_P(MalformedProject, is_a_failure_with_the_number_of_the_line) {
    Project project;
    const auto parsed = parse_project(project, GetParam().text, "/");
    ASSERT_FALSE(parsed);
    EXPECT_EQ(parsed.error().message, GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    ProjectFile, MalformedProject,
    testing::Values(
        MalformedCase{"empty", "", "line 0: not a project file"},
        MalformedCase{"another_kind", "<ITEM\n>\n", "line 1: not a project file"},
        MalformedCase{"an_end_without_a_beginning", ">\n", "line 1: '>' ends a block that never began"},
        MalformedCase{"cut_off", "<REAPER_PROJECT 0.1\n<TRACK\nNAME x\n",
                      "line 3: the file ends within a block"},
        MalformedCase{"a_word_for_a_number", "<REAPER_PROJECT 0.1\nCURSOR here\n>\n",
                      "line 2: 'here' is no number"},
        MalformedCase{"infinity", "<REAPER_PROJECT 0.1\nCURSOR inf\n>\n", "line 2: 'inf' is no number"}),
    [](const auto& row) { return row.param.name; });

TEST(ProjectFile, nested_a_million_deep_is_read_without_harm) {
    std::string text = "<REAPER_PROJECT 0.1\n";
    for (int i = 0; i < 1'000'000; ++i) {
        text += "<TRACK\n";
    }
    Project project;
    EXPECT_FALSE(parse_project(project, text, "/"));
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
        "  <NOTES 0 2\r\n    |> no end\r\n  >\r\n  TEMPO 90 3 4\r\n"
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
