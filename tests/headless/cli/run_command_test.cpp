// `felspar run` and the example scripts, as a user calls them.

#include "tests/headless/cli/command_runner.hpp"

namespace headless::test {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

struct RunCommand : FelsparCommand {
    Outcome run(const std::string& script, std::vector<std::string> options = {}) {
        write_bytes(folder / "script.lua", script);
        options.insert(options.begin(), {"run", "script.lua"});
        return felspar(options);
    }
};

constexpr const char* add_track = R"(
    reaper.InsertTrackAtIndex(0, false)
    reaper.GetSetMediaTrackInfo_String(reaper.GetTrack(0, 0), "P_NAME", arg[1], true)
)";

TEST_F(RunCommand, SavesAProjectInPlaceOrElsewhere) {
    EXPECT_EQ(run(add_track, {"--save", "a.rpp", "--", "--first"}).status, 0);
    EXPECT_EQ(run(add_track, {"--project", "a.rpp", "--save", "a.rpp", "--", "second"}).status, 0);
    const std::string both = bytes_of(folder / "a.rpp");
    EXPECT_THAT(both, ContainsRegex("NAME \"second\"(.|\n)*NAME \"--first\""));
    EXPECT_EQ(run("print(1)", {"--project", "a.rpp", "--save", "b.rpp"}).output, "1\n");
    EXPECT_EQ(bytes_of(folder / "b.rpp"), both);
    EXPECT_EQ(run(add_track, {"--project", "a.rpp", "--", "unsaved"}).status, 0);
    EXPECT_EQ(bytes_of(folder / "a.rpp"), both);
}

TEST_F(RunCommand, SavesNothingAfterAnError) {
    ASSERT_EQ(run(add_track, {"--save", "a.rpp", "--", "first"}).status, 0);
    const std::string before = bytes_of(folder / "a.rpp");
    for (const auto& [ending, status] : {std::pair{"error('boom')", 1}, {"os.exit(3)", 3}, {"x = = 1", 1}}) {
        const Outcome outcome =
            run(std::string(add_track) + ending, {"--project", "a.rpp", "--save", "a.rpp", "--", "x"});
        EXPECT_EQ(outcome.status, status);
        EXPECT_EQ(bytes_of(folder / "a.rpp"), before);
    }
}

TEST_F(RunCommand, SavesBeforeFinalizersRun) {
    const Outcome outcome = run(R"(kept = setmetatable({}, {__gc = function() print(io.open("a.rpp")) end}))",
                                {"--save", "a.rpp"});
    EXPECT_THAT(outcome.output, HasSubstr("file ("));
}

TEST_F(RunCommand, EscapesControlBytesInMessages) {
    EXPECT_THAT(run("error('a\\0b\\x1b[2J')").errors, HasSubstr("a\\x00b\\x1b[2J\n"));
    EXPECT_THAT(felspar({"run", "\x1b[2J"}).errors, HasSubstr("\\x1b[2J"));
    const Outcome outcome = run(add_track, {"--save", "a.rpp", "--", "a\nb"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors,
              "felspar: a.rpp: cannot hold the name of track 1: \"a\\nb\" is written as \"a b\"\n");
}

TEST_F(RunCommand, ReportsMissingSourcesOfAProject) {
    write_speech(folder / "a.wav", 1.5, 2);
    write_speech(folder / "b.wav", 1.0);
    run("reaper.InsertMedia('a.wav', 1) reaper.InsertMedia('b.wav', 1)", {"--save", "a.rpp"});
    std::filesystem::remove(folder / "b.wav");
    const Outcome outcome = run(R"(
        for i = 0, 1 do
            local source = reaper.GetMediaItemTake_Source(reaper.GetActiveTake(reaper.GetMediaItem(0, i)))
            print(reaper.GetMediaSourceNumChannels(source), reaper.GetMediaSourceSampleRate(source),
                  (reaper.GetMediaSourceLength(source)))
        end)",
                                {"--project", "a.rpp"});
    EXPECT_EQ(outcome.output, "2\t16000\t1.5\n0\t0\t0.0\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(lines_of(outcome.errors), testing::ElementsAre(HasSubstr("b.wav: No such file")));
}

TEST_F(RunCommand, BacksUpAForeignProject) {
    const std::string theirs = "<REAPER_PROJECT 0.1 \"6.19/linux-x86_64\" 1700000000\n>\n";
    write_bytes(folder / "a.rpp", theirs);
    EXPECT_EQ(run("print(1)", {"--save", "a.rpp"}).output, "") << "refused before the script runs";
    EXPECT_EQ(bytes_of(folder / "a.rpp"), theirs);
    EXPECT_EQ(run("", {"--project", "a.rpp", "--save", "a.rpp"}).status, 0);
    EXPECT_EQ(bytes_of(folder / "a.rpp-bak"), theirs);
    EXPECT_EQ(run("", {"--save", "script.lua"}).status, 1);
}

TEST_F(RunCommand, SavesTheRestWhenAFunctionFails) {
    const Outcome outcome = run("reaper.InsertMedia('none.wav', 0)", {"--save", "a.rpp"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("none.wav: No such file"));
    EXPECT_TRUE(std::filesystem::exists(folder / "a.rpp"));
    EXPECT_EQ(run("print(1)", {"--project", "none.rpp"}).status, 1);
    for (const char* wrong : {"no answer", "=no title"})
        EXPECT_EQ(run("", {"--dialog", wrong}).status, 2);
    EXPECT_THAT(run("", {"--dialog", "Never=1"}).errors, HasSubstr("no dialog \"Never\""));
}

TEST_F(RunCommand, SavesWhenTheScriptAsksForIt) {
    const std::string save_and_fail =
        std::string(add_track) + "reaper.Main_SaveProject(0, false) error('later')";
    EXPECT_EQ(run(save_and_fail, {"--save", "a.rpp", "--", "first"}).status, 1);
    EXPECT_THAT(bytes_of(folder / "a.rpp"), HasSubstr("NAME \"first\""));
    EXPECT_EQ(run(save_and_fail, {"--project", "a.rpp", "--", "second"}).status, 1);
    EXPECT_THAT(bytes_of(folder / "a.rpp"), HasSubstr("NAME \"second\""));
    EXPECT_EQ(run(save_and_fail, {"--project", "a.rpp", "--save", "b.rpp", "--", "third"}).status, 1);
    EXPECT_THAT(bytes_of(folder / "a.rpp"), Not(HasSubstr("third")));
    EXPECT_THAT(bytes_of(folder / "b.rpp"), HasSubstr("NAME \"third\""));
    const Outcome unnamed = run("reaper.Main_SaveProject(0, false)");
    EXPECT_EQ(unnamed.status, 1);
    EXPECT_THAT(unnamed.errors, HasSubstr("--save names one"));
}

TEST_F(RunCommand, NamesMissingFunctionsThatTheScriptDoesWithout) {
    const Outcome outcome = run("if reaper.Optional then reaper.Optional() end if reaper.MB then end");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors,
              "felspar: the script asked for Optional, which the headless workstation does not have\n");
}

TEST_F(RunCommand, ChecksScriptsWithoutRunningThem) {
    write_bytes(folder / "bad.lua",
                "print(1)\nreaper.No_Such()\nif reaper.Optional then end\nreaper.No_Such()");
    write_bytes(folder / "broken.lua", "x = = 1");
    const Outcome text = run("reaper.ClearConsole() print(1)", {"--check", "bad.lua", "broken.lua"});
    EXPECT_EQ(text.status, 1);
    EXPECT_THAT(lines_of(text.output),
                testing::ElementsAre("bad.lua:2: the headless workstation has no No_Such (2 lines)",
                                     "bad.lua:3: optional: the headless workstation has no Optional",
                                     HasSubstr("broken.lua:1: unexpected symbol")));
    EXPECT_EQ(run("if reaper.Optional then end", {"--check"}).status, 0);
    const Outcome json = run("print(1)", {"--json", "--check", "bad.lua", "broken.lua"});
    const auto lines = lines_of(json.output);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0], R"({"file":"script.lua","missing":[],"optional":[]})");
    const auto bad = nlohmann::json::parse(lines[1]);
    EXPECT_EQ(bad["missing"][0]["name"], "No_Such");
    EXPECT_EQ(bad["missing"][0]["kind"], "function");
    EXPECT_EQ(bad["missing"][0]["lines"], nlohmann::json({2, 4}));
    EXPECT_EQ(bad["optional"][0]["name"], "Optional");
    EXPECT_THAT(nlohmann::json::parse(lines[2])["error"], HasSubstr("unexpected symbol"));
    EXPECT_EQ(run("", {"--json"}).status, 2);
    EXPECT_EQ(run("", {"--check", "--save", "a.rpp"}).status, 2);
}

struct ExampleScript : RunCommand {
    ExampleScript() {
        for (const char* side : {"subject", "base"}) {
            std::filesystem::create_directory(folder / side);
            write_speech(folder / side / "anna_1.wav", 1.0);
        }
        write_speech(folder / "subject" / "ben_1.wav", 2.0);
    }

    Outcome example(const std::string& name, std::vector<std::string> options) {
        options.insert(options.begin(), {"run", std::string(EXAMPLE_SCRIPTS) + "/" + name});
        return felspar(options);
    }

    std::string project() const { return bytes_of(folder / "a.rpp"); }
};

TEST_F(ExampleScript, ImportsDialogue) {
    const Outcome outcome = example("import_dialogue.lua", {"--save", "a.rpp", "--", "subject", "base"});
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.output, "Lines without a partner: 1\n");
    EXPECT_THAT(project(),
                ContainsRegex("MARKER 1 2.5 \"No partner: ben_1.wav\" 1 [0-9]+ .*\n *MARKER 1 4.5"));
    const std::string by_arguments = project();
    EXPECT_EQ(example("import_dialogue.lua", {"--save", "a.rpp"}).output, "") << "cancelled";
    EXPECT_THAT(project(), Not(HasSubstr("MARKER")));
    example("import_dialogue.lua", {"--save", "a.rpp", "--dialog", "Import dialogue=subject,base"});
    EXPECT_EQ(project(), by_arguments);
}

TEST_F(ExampleScript, ColoursTracksAndPlotsLevels) {
    example("import_dialogue.lua", {"--save", "a.rpp", "--", "subject", "base"});
    const Outcome outcome = example("colour_tracks.lua", {"--project", "a.rpp", "--save", "a.rpp"});
    EXPECT_EQ(outcome.output, "Speakers: 2\n");
    EXPECT_THAT(project(), ContainsRegex("NAME \"Anna\"\n *PEAKCOL 22502854\n(.|\n)*NAME \"Anna\"\n *PEAKCOL "
                                         "22502854\n(.|\n)*NAME \"Ben\"\n *PEAKCOL 21930710\n"));
    const auto lines = lines_of(example("plot_levels.lua", {"--project", "a.rpp"}).output);
    ASSERT_EQ(lines.size(), 21U) << "the item that was inserted last is selected";
    EXPECT_EQ(lines[0], "ben_1.wav");
    EXPECT_THAT(lines[3], ContainsRegex("^    0.2 s  -2[0-9.]+ dB \\|#{30,40}$"));
}

} // namespace
} // namespace headless::test
