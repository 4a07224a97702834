#include "headless/rpp/rpp.hpp"
#include "tests/headless/rpp/sample_project.hpp"

#include <gtest/gtest.h>

#include <algorithm>

namespace headless::test {
namespace {

void expect_equal(const Envelope& left, const Envelope& right) {
    EXPECT_EQ(left.name(), right.name());
    EXPECT_EQ(left.properties, right.properties);
    EXPECT_TRUE(std::ranges::equal(left.points(), right.points()));
}

// The one name with all three quotes cannot be written as it is.
std::string as_written(std::string name) {
    std::ranges::replace(name, '`', '\'');
    return name;
}

void expect_equal(const Take& left, const Take& right) {
    EXPECT_EQ(as_written(left.name), right.name);
    EXPECT_EQ(left.source, right.source);
    EXPECT_EQ(left.volume, right.volume);
    EXPECT_EQ(left.pan, right.pan);
    EXPECT_EQ(left.start_offset_seconds, right.start_offset_seconds);
    EXPECT_EQ(left.play_rate, right.play_rate);
    EXPECT_EQ(left.preserve_pitch, right.preserve_pitch);
    EXPECT_EQ(left.pitch_semitones, right.pitch_semitones);
    EXPECT_EQ(left.channel_mode, right.channel_mode);
    ASSERT_EQ(left.envelopes().size(), right.envelopes().size());
    for (std::size_t i = 0; i < left.envelopes().size(); ++i) {
        expect_equal(*left.envelopes()[i], *right.envelopes()[i]);
    }
}

std::size_t active_index(const Item& item) {
    std::size_t index = 0;
    while (item.take(index) != item.active_take()) {
        ++index;
    }
    return index;
}

void expect_equal(const Item& left, const Item& right) {
    EXPECT_EQ(left.position_seconds(), right.position_seconds());
    EXPECT_EQ(left.length_seconds(), right.length_seconds());
    EXPECT_EQ(left.selected(), right.selected());
    EXPECT_EQ(left.volume, right.volume);
    EXPECT_EQ(left.snap_offset_seconds, right.snap_offset_seconds);
    EXPECT_EQ(left.mute, right.mute);
    EXPECT_EQ(left.loop, right.loop);
    EXPECT_EQ(left.plays_all_takes, right.plays_all_takes);
    EXPECT_EQ(left.color, right.color);
    ASSERT_EQ(left.takes().size(), right.takes().size());
    EXPECT_EQ(active_index(left), active_index(right));
    for (std::size_t i = 0; i < left.takes().size(); ++i) {
        expect_equal(*left.take(i), *right.take(i));
    }
}

void expect_equal(const Track& left, const Track& right) {
    EXPECT_EQ(left.name, right.name);
    EXPECT_EQ(left.color, right.color);
    EXPECT_EQ(left.volume, right.volume);
    EXPECT_EQ(left.pan, right.pan);
    EXPECT_EQ(left.mute, right.mute);
    EXPECT_EQ(left.solo, right.solo);
    EXPECT_EQ(left.selected(), right.selected());
    EXPECT_EQ(left.folder_depth_change(), right.folder_depth_change());
    ASSERT_EQ(left.items().size(), right.items().size());
    for (std::size_t i = 0; i < left.items().size(); ++i) {
        expect_equal(*left.items()[i], *right.items()[i]);
    }
}

void expect_equal(const Project& left, const Project& right) {
    EXPECT_EQ(left.record_path, right.record_path);
    EXPECT_EQ(left.cursor_seconds, right.cursor_seconds);
    EXPECT_EQ(left.frame_rate, right.frame_rate);
    EXPECT_EQ(left.drop_frame, right.drop_frame);
    EXPECT_EQ(left.sample_rate, right.sample_rate);
    EXPECT_EQ(left.tempo_bpm, right.tempo_bpm);
    EXPECT_EQ(left.meter_numerator, right.meter_numerator);
    EXPECT_EQ(left.meter_denominator, right.meter_denominator);
    EXPECT_EQ(left.markers.all(), right.markers.all());
    expect_equal(left.master(), right.master());
    ASSERT_EQ(left.tracks().size(), right.tracks().size());
    for (std::size_t i = 0; i < left.tracks().size(); ++i) {
        expect_equal(*left.track(i), *right.track(i));
    }
}

const std::filesystem::path folder = "/home/somebody/my project";

TEST(ProjectText, reads_back_as_the_project_it_was_written_from) {
    Project project;
    fill_sample(project, folder);
    const std::string text = project_text(project, folder);
    Project again;
    const auto parsed = parse_project(again, text, folder);
    ASSERT_TRUE(parsed) << parsed.error().message;
    expect_equal(project, again);
    EXPECT_EQ(project_text(again, folder), text);
}

TEST(ProjectText, closes_every_folder_and_none_that_was_not_opened) {
    Project project;
    for (const int change : {-2, 1, 1, 0, 1}) {
        project.insert_track(project.tracks().size()).set_folder_depth_change(change);
    }
    Project again;
    ASSERT_TRUE(parse_project(again, project_text(project, folder), folder));
    std::vector<int> changes;
    for (const auto& track : again.tracks()) {
        changes.push_back(track->folder_depth_change());
    }
    EXPECT_EQ(changes, (std::vector{0, 1, 1, 0, -2}));
}

struct PathCase {
    const char* name;
    std::filesystem::path file;
    const char* written;
};

class AudioPath : public testing::TestWithParam<PathCase> {};

TEST_P(AudioPath, is_relative_below_the_projects_folder_and_absolute_elsewhere) {
    Project project;
    add_take(project.insert_track(0).add_item(0.0, 1.0), GetParam().file, "");
    const std::string text = project_text(project, folder);
    EXPECT_NE(text.find("FILE \"" + std::string(GetParam().written) + "\"\n"), std::string::npos) << text;
    Project again;
    ASSERT_TRUE(parse_project(again, text, folder));
    EXPECT_EQ(again.item(0)->take(0)->source.file, GetParam().file.lexically_normal());
}

INSTANTIATE_TEST_SUITE_P(Project, AudioPath,
                         testing::Values(PathCase{"beside", folder / "a.wav", "a.wav"},
                                         PathCase{"below", folder / "x/../audio/a.wav", "audio/a.wav"},
                                         PathCase{"above", "/home/somebody/a.wav", "/home/somebody/a.wav"},
                                         PathCase{"in_a_folder_of_like_name",
                                                  "/home/somebody/my project 2/a.wav",
                                                  "/home/somebody/my project 2/a.wav"},
                                         PathCase{"hidden", folder / "..a.wav", "..a.wav"}),
                         [](const auto& row) { return row.param.name; });

} // namespace
} // namespace headless::test
