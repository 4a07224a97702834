// What a ride of whole files gives: figures, rendered files, the project, and what becomes of files that are
// none.

#include "headless/rpp/rpp.hpp"
#include "tests/headless/cli/command_runner.hpp"

#include <algorithm>
#include <sys/stat.h>

namespace headless::test {
namespace {

using RideCommand = FelsparCommand;
using testing::HasSubstr;
namespace fs = std::filesystem;

/// Lowest and highest gain in decibels that was given to the samples that are loud enough to tell.
std::pair<double, double> gains_between(const Sound& before, const Sound& after) {
    std::pair<double, double> range{0.0, 0.0};
    for (std::size_t i = 0; i < before.samples.size(); ++i) {
        if (std::abs(before.samples[i]) >= 0.02F) {
            const double gain_db = 20.0 * std::log10(after.samples[i] / before.samples[i]);
            range = {std::min(range.first, gain_db), std::max(range.second, gain_db)};
        }
    }
    return range;
}

TEST_F(RideCommand, reports_the_gains_that_the_rendered_file_was_given) {
    write_speech(folder / "line.wav", 6.0, 2);
    const Outcome outcome = felspar({"ride", "line.wav", "--json"});
    ASSERT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.errors, "");
    const auto report = outcome.objects().at(0);
    const Sound before = read_sound(folder / "line.wav");
    const Sound after = read_sound(folder / "ridden/line.wav");
    EXPECT_EQ(report["output"], "ridden/line.wav");
    EXPECT_EQ(after.sample_rate, 16000);
    EXPECT_EQ(after.channels, 2);
    ASSERT_EQ(after.samples.size(), before.samples.size());
    const auto [lowest_db, highest_db] = gains_between(before, after);
    EXPECT_LT(lowest_db, -1.0) << "the loud syllables are cut";
    EXPECT_NEAR(report["largest_cut_db"].get<double>(), lowest_db, 0.05);
    EXPECT_NEAR(report["largest_boost_db"].get<double>(), highest_db, 0.05);
    EXPECT_EQ(report["length_seconds"], 6.0);
    EXPECT_EQ(report["windows"], 600);
    EXPECT_LT(report["points_kept"], 601);
    EXPECT_LT(report["momentary_max_after_lufs"], report["momentary_max_before_lufs"]);
}

TEST_F(RideCommand, leaves_lower_peaks_with_ratio_3_than_with_ratio_0) {
    write_speech(folder / "line.wav", 3.0);
    fs::create_directory(folder / "hard");
    ASSERT_EQ(felspar({"ride", "line.wav"}).status, 0);
    ASSERT_EQ(felspar({"ride", "line.wav", "--ratio", "3", "-o", "hard"}).status, 0);
    EXPECT_LT(std::ranges::max(read_sound(folder / "hard/line.wav").samples),
              std::ranges::max(read_sound(folder / "ridden/line.wav").samples));
    EXPECT_GE(felspar({"ride", "line.wav", "--ratio", "5"}).status, 100) << "a usage error";
}

TEST_F(RideCommand, saves_a_project_of_items_a_second_apart_with_the_ride_to_edit) {
    write_speech(folder / "a.wav", 0.3);
    write_speech(folder / "b.wav", 2.0);
    const Outcome outcome = felspar({"ride", "a.wav", "missing.wav", "b.wav", "--project", "ride.rpp"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.output, HasSubstr("-  a.wav\n")) << "too short for a momentary loudness";
    EXPECT_THAT(outcome.output, HasSubstr("\n2 of 3 files ridden into ridden, project ride.rpp\n"));
    Project project;
    const auto loaded = load_project(project, folder / "ride.rpp");
    ASSERT_TRUE(loaded) << loaded.error().message;
    ASSERT_EQ(project.item_count(), 2U);
    EXPECT_EQ(project.item(0)->position_seconds(), 0.0);
    EXPECT_EQ(project.item(1)->position_seconds(), 1.3);
    const Item& item = *project.item(1);
    ASSERT_EQ(item.takes().size(), 2U);
    EXPECT_EQ(item.active_take(), item.take(1));
    EXPECT_TRUE(fs::equivalent(item.take(0)->source.file, folder / "b.wav"));
    EXPECT_TRUE(fs::equivalent(item.take(1)->source.file, folder / "ridden/b.wav"));
    EXPECT_EQ(project.record_path, "ridden") << "the project and its renders can be moved together";
    const Envelope* volume = item.take(0)->envelope("Volume");
    ASSERT_NE(volume, nullptr);
    EXPECT_TRUE(volume->properties.active);
    EXPECT_GT(volume->points().size(), 2U);
}

TEST_F(RideCommand, says_in_one_line_why_a_file_is_no_recording_and_rides_the_others) {
    const std::pair<std::string, const char*> reasons[] = {{"missing", "missing: "},
                                                           {"a folder", "folder"},
                                                           {"a pipe", "regular"},
                                                           {"a device", "regular"},
                                                           {"empty", "is empty"},
                                                           {"a\ntext", "a\\ntext: is no audio file"},
                                                           {"cut in its header", "no audio file"},
                                                           {"without a frame", "no audio"}};
    fs::create_directory(folder / "a folder");
    mkfifo((folder / "a pipe").c_str(), 0600);
    fs::create_symlink("/dev/zero", folder / "a device");
    write_bytes(folder / "empty", "");
    write_bytes(folder / "a\ntext", "RIFF and nothing of the kind");
    write_speech(folder / "cut in its header", 1.0);
    fs::resize_file(folder / "cut in its header", 30);
    write_speech(folder / "without a frame", 0.0);
    write_speech(folder / "truncated", 2.0);
    fs::resize_file(folder / "truncated", 44 + 32000);
    for (const auto& [name, reason] : reasons) {
        const Outcome outcome = felspar({"ride", name, "truncated", "--json", "--project", "p.rpp"});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(std::ranges::count(outcome.errors, '\n'), 1) << outcome.errors;
        EXPECT_THAT(outcome.errors, HasSubstr(reason));
        const auto objects = outcome.objects();
        ASSERT_EQ(objects.size(), 2U);
        EXPECT_EQ(objects[0]["file"], name);
        EXPECT_TRUE(objects[0]["error"].is_string());
        EXPECT_EQ(objects[1]["length_seconds"], 1.0);
        EXPECT_EQ(ridden_names(), std::vector<std::string>{"truncated.wav"});
        EXPECT_TRUE(fs::remove(folder / "p.rpp"));
    }
}

// A recording whose path the project file cannot hold is lost in it, but its render is not.
class FileName : public FelsparCommand, public testing::WithParamInterface<const char*> {};

TEST_P(FileName, of_any_kind_gives_one_rendered_file_one_row_and_a_readable_project) {
    write_speech(folder / GetParam(), 1.0);
    const Outcome outcome = felspar({"ride", "--project", "p.rpp", "--", GetParam()});
    const bool fits = !std::string(GetParam()).starts_with("lost");
    EXPECT_EQ(outcome.status, fits ? 0 : 1) << outcome.errors;
    EXPECT_EQ(outcome.errors.empty(), fits) << "and no progress without a terminal: " << outcome.errors;
    EXPECT_THAT(outcome.errors, HasSubstr(fits ? "" : "p.rpp: cannot hold the path of"));
    EXPECT_EQ(std::ranges::count(outcome.output, '\n'), 5) << outcome.output;
    EXPECT_EQ(ridden_names().size(), 1U);
    Project project;
    ASSERT_TRUE(load_project(project, folder / "p.rpp"));
    ASSERT_EQ(project.item_count(), 1U);
    EXPECT_TRUE(fs::exists(project.item(0)->active_take()->source.file));
}

INSTANTIATE_TEST_SUITE_P(hostile, FileName,
                         testing::Values("it's \"so\".wav", "a `b` \"c\".wav", "lost\nb\r\x1b[2J.wav",
                                         "lost \"'`.wav", "台詞.wav", "caf\xe9.wav", "-o.wav", "ride",
                                         "import", "[1,2].wav", "{}", "%s%n.wav", "a.b.WAV", " "));

} // namespace
} // namespace headless::test
