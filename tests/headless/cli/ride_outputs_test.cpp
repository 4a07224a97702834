// What a ride may write, and what it says when it can't.

#include "tests/headless/cli/command_runner.hpp"

#include <algorithm>

namespace headless {
namespace {

using RideOutputs = FelsparCommand;

TEST_F(RideOutputs, are_the_same_bytes_when_made_again) {
    write_speech(folder / "a.wav", 1.0);
    ASSERT_EQ(felspar({"ride", "a.wav", "--project", "p.rpp"}).status, 0);
    const std::string rendered = test::bytes_of(folder / "ridden/a.wav");
    const std::string project = test::bytes_of(folder / "p.rpp");
    ASSERT_EQ(felspar({"ride", "a.wav", "--project", "p.rpp"}).status, 0);
    EXPECT_EQ(test::bytes_of(folder / "ridden/a.wav"), rendered);
    EXPECT_EQ(test::bytes_of(folder / "p.rpp"), project);
    EXPECT_EQ(names_in("ridden"), std::vector<std::string>{"a.wav"});
}

TEST_F(RideOutputs, never_replace_a_file_that_the_user_made) {
    write_speech(folder / "a.wav", 1.0);
    write_speech(folder / "b.wav", 1.0);
    std::filesystem::create_directory(folder / "ridden");
    write_speech(folder / "ridden/a.wav", 0.5);
    const std::string theirs = test::bytes_of(folder / "ridden/a.wav");
    const Outcome outcome = felspar({"ride", "a.wav", "b.wav"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("ridden/a.wav: not overwritten"), std::string::npos) << outcome.errors;
    EXPECT_EQ(test::bytes_of(folder / "ridden/a.wav"), theirs);
    EXPECT_EQ(names_in("ridden"), (std::vector<std::string>{"a.wav", "b.wav"}));
}

TEST_F(RideOutputs, never_replace_what_the_run_reads) {
    write_speech(folder / "a.wav", 1.0);
    ASSERT_EQ(felspar({"ride", "a.wav"}).status, 0);
    const std::string ridden = test::bytes_of(folder / "ridden/a.wav");
    std::filesystem::create_symlink("ridden", folder / "link");
    EXPECT_EQ(felspar({"ride", "ridden/a.wav", "-o", "link"}).status, 1);
    EXPECT_EQ(felspar({"ride", "a.wav", "ridden/a.wav"}).status, 1) << "read later in the run";
    EXPECT_EQ(test::bytes_of(folder / "ridden/a.wav"), ridden);
    EXPECT_EQ(names_in("ridden"), std::vector<std::string>{"a.wav"});
}

TEST_F(RideOutputs, never_replace_what_the_run_has_written) {
    std::filesystem::create_directory(folder / "take2");
    write_speech(folder / "a.wav", 1.0);
    write_speech(folder / "take2/a.wav", 2.0);
    const Outcome outcome = felspar({"ride", "a.wav", "take2/a.wav"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("another recording of that name"), std::string::npos) << outcome.errors;
    EXPECT_EQ(read_recording(folder / "ridden/a.wav").samples.size(), 16000U);
}

TEST_F(RideOutputs, leave_a_foreign_project_alone_and_then_do_no_work_at_all) {
    write_speech(folder / "a.wav", 1.0);
    test::write_bytes(folder / "theirs.rpp", "<REAPER_PROJECT 0.1 \"6.19/linux-x86_64\" 1700000000\n>\n");
    for (const char* project : {"theirs.rpp", "a.wav", "missing/p.rpp"}) {
        const std::string theirs = test::bytes_of(folder / project);
        const Outcome outcome = felspar({"ride", "a.wav", "--project", project});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.errors.find(project), std::string::npos) << outcome.errors;
        EXPECT_EQ(test::bytes_of(folder / project), theirs);
        EXPECT_FALSE(std::filesystem::exists(folder / "ridden"));
    }
}

TEST_F(RideOutputs, keep_the_render_when_the_project_would_take_its_place) {
    write_speech(folder / "a.wav", 1.0);
    EXPECT_EQ(felspar({"ride", "a.wav", "--project", "a.rpp", "-o", "."}).status, 1)
        << "a.wav is the recording";
    std::filesystem::create_directory(folder / "ridden");
    EXPECT_EQ(felspar({"ride", "a.wav", "--project", "ridden/a.wav"}).status, 1);
    EXPECT_EQ(read_recording(folder / "ridden/a.wav").samples.size(), 16000U);
}

struct Refused {
    const char* name;
    std::vector<std::string> options;
    const char* message;
};

class HopelessRun : public FelsparCommand, public testing::WithParamInterface<Refused> {};

TEST_P(HopelessRun, says_why_in_one_line_and_writes_nothing) {
    write_speech(folder / "a.wav", 1.0);
    test::write_bytes(folder / "note.txt", "no library");
    std::vector<std::string> arguments{"ride", "a.wav"};
    arguments.insert(arguments.end(), GetParam().options.begin(), GetParam().options.end());
    const Outcome outcome = felspar(arguments);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << outcome.errors;
    EXPECT_NE(outcome.errors.find(GetParam().message), std::string::npos) << outcome.errors;
    EXPECT_FALSE(std::filesystem::exists(folder / "ridden/a.wav"));
}

INSTANTIATE_TEST_SUITE_P(
    runs, HopelessRun,
    testing::Values(
        Refused{"output_folder_missing", {"-o", "nowhere"}, "nowhere: the output folder does not exist"},
        Refused{"output_folder_is_a_file", {"-o", "note.txt"}, "note.txt: the output folder"},
        Refused{"output_folder_not_writable", {"-o", "/proc"}, "/proc/a.wav"},
        Refused{"plugin_missing", {"--plugin", "none.so"}, "none.so"},
        Refused{"plugin_not_loadable", {"--plugin", "note.txt"}, "note.txt"},
        Refused{"plugin_declines", {"--plugin", DECLINING_PLUGIN}, "a.wav: the plug-in did not ride it"}),
    [](const auto& row) { return row.param.name; });

TEST_F(RideOutputs, fail_the_run_when_the_table_cannot_be_written) {
    write_speech(folder / "a.wav", 1.0);
    EXPECT_EQ(felspar({"ride", "a.wav"}, "/dev/full").status, 1);
}

} // namespace
} // namespace headless
