// The files that a ride may write, and its messages when it cannot.

#include "headless/rpp/rpp.hpp"
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

TEST_F(RideOutputs, StayUntilTheNewProjectIsSaved) {
    ASSERT_EQ(felspar({"ride", "a.wav", "--project", "p.rpp"}).status, 0);
    const std::string lightly_ridden = bytes_of(rendered);
    std::filesystem::copy_file(folder / "p.rpp", folder / "kept.rpp");
    ASSERT_EQ(felspar({"ride", "a.wav", "--project", "p.rpp"}).status, 0);
    EXPECT_EQ(bytes_of(rendered), lightly_ridden) << "the same bytes in a second run";
    EXPECT_EQ(bytes_of(folder / "p.rpp"), bytes_of(folder / "kept.rpp"));
    ASSERT_EQ(felspar({"ride", "a.wav", "--ratio", "3", "--project", "p.rpp"}).status, 0);
    EXPECT_THAT(bytes_of(folder / "p.rpp"), HasSubstr("ridden/a-001.wav"));
    EXPECT_EQ(bytes_of(rendered), lightly_ridden) << "another project plays it";
    std::filesystem::remove(folder / "kept.rpp");
    std::filesystem::create_symlink("other.RPP", folder / "other.RPP");
    const Outcome beside_unreadable = felspar({"ride", "a.wav", "--ratio", "1", "--project", "p.rpp"});
    EXPECT_EQ(beside_unreadable.status, 1);
    EXPECT_THAT(beside_unreadable.errors,
                HasSubstr("other.RPP: Too many levels of symbolic links (it may play"));
    EXPECT_THAT(ridden_names(), testing::UnorderedElementsAre("a.wav", "a-001.wav"));
    std::filesystem::remove(folder / "other.RPP");
    ASSERT_EQ(felspar({"ride", "a.wav", "--ratio", "3", "--project", "p.rpp"}).status, 0);
    EXPECT_THAT(ridden_names(), ElementsAre("a-001.wav")) << "no project plays the other one any more";
}

TEST_F(RideOutputs, FollowTheLinkOfAProject) {
    std::filesystem::create_directory(folder / "far");
    std::filesystem::create_symlink("far/real.rpp", folder / "p.rpp");
    const std::vector<std::string> ride{"ride", "a.wav", "--ratio", "3", "--project", "p.rpp"};
    EXPECT_THAT(felspar(ride).errors, HasSubstr("p.rpp: is a link that leads nowhere"));
    ASSERT_EQ(felspar({"ride", "a.wav", "--project", "far/real.rpp"}).status, 0);
    EXPECT_EQ(felspar(ride).status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "p.rpp"));
    project::Project project;
    ASSERT_TRUE(rpp::load_project(project, folder / "p.rpp"));
    EXPECT_EQ(project.file, folder / "far/real.rpp");
    ASSERT_EQ(project.item_count(), 1U);
    EXPECT_EQ(project.item(0)->active_take()->source.file.filename(), "a-001.wav");
}

// The memory suffices for the program and the small recordings, but not for the large one when it is decoded.
TEST_F(RideOutputs, SurviveARecordingThatIsTooLargeForTheMemory) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer needs more memory than that";
#endif
    write_speech(folder / "large.wav", 0.5);
    write_speech(folder / "b.wav", 1.0);
    auto bytes = bytes_of(folder / "large.wav").substr(0, 44);
    constexpr std::uint32_t samples_bytes = 128'000'000;
    for (std::size_t i = 0; i < 4; ++i) // the length of the samples
        bytes[40 + i] = static_cast<char>(samples_bytes >> 8 * i);
    write_bytes(folder / "large.wav", bytes);
    std::filesystem::resize_file(folder / "large.wav", 44 + samples_bytes);
    max_memory = std::size_t{320} << 20;
    const Outcome outcome = felspar({"ride", "a.wav", "large.wav", "b.wav"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(lines_of(outcome.errors), ElementsAre(HasSubstr("large.wav: there is not enough memory")));
    EXPECT_THAT(ridden_names(), testing::UnorderedElementsAre("a.wav", "b.wav"));
}

TEST_F(RideOutputs, NeverReplaceInputs) {
    ASSERT_EQ(felspar({"ride", "a.wav"}).status, 0);
    const std::string first = bytes_of(rendered);
    std::filesystem::create_symlink("ridden", folder / "link");
    EXPECT_EQ(felspar({"ride", "ridden/a.wav", "-o", "link"}).status, 1);
    EXPECT_EQ(felspar({"ride", "a.wav", "ridden/a.wav"}).status, 1) << "read later in the run";
    EXPECT_EQ(bytes_of(rendered), first);
    EXPECT_THAT(ridden_names(), ElementsAre("a.wav"));
}

TEST_F(RideOutputs, NeverReplaceFilesOfTheUserOrOfTheSameRun) {
    std::filesystem::create_directory(folder / "take2");
    std::filesystem::create_directory(folder / "ridden");
    write_speech(folder / "take2/a.wav", 2.0);
    write_speech(folder / "ridden/b.wav", 0.5);
    write_speech(folder / "b.wav", 1.0);
    const Outcome outcome = felspar({"ride", "a.wav", "take2/a.wav", "b.wav", "--project", "ridden/a.wav"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("another recording of that name"));
    EXPECT_THAT(outcome.errors, HasSubstr("ridden/b.wav: not overwritten"));
    EXPECT_EQ(read_sound(folder / "ridden/b.wav").samples.size(), 8000U) << "the user's own";
    EXPECT_EQ(read_sound(rendered).samples.size(), 16000U) << "the project does not replace it either";
}

TEST_F(RideOutputs, FailWithOneMessageAndChangeNothing) {
    write_bytes(folder / "note.txt", "no library");
    const std::string theirs = "<REAPER_PROJECT 0.1 \"6.19/linux-x86_64\" 1700000000\n>\n";
    const std::string sound = bytes_of(recording);
    write_bytes(folder / "theirs.rpp", theirs);
    write_bytes(folder / "empty.rpp", "");
    const std::pair<std::vector<std::string>, const char*> runs[] = {
        {{"-o", "nowhere"}, "nowhere: the output folder does not exist"},
        {{"-o", "note.txt"}, "note.txt: the output folder"},
        {{"-o", "/proc"}, "/proc/a.wav"}, // where nobody may write
        {{"--project", "theirs.rpp"}, "theirs.rpp"},
        {{"--project", "empty.rpp"}, "empty.rpp"},
        {{"--project", "a.wav"}, "a.wav"},
        {{"--project", "missing/p.rpp"}, "missing/p.rpp"},
        {{"--plugin", "note.txt"}, "note.txt"},
        {{"--plugin", FIXTURE_PLUGIN}, "a.wav: the plug-in did not ride it"}};
    for (const auto& [options, message] : runs) {
        const Outcome outcome = felspar({"ride", "a.wav", options[0], options[1]});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(std::ranges::count(outcome.errors, '\n'), 1) << outcome.errors;
        EXPECT_THAT(outcome.errors, HasSubstr(message));
        EXPECT_FALSE(std::filesystem::exists(rendered));
        EXPECT_EQ(std::filesystem::exists(folder / "ridden"), options[1] == FIXTURE_PLUGIN);
    }
    EXPECT_EQ(bytes_of(folder / "theirs.rpp"), theirs);
    EXPECT_EQ(bytes_of(folder / "empty.rpp"), "");
    EXPECT_EQ(bytes_of(recording), sound);
    EXPECT_EQ(felspar({"ride", "a.wav"}, "/dev/full").status, 1) << "the table cannot be written";
}

} // namespace
} // namespace headless::test
