// What a ride of whole files gives: figures, rendered files, the project, and what becomes of files that are
// none.

#include "headless/rpp/rpp.hpp"
#include "tests/headless/cli/command_runner.hpp"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sys/stat.h>

namespace headless {
namespace {

using RideCommand = FelsparCommand;

struct GainRange {
    double lowest_db = 0.0;
    double highest_db = 0.0;
};

/// What was done to the samples that are loud enough to tell.
GainRange gains_between(const Recording& before, const Recording& after) {
    GainRange range;
    for (std::size_t i = 0; i < before.samples.size(); ++i) {
        if (std::abs(before.samples[i]) < 0.02F)
            continue;
        const double gain_db = 20.0 * std::log10(after.samples[i] / before.samples[i]);
        range = {std::min(range.lowest_db, gain_db), std::max(range.highest_db, gain_db)};
    }
    return range;
}

TEST_F(RideCommand, reports_the_gains_that_the_rendered_file_was_given) {
    write_speech(folder / "line.wav", 6.0, 2);
    const Outcome outcome = felspar({"ride", "line.wav", "--json"});
    ASSERT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.errors, "");
    const auto report = outcome.objects().at(0);

    const Recording before = read_recording(folder / "line.wav");
    const Recording after = read_recording(folder / "ridden/line.wav");
    EXPECT_EQ(report["output"], "ridden/line.wav");
    EXPECT_EQ(after.sample_rate, before.sample_rate);
    EXPECT_EQ(after.channels, 2);
    ASSERT_EQ(after.samples.size(), before.samples.size());
    const GainRange gains = gains_between(before, after);
    EXPECT_LT(gains.lowest_db, -1.0) << "the loud syllables are cut";
    EXPECT_NEAR(report["largest_cut_db"].get<double>(), gains.lowest_db, 0.05);
    EXPECT_NEAR(report["largest_boost_db"].get<double>(), gains.highest_db, 0.05);
    EXPECT_EQ(report["length_seconds"], 6.0);
    EXPECT_EQ(report["windows"], 600);
    EXPECT_LT(report["points_kept"], 601);
    EXPECT_LT(report["momentary_max_after_lufs"], report["momentary_max_before_lufs"]);
}

TEST_F(RideCommand, prints_a_table_with_one_row_a_file) {
    write_speech(folder / "a.wav", 1.0);
    write_speech(folder / "b.wav", 0.3);
    const Outcome outcome = felspar({"ride", "a.wav", "b.wav"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 6);
    EXPECT_NE(outcome.output.find("-  b.wav\n"), std::string::npos) << "too short for a momentary loudness";
    EXPECT_NE(outcome.output.find("\n2 of 2 files ridden into ridden\n"), std::string::npos);
}

TEST_F(RideCommand, leaves_lower_peaks_with_ratio_3_than_with_ratio_0) {
    write_speech(folder / "line.wav", 3.0);
    std::filesystem::create_directory(folder / "hard");
    ASSERT_EQ(felspar({"ride", "line.wav"}).status, 0);
    ASSERT_EQ(felspar({"ride", "line.wav", "--ratio", "3", "-o", "hard"}).status, 0);
    const Recording light = read_recording(folder / "ridden/line.wav");
    const Recording hard = read_recording(folder / "hard/line.wav");
    EXPECT_LT(std::ranges::max(hard.samples), std::ranges::max(light.samples));
    EXPECT_GE(felspar({"ride", "line.wav", "--ratio", "5"}).status, 100) << "a usage error";
}

TEST_F(RideCommand, saves_a_project_of_items_a_second_apart_with_the_ride_to_edit) {
    write_speech(folder / "a.wav", 1.5);
    write_speech(folder / "b.wav", 2.0);
    ASSERT_EQ(felspar({"ride", "a.wav", "missing.wav", "b.wav", "--project", "ride.rpp"}).status, 1);

    Project project;
    const auto loaded = load_project(project, folder / "ride.rpp");
    ASSERT_TRUE(loaded) << loaded.error().message;
    ASSERT_EQ(project.item_count(), 2U);
    EXPECT_EQ(project.item(0)->position_seconds(), 0.0);
    EXPECT_EQ(project.item(1)->position_seconds(), 2.5);
    const Item& item = *project.item(1);
    ASSERT_EQ(item.takes().size(), 2U);
    EXPECT_EQ(item.active_take(), item.take(1));
    EXPECT_TRUE(std::filesystem::equivalent(item.take(0)->source.file, folder / "b.wav"));
    EXPECT_TRUE(std::filesystem::equivalent(item.take(1)->source.file, folder / "ridden/b.wav"));
    EXPECT_EQ(project.record_path, "ridden") << "the project and its renders can be moved together";
    const Envelope* volume = item.take(0)->envelope("Volume");
    ASSERT_NE(volume, nullptr);
    EXPECT_TRUE(volume->properties.active);
    EXPECT_GT(volume->points().size(), 2U);
}

struct BadFile {
    const char* name;
    void (*make)(const std::filesystem::path& file);
};

class BadRecording : public FelsparCommand, public testing::WithParamInterface<BadFile> {};

TEST_P(BadRecording, fails_alone_with_one_line_that_names_it) {
    write_speech(folder / "good.wav", 1.0);
    GetParam().make(folder / "bad\n.wav");
    const Outcome outcome = felspar({"ride", "bad\n.wav", "good.wav", "--json", "--project", "p.rpp"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << outcome.errors;
    EXPECT_NE(outcome.errors.find("bad\\n.wav"), std::string::npos) << outcome.errors;
    ASSERT_EQ(outcome.objects().size(), 2U);
    EXPECT_EQ(outcome.objects()[0]["file"], "bad\n.wav");
    EXPECT_TRUE(outcome.objects()[0]["error"].is_string());
    EXPECT_EQ(outcome.objects()[1]["file"], "good.wav");
    EXPECT_EQ(names_in("ridden"), std::vector<std::string>{"good.wav"});
    EXPECT_TRUE(std::filesystem::exists(folder / "p.rpp"));
}

INSTANTIATE_TEST_SUITE_P(
    kinds, BadRecording,
    testing::Values(
        BadFile{"missing", [](const std::filesystem::path&) {}},
        BadFile{"folder", [](const auto& file) { std::filesystem::create_directory(file); }},
        BadFile{"pipe", [](const auto& file) { mkfifo(file.c_str(), 0600); }},
        BadFile{"empty", [](const auto& file) { test::write_bytes(file, ""); }},
        BadFile{"text", [](const auto& file) { test::write_bytes(file, "RIFF and nothing of the kind"); }},
        BadFile{"cut_in_its_header",
                [](const auto& file) {
                    write_speech(file, 1.0);
                    std::filesystem::resize_file(file, 30);
                }},
        BadFile{"without_a_sample", [](const auto& file) { write_speech(file, 0.0); }}),
    [](const auto& row) { return row.param.name; });

TEST_F(RideCommand, rides_what_is_there_of_a_truncated_file) {
    write_speech(folder / "cut.wav", 2.0);
    std::filesystem::resize_file(folder / "cut.wav", 44 + 32000);
    const Outcome outcome = felspar({"ride", "cut.wav", "--json"});
    ASSERT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.objects().at(0)["length_seconds"], 1.0);
}

class FileName : public FelsparCommand, public testing::WithParamInterface<const char*> {};

TEST_P(FileName, of_any_kind_gives_one_rendered_file_one_row_and_a_readable_project) {
    write_speech(folder / GetParam(), 1.0);
    const Outcome outcome = felspar({"ride", "--project", "p.rpp", "--", GetParam()});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 5) << outcome.output;
    ASSERT_EQ(names_in("ridden").size(), 1U);
    Project project;
    ASSERT_TRUE(load_project(project, folder / "p.rpp"));
    EXPECT_EQ(project.item_count(), 1U);
    EXPECT_TRUE(std::filesystem::exists(project.item(0)->active_take()->source.file));
}

INSTANTIATE_TEST_SUITE_P(hostile, FileName,
                         testing::Values("it's \"so\".wav", "a `b` \"c\".wav", "a\nb\r\x1b[2J.wav",
                                         "台詞.wav", "caf\xe9.wav", "-o.wav", "ride", "import", "[1,2].wav",
                                         "{}", "%s%n.wav", "a.b.WAV", " "));

} // namespace
} // namespace headless
