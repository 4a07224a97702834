// What a ride may write, and what it says when it can't.

#include "tests/headless/cli/command_runner.hpp"

#include <algorithm>

namespace headless::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

struct RideOutputs : FelsparCommand {
    RideOutputs() { write_speech(recording, 1.0); }

    std::filesystem::path recording = folder / "a.wav";
    std::filesystem::path rendered = folder / "ridden/a.wav";
};

TEST_F(RideOutputs, are_the_same_bytes_when_made_again) {
    ASSERT_EQ(felspar({"ride", "a.wav", "--project", "p.rpp"}).status, 0);
    const std::string first_sound = bytes_of(rendered);
    const std::string first_project = bytes_of(folder / "p.rpp");
    EXPECT_EQ(felspar({"ride", "a.wav", "--project", "p.rpp"}).status, 0);
    EXPECT_EQ(bytes_of(rendered), first_sound);
    EXPECT_EQ(bytes_of(folder / "p.rpp"), first_project);
}

TEST_F(RideOutputs, never_replace_a_file_that_the_user_made) {
    std::filesystem::create_directory(folder / "ridden");
    write_speech(rendered, 0.5);
    const std::string theirs = bytes_of(rendered);
    const Outcome outcome = felspar({"ride", "a.wav"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("ridden/a.wav: not overwritten"));
    EXPECT_EQ(bytes_of(rendered), theirs);
    EXPECT_THAT(ridden_names(), ElementsAre("a.wav"));
}

TEST_F(RideOutputs, never_replace_what_the_run_reads) {
    ASSERT_EQ(felspar({"ride", "a.wav"}).status, 0);
    const std::string first = bytes_of(rendered);
    std::filesystem::create_symlink("ridden", folder / "link");
    EXPECT_EQ(felspar({"ride", "ridden/a.wav", "-o", "link"}).status, 1);
    EXPECT_EQ(felspar({"ride", "a.wav", "ridden/a.wav"}).status, 1) << "read later in the run";
    EXPECT_EQ(bytes_of(rendered), first);
    EXPECT_THAT(ridden_names(), ElementsAre("a.wav"));
}

TEST_F(RideOutputs, never_replace_what_the_run_has_written) {
    std::filesystem::create_directory(folder / "take2");
    std::filesystem::create_directory(folder / "ridden");
    write_speech(folder / "take2/a.wav", 2.0);
    const Outcome outcome = felspar({"ride", "a.wav", "take2/a.wav", "--project", "ridden/a.wav"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("another recording of that name"));
    EXPECT_EQ(read_sound(rendered).samples.size(), 16000U) << "nor with the project";
}

TEST_F(RideOutputs, leave_a_foreign_project_alone_and_then_do_no_work_at_all) {
    write_bytes(folder / "theirs.rpp", "<REAPER_PROJECT 0.1 \"6.19/linux-x86_64\" 1700000000\n>\n");
    write_bytes(folder / "empty.rpp", "");
    for (const char* project : {"theirs.rpp", "empty.rpp", "a.wav", "missing/p.rpp"}) {
        const std::string theirs = bytes_of(folder / project);
        const Outcome outcome = felspar({"ride", "a.wav", "--project", project});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.errors, HasSubstr(project));
        EXPECT_EQ(bytes_of(folder / project), theirs);
        EXPECT_FALSE(std::filesystem::exists(folder / "ridden"));
    }
}

TEST_F(RideOutputs, fail_the_run_with_one_line_that_says_why_when_they_cannot_be_made) {
    write_bytes(folder / "note.txt", "no library");
    const std::pair<std::vector<std::string>, const char*> runs[] = {
        {{"-o", "nowhere"}, "nowhere: the output folder does not exist"},
        {{"-o", "note.txt"}, "note.txt: the output folder"},
        {{"-o", "/proc"}, "/proc/a.wav"}, // where nobody may write
        {{"--plugin", "note.txt"}, "note.txt"},
        {{"--plugin", FIXTURE_PLUGIN}, "a.wav: the plug-in did not ride it"}};
    for (const auto& [options, message] : runs) {
        const Outcome outcome = felspar({"ride", "a.wav", options[0], options[1]});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(std::ranges::count(outcome.errors, '\n'), 1) << outcome.errors;
        EXPECT_THAT(outcome.errors, HasSubstr(message));
        EXPECT_FALSE(std::filesystem::exists(rendered));
    }
    EXPECT_EQ(felspar({"ride", "a.wav"}, "/dev/full").status, 1) << "the table cannot be written";
}

} // namespace
} // namespace headless::test
