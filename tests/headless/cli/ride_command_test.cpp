// Rides of whole files: figures, renders, the project, and files that are no recordings.

#include "headless/rpp/rpp.hpp"
#include "tests/headless/cli/command_runner.hpp"

#include <algorithm>
#include <sys/stat.h>

namespace headless::test {
namespace {

using RideCommand = FelsparCommand;
using testing::ElementsAre;
using testing::HasSubstr;
namespace fs = std::filesystem;

/// Lowest and highest gain in decibels, of the samples that are loud enough to tell.
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

TEST_F(RideCommand, ReportsTheGainsOfTheRender) {
    write_speech(folder / "line.wav", 6.0, 2);
    const Outcome outcome = felspar({"ride", "line.wav", "--json"});
    EXPECT_EQ(outcome.errors, "");
    ASSERT_EQ(outcome.status, 0);
    const auto report = nlohmann::json::parse(outcome.output);
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
    EXPECT_EQ(report["windows"], 600);
    EXPECT_LT(report["points_kept"], 601);
    EXPECT_LT(report["momentary_max_after_lufs"], report["momentary_max_before_lufs"]);
    fs::create_directory(folder / "hard");
    ASSERT_EQ(felspar({"ride", "line.wav", "--ratio", "3", "-o", "hard"}).status, 0);
    EXPECT_LT(std::ranges::max(read_sound(folder / "hard/line.wav").samples),
              std::ranges::max(after.samples));
    EXPECT_EQ(felspar({"ride", "line.wav", "--ratio", "5"}).status, 2) << "a usage error";
}

TEST_F(RideCommand, SavesAProjectWithEditableRides) {
    write_speech(folder / "a.wav", 0.3);
    write_speech(folder / "b.wav", 2.0);
    const Outcome outcome = felspar({"ride", "a.wav", "missing.wav", "b.wav", "--project", "ride.rpp"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.output, HasSubstr("-  a.wav\n")) << "too short for a momentary loudness";
    EXPECT_THAT(outcome.output, HasSubstr("\n2 of 3 files ridden into ridden, project ride.rpp\n"));
    project::Project project;
    ASSERT_TRUE(rpp::load_project(project, folder / "ride.rpp"));
    ASSERT_EQ(project.item_count(), 2U);
    EXPECT_EQ(project.item(1)->position_seconds(), 1.3);
    const project::Item& item = *project.item(1);
    ASSERT_EQ(item.takes().size(), 2U);
    EXPECT_EQ(item.active_take(), item.take(1));
    EXPECT_TRUE(fs::equivalent(item.take(0)->source.file, folder / "b.wav"));
    EXPECT_TRUE(fs::equivalent(item.take(1)->source.file, folder / "ridden/b.wav"));
    EXPECT_EQ(project.record_path, "ridden") << "the project and its renders can be moved together";
    const project::Envelope* volume = item.take(0)->envelope("Volume");
    ASSERT_NE(volume, nullptr);
    EXPECT_TRUE(volume->properties.active);
    EXPECT_GT(volume->points().size(), 2U);
}

TEST_F(RideCommand, SkipsFilesThatAreNoRecordings) {
    fs::create_directory(folder / "a folder");
    mkfifo((folder / "a pipe").c_str(), 0600);
    fs::create_symlink("/dev/zero", folder / "a device");
    write_bytes(folder / "empty", "");
    write_bytes(folder / "a\ntext", "RIFF and nothing of the kind");
    write_speech(folder / "no frame", 0.0);
    write_speech(folder / "truncated", 2.0);
    fs::resize_file(folder / "truncated", 44 + 32000);
    const Outcome outcome = felspar({"ride", "missing", "a folder", "a pipe", "a device", "empty", "a\ntext",
                                     "no frame", "truncated", "--json"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(lines_of(outcome.errors),
                ElementsAre(HasSubstr("missing: "), HasSubstr("folder"), HasSubstr("regular"),
                            HasSubstr("regular"), HasSubstr("is empty"),
                            HasSubstr("a\\ntext: is no audio file"), HasSubstr("no audio")));
    const auto objects = lines_of(outcome.output);
    ASSERT_EQ(objects.size(), 8U);
    EXPECT_THAT(objects[5], HasSubstr("{\"file\":\"a\\ntext\",\"error\":\""));
    EXPECT_EQ(nlohmann::json::parse(objects[7])["length_seconds"], 1.0);
    const char* remark = "holds 16000 of the 32000 frames that its header claims";
    EXPECT_EQ(nlohmann::json::parse(objects[7])["remark"], remark);
    EXPECT_THAT(felspar({"ride", "truncated"}).output, HasSubstr(std::string("truncated: ") + remark));
    EXPECT_THAT(ridden_names(), ElementsAre("truncated.wav"));
}

// A project file cannot hold every path, so a recording may be lost in it, but its render is not. The name
// with the line break belongs to both takes.
TEST_F(RideCommand, RendersFilesOfAnyName) {
    const std::vector<std::string> names{
        "lost\nb\r\x1b[2J.wav", "lost \"'`.wav", "caf\xe9.wav", "-o.wav", "%s%n.wav", "a.b.WAV", " "};
    std::vector<std::string> arguments{"ride", "--project", "p.rpp", "--"};
    for (const std::string& name : names) {
        write_speech(folder / name, 1.0);
        arguments.push_back(name);
    }
    const Outcome refused = felspar(arguments);
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.errors, HasSubstr("p.rpp: not written, as it cannot hold 4 names or paths"));
    EXPECT_FALSE(fs::exists(folder / "ridden")) << "nothing was written";
    arguments.insert(arguments.begin() + 1, "--accept-losses");
    const Outcome outcome = felspar(arguments);
    EXPECT_EQ(outcome.status, 0);
    const auto tells_of_path = HasSubstr("p.rpp: cannot hold the path of");
    const auto tells_of_name = HasSubstr("p.rpp: cannot hold the name of take");
    EXPECT_THAT(lines_of(outcome.errors),
                ElementsAre(tells_of_path, tells_of_path, tells_of_name, tells_of_name));
    EXPECT_EQ(lines_of(outcome.output).size(), names.size() + 4) << outcome.output;
    EXPECT_EQ(ridden_names().size(), names.size());
    project::Project project;
    EXPECT_TRUE(rpp::load_project(project, folder / "p.rpp"));
    ASSERT_EQ(project.item_count(), names.size());
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_TRUE(fs::exists(project.item(i)->active_take()->source.file)) << names[i];
}

} // namespace
} // namespace headless::test
