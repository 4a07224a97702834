// `felspar install` and `felspar uninstall`, and what scripts find afterwards.

#include "tests/headless/cli/command_runner.hpp"

namespace headless::test {
namespace {

namespace fs = std::filesystem;

using nlohmann::json;
using testing::EndsWith;
using testing::HasSubstr;

struct InstallCommand : FelsparCommand {
    InstallCommand() {
        fs::create_directories(resources);
        setenv("XDG_CONFIG_HOME", folder.path.c_str(), 1);
    }

    /// The folder that `reaper.GetResourcePath` tells within `felspar run`.
    fs::path resources = folder / "felspar";
    std::vector<std::string> to_resources{"--resource-path", resources.string()};

    Outcome run_on_resources(std::vector<std::string> words) const {
        words.insert(words.end(), to_resources.begin(), to_resources.end());
        return felspar(words);
    }
};

TEST_F(InstallCommand, TellsAsJsonWhatItFoundAndDid) {
    fs::create_directories(resources / "UserPlugins");
    write_bytes(resources / "UserPlugins/reaper_sws64.so", "");
    write_bytes(resources / "last.rpp", "<REAPER_PROJECT 0.1 \"7.2/linux-x86_64\" 1\n>\n");
    write_bytes(resources / "reaper.ini",
                "[REAPER]\nlastproject=" + (resources / "last.rpp").string() + "\n");
    const json installed = json::parse(run_on_resources({"install", "--json"}).output);
    EXPECT_EQ(installed["resource_folder"], resources.string());
    EXPECT_EQ(installed["version"], "7.2");
    EXPECT_EQ(installed["sws"], "reaper_sws64.so");
    EXPECT_EQ(installed["files"].back(),
              json({{"path", "UserPlugins/reaper_MERIDEK_FELSPAR.so"}, {"action", "installed"}}));
    EXPECT_EQ(installed["removal"], false);
    write_bytes(resources / "UserPlugins/reaper_MERIDEK_FELSPAR.so", "the user's");
    const Outcome again = run_on_resources({"install", "--json"});
    EXPECT_EQ(again.status, 1);
    EXPECT_EQ(json::parse(again.output)["files"].back(),
              json({{"path", "UserPlugins/reaper_MERIDEK_FELSPAR.so"},
                    {"action", "kept"},
                    {"reason", "it has been changed since it was installed"}}));
    EXPECT_EQ(json::parse(run_on_resources({"uninstall", "--json"}).output)["files"].size(),
              installed["files"].size());
}

TEST_F(InstallCommand, LetsScriptsAnywhereFindTheModule) {
    ASSERT_EQ(run_on_resources({"install"}).status, 0);
    write_bytes(folder / "own.lua", R"(
        for _ = 1, 2 do dofile(reaper.GetResourcePath() .. "/Scripts/MERIDEK_FELSPAR/module_path.lua") end
        local _, times = package.cpath:gsub("UserPlugins/%?%.so", "")
        local file = package.searchpath("reaper_MERIDEK_FELSPAR", package.cpath)
        print(times, file == reaper.GetResourcePath() .. "/UserPlugins/reaper_MERIDEK_FELSPAR.so")
        print(require "reaper_MERIDEK_FELSPAR" == reaper))");
    EXPECT_EQ(felspar({"run", "own.lua"}).output, "1\ttrue\ntrue\n");
}

TEST_F(InstallCommand, InstallsExamplesThatRunWhereTheyAre) {
    ASSERT_EQ(run_on_resources({"install"}).status, 0);
    write_speech(folder / "speech.wav", 1.0);
    write_bytes(folder / "insert.lua", R"(reaper.InsertMedia("speech.wav", 0))");
    ASSERT_EQ(felspar({"run", "insert.lua", "--save", "project.rpp"}).status, 0);
    for (const auto& [name, part] : {std::pair("plot_levels.lua", "speech.wav\n"),
                                     std::pair("check_installation.lua", "All is well.\n")}) {
        const std::string example = (resources / "Scripts/MERIDEK_FELSPAR" / name).string();
        const Outcome outcome = felspar({"run", example, "--project", "project.rpp"});
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_THAT(outcome.output, HasSubstr(part));
    }
}

TEST_F(InstallCommand, SaysInADryRunThatNothingWasWritten) {
    write_bytes(resources / "UserPlugins", "the user's");
    EXPECT_EQ(run_on_resources({"install", "--dry-run"}).status, 1);
    fs::remove(resources / "UserPlugins");
    fs::create_directories(resources / "UserPlugins/reaper_MERIDEK_FELSPAR.so");
    const std::string hint =
        "To install in place of files that were kept, add --replace: they are moved aside.\n";
    EXPECT_THAT(run_on_resources({"install", "--dry-run"}).output, EndsWith(hint + "Nothing was written.\n"));
    EXPECT_THAT(run_on_resources({"install"}).output,
                EndsWith(hint + "The workstation loads the library when it is next started.\n"));
    EXPECT_THAT(run_on_resources({"uninstall", "--dry-run"}).output, EndsWith("Nothing was written.\n"));
}

TEST_F(InstallCommand, TakesAnEmptyPathForAMistake) {
    ASSERT_EQ(run_on_resources({"install"}).status, 0);
    fs::rename(resources, folder / "REAPER"); // where it is looked for
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"--resource-path", ""}, {"--resource-path="}}) {
        std::vector<std::string> command{"uninstall"};
        command.insert(command.end(), words.begin(), words.end());
        const Outcome outcome = felspar(command);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(outcome.errors, HasSubstr("--resource-path"));
    }
    EXPECT_TRUE(fs::exists(folder / "REAPER/UserPlugins/reaper_MERIDEK_FELSPAR.so"));
    EXPECT_EQ(felspar({"project", ""}).status, 2);
}

TEST_F(InstallCommand, TakesTheLibraryThatIsNamed) {
    fs::create_directories(folder / "archive/scripts/lua");
    fs::create_directories(folder / "archive/stubs");
    write_bytes(folder / "archive/own.so", "a library");
    ASSERT_EQ(run_on_resources({"install", "--plugin", "archive/own.so"}).status, 0);
    EXPECT_EQ(bytes_of(resources / "UserPlugins/reaper_MERIDEK_FELSPAR.so"), "a library");
}

TEST_F(InstallCommand, SaysWhatToDoWithoutAFolder) {
    EXPECT_EQ(json::parse(felspar({"install", "--json", "--resource-path", "none"}).output),
              json({{"file", "none"}, {"error", "none: is not a folder"}}));
    const Outcome outcome = felspar({"install", "--resource-path", "none"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "felspar: none: is not a folder\n");
    EXPECT_EQ(felspar({"uninstall", "--replace"}).status, 2);
}

} // namespace
} // namespace headless::test
