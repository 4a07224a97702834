// Imports of two small folders: the project, the levels, the messages, and files that must not change.

#include "headless/rpp/rpp.hpp"
#include "tests/headless/cli/command_runner.hpp"

#include <algorithm>
#include <sys/stat.h>
#include <tuple>

namespace headless::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::UnorderedElementsAre;
namespace fs = std::filesystem;

struct ImportCommand : FelsparCommand {
    /// A tone of 1 kHz, so the levels of two lines differ by the ratio of their peaks.
    void line(const std::string& name, double peak, double length_seconds = 1.0) const {
        fs::create_directories((folder / name).parent_path());
        write_sound(folder / name, tone(length_seconds, peak, 16000), 16000);
    }

    /// A good pair, and one of each kind that cannot be matched.
    void write_difficult_pairs() const {
        line("fr/good.wav", 0.1);
        line("en/good.wav", 0.5);
        line("fr/short.wav", 0.1, 0.3);
        line("en/short.wav", 0.5);
        line("fr/quiet.wav", 0.1);
        line("en/quiet.wav", 0.0);
        line("fr/text.wav", 0.1);
        write_bytes(folder / "en/text.wav", "no audio");
        line("fr/pipe.wav", 0.1);
        mkfifo((folder / "en/pipe.wav").c_str(), 0600);
    }

    Outcome import(std::vector<std::string> options) const {
        options.insert(options.begin(), {"import", "fr", "en"});
        return felspar(std::move(options));
    }

    void load(project::Project& project, const std::string& name) const {
        ASSERT_TRUE(rpp::load_project(project, folder / name));
    }

    /// Paths and bytes of everything in the folder except the runner's own files.
    std::vector<std::string> snapshot() const {
        std::vector<std::string> found;
        for (const auto& entry : fs::recursive_directory_iterator(folder.path)) {
            if (!entry.path().filename().string().starts_with("std"))
                found.push_back(entry.path().string() +
                                (entry.is_regular_file() ? bytes_of(entry.path()) : ""));
        }
        std::ranges::sort(found);
        return found;
    }
};

std::vector<std::string> outline(const project::Project& project) {
    std::vector<std::string> lines;
    for (const auto& track : project.tracks()) {
        std::string line = std::string(static_cast<std::size_t>(track->depth()), '-') + track->name;
        for (const auto& item : track->items())
            line +=
                " " + item->active_take()->name + "@" + std::to_string(item->position_seconds()).substr(0, 5);
        lines.push_back(line);
    }
    return lines;
}

TEST_F(ImportCommand, PlacesPairsByGroup) {
    line("fr/scene/Bob_2.wav", 0.1, 0.5);
    line("fr/bob_1.WAV", 0.1, 0.5);
    line("fr/bob_alone.wav", 0.1);
    line("en/Bob_2.wav", 0.1, 0.75);
    line("en/deep/er/bob_1.WAV", 0.1, 0.25);
    line("en/nobody.wav", 0.1);
    const Outcome outcome = import({"--group", "bob", "--group", "none", "--start", "2", "--interval", "1",
                                    "--json", "--csv", "pairs.csv", "--unmatched", "alone.txt"});
    ASSERT_EQ(outcome.status, 0) << outcome.errors;
    project::Project project;
    load(project, "fr.rpp");
    EXPECT_THAT(outline(project), ElementsAre("bob", "-base bob_1.WAV@2.000 Bob_2.wav@4.750",
                                              "-unique bob_1.WAV@3.250 Bob_2.wav@6.500"));
    const auto report = nlohmann::json::parse(outcome.output);
    EXPECT_EQ(report["project"], "fr.rpp");
    EXPECT_EQ(report["length_seconds"], 5.0);
    EXPECT_EQ(report["groups"].dump(), R"([{"name":"bob","pairs":2}])");
    EXPECT_FALSE(report["pairs"][0]["base"].contains("momentary_max_lufs")) << "nothing is measured";
    const std::string root = fs::canonical(folder.path).string();
    EXPECT_EQ(report["unused_bases"][0], root + "/en/nobody.wav");
    EXPECT_EQ(bytes_of(folder / "alone.txt"), root + "/fr/bob_alone.wav\n");
    const auto table = lines_of(bytes_of(folder / "pairs.csv"));
    ASSERT_EQ(table.size(), 3U);
    EXPECT_EQ(table[1], "bob," + root + "/fr/bob_1.WAV," + root +
                            "/en/deep/er/bob_1.WAV,2.000000,0.250000,3.250000,0.500000,,,,\r");
}

TEST_F(ImportCommand, MatchesEachRiddenLineToItsBaseLine) {
    line("fr/a.wav", 0.1);
    line("en/a.wav", 0.5);
    line("fr/twice/a.wav", 0.05);
    write_speech(folder / "fr/b.wav", 6.0);
    write_speech(folder / "en/b.wav", 3.0);
    const Outcome outcome = import({"--match", "--ride", "--json"});
    ASSERT_EQ(outcome.status, 0) << outcome.errors;
    const auto report = nlohmann::json::parse(outcome.output);
    const auto& pairs = report["pairs"];
    ASSERT_EQ(pairs.size(), 3U);
    // A tone of 1 kHz at -23 dBFS on two loudspeakers reads -23 LUFS, on one 3.01 less.
    EXPECT_NEAR(pairs[0]["base"]["momentary_max_lufs"], 20.0 * std::log10(0.5) - 3.01, 0.1);
    EXPECT_NEAR(pairs[0]["subject"]["momentary_max_before_lufs"], 20.0 * std::log10(0.1) - 3.01, 0.1);
    for (const auto& pair : pairs)
        EXPECT_NEAR(pair["subject"]["momentary_max_after_lufs"], pair["base"]["momentary_max_lufs"], 0.01);
    project::Project project;
    load(project, "fr.rpp");
    const auto& subjects = project.track(2)->items();
    ASSERT_EQ(subjects.size(), 3U);
    for (const auto& item : subjects)
        EXPECT_EQ(item->active_take(), item->take(1)) << "the render is heard";
    const auto peak_of = [](const project::Item& item) {
        return std::ranges::max(read_sound(item.active_take()->source.file).samples) * item.volume;
    };
    EXPECT_NEAR(peak_of(*subjects[0]), 0.5, 0.005) << "the base line's peak";
    EXPECT_NEAR(peak_of(*subjects[2]), 0.5, 0.005);
    EXPECT_THAT(names_in(folder / "fr-takes"), UnorderedElementsAre("a.wav", "a-001.wav", "b.wav"));
    EXPECT_EQ(project.record_path, "fr-takes");
}

TEST_F(ImportCommand, ReportsLinesThatItCannotMatch) {
    write_difficult_pairs();
    const Outcome outcome = import({"--match"});
    EXPECT_EQ(outcome.status, 1) << "two files were refused";
    EXPECT_THAT(lines_of(outcome.errors),
                UnorderedElementsAre(HasSubstr("en/text.wav: is no audio"), HasSubstr("en/pipe.wav: ")));
    for (const char* message : {"\n  short.wav: not levelled: shorter than 0.4 s\n",
                                "\n  quiet.wav: not levelled: its base line is silent\n",
                                "\n  text.wav: base file refused\n", "\n  pipe.wav: base file refused\n"})
        EXPECT_THAT(outcome.output, HasSubstr(message));
    EXPECT_THAT(outcome.output, Not(HasSubstr("good.wav: ")));
    project::Project project;
    load(project, "fr.rpp");
    for (const auto& item : project.track(2)->items()) {
        const bool is_matched = item->active_take()->name == "good.wav";
        EXPECT_NEAR(item->volume, is_matched ? 5.0 : 1.0, 0.01) << item->active_take()->name;
    }
}

TEST_F(ImportCommand, ReportsTruncatedRecordings) {
    line("fr/a.wav", 0.1);
    line("en/a.wav", 0.5);
    fs::resize_file(folder / "en/a.wav", fs::file_size(folder / "en/a.wav") - 32000);
    const Outcome outcome = import({"--csv", "pairs.csv", "--json"});
    EXPECT_EQ(outcome.status, 0);
    const std::string remark = "its base line holds 8000 of the 16000 frames that its header claims";
    EXPECT_EQ(nlohmann::json::parse(outcome.output)["pairs"][0]["remark"], remark);
    EXPECT_THAT(bytes_of(folder / "pairs.csv"), HasSubstr("," + remark + "\r\n"));
    EXPECT_THAT(import({}).output, HasSubstr("a.wav: " + remark));
}

TEST_F(ImportCommand, CompletesAGroupOfAnExistingProject) {
    line("fr/bob.wav", 0.1);
    line("en/bob.wav", 0.1);
    project::Project before;
    const std::pair<const char*, int> tracks[] = {{"scenes", 1}, {"bob", 1}, {"base", -2}, {"music", 0}};
    for (const auto& [name, change] : tracks) {
        project::Track& track = before.insert_track(before.tracks().size());
        track.name = name;
        track.set_folder_depth_change(change);
    }
    before.track(3)->add_item(0.0, 4.0).add_take({folder / "music.wav"}, "music.wav");
    ASSERT_TRUE(rpp::save_project(before, folder / "all.rpp"));
    ASSERT_EQ(import({"--group", "bob", "--onto", "all.rpp", "--from-end", "--start", "0.5"}).status, 0);
    project::Project after;
    load(after, "all.rpp");
    EXPECT_EQ(after.tracks().size(), 5U);
    const auto found =
        std::ranges::find(after.tracks(), "bob", [](const auto& track) { return track->name; });
    ASSERT_NE(found, after.tracks().end());
    EXPECT_EQ((*found)->depth(), 0);
    const auto children = outline(after);
    EXPECT_THAT(children, testing::Contains("-base bob.wav@4.500"));
    EXPECT_THAT(children, testing::Contains("-unique bob.wav@5.500"));
    EXPECT_FALSE(fs::exists(folder / "all.rpp-bak")) << "the project was ours";
}

TEST_F(ImportCommand, BacksUpAForeignProject) {
    line("fr/bob.wav", 0.1);
    line("en/bob.wav", 0.1);
    const std::string theirs = "<REAPER_PROJECT 0.1 \"6.19/linux-x86_64\" 1700000000\n>\n";
    write_bytes(folder / "theirs.rpp", theirs);
    fs::create_symlink("theirs.rpp", folder / "link.rpp");
    EXPECT_EQ(import({"--onto", "link.rpp"}).status, 0);
    EXPECT_EQ(bytes_of(folder / "theirs.rpp-bak"), theirs);
    EXPECT_EQ(rpp::is_own_project(folder / "theirs.rpp"), true);
    EXPECT_TRUE(fs::is_symlink(folder / "link.rpp"));
}

TEST_F(ImportCommand, ReplacesWhatItMadeOfAForeignProject) {
    for (const char* side : {"fr", "en"}) {
        fs::create_directory(folder / side);
        write_speech(folder / side / "bob.wav", 1.0);
    }
    const auto save_theirs = [&](const std::string& time) {
        write_bytes(folder / "theirs.rpp", "<REAPER_PROJECT 0.1 \"6.19/linux-x86_64\" " + time +
                                               "\n  RECORD_PATH \"takes\" \"\"\n>\n");
    };
    const auto import_anew = [&](const std::string& ratio) {
        return import(
            {"--onto", "theirs.rpp", "-o", "new.rpp", "--match", "--ride", "--ratio", ratio, "--json"});
    };
    save_theirs("1700000000");
    for (const auto& [ratio, render] : {std::pair{"0", "bob.wav"}, {"4", "bob-001.wav"}}) {
        const Outcome outcome = import_anew(ratio);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_EQ(nlohmann::json::parse(outcome.output)["backup"], nullptr);
        EXPECT_THAT(names_in(folder / "takes"), ElementsAre(render)) << "only what the new project plays";
    }
    save_theirs("1700000001");
    const std::string before = bytes_of(folder / "new.rpp");
    const Outcome outcome = import_anew("4");
    EXPECT_EQ(nlohmann::json::parse(outcome.output)["backup"], "new.rpp-bak")
        << "another program may have saved it";
    EXPECT_THAT(outcome.errors, HasSubstr("new.rpp: was changed; as it was it is kept as new.rpp-bak\n"));
    EXPECT_EQ(bytes_of(folder / "new.rpp-bak"), before);
}

TEST_F(ImportCommand, WritesNothingThatTheProjectCannotHold) {
    write_speech(folder / "line.wav", 1.0);
    for (const char* side : {"fr", "en"}) {
        fs::create_directory(folder / side);
        fs::copy_file(folder / "line.wav", folder / side / "a\nb.wav");
    }
    const auto before = snapshot();
    const Outcome refused = import({"--match", "--ride", "--csv", "pairs.csv", "--json"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(snapshot(), before);
    const auto report = nlohmann::json::parse(refused.output);
    EXPECT_EQ(report["project"], nullptr);
    EXPECT_EQ(report["losses"].size(), 5U) << "two paths, three takes";
    EXPECT_THAT(report["errors"].dump(),
                HasSubstr("fr.rpp: not written, as it cannot hold 5 names or paths"));
    EXPECT_EQ(lines_of(refused.errors).size(), 6U);
    const Outcome accepted = import({"--match", "--ride", "--accept-losses", "--json"});
    EXPECT_EQ(accepted.status, 0);
    EXPECT_EQ(nlohmann::json::parse(accepted.output)["losses"].size(), 5U);
    EXPECT_TRUE(fs::exists(folder / "fr.rpp"));
}

TEST_F(ImportCommand, WritesNothingInADryRunOrWhenItRefuses) {
    write_difficult_pairs();
    line("fr/EN/more.wav", 0.1);
    write_bytes(folder / "note.rpp", "a note");
    fs::create_directory_symlink("fr", folder / "link");
    const auto before = snapshot();
    EXPECT_THAT(felspar({"import", "fr", "en", "--dry-run", "--match", "--ride"}).output,
                HasSubstr("5 pairs in 1 group"));
    const std::tuple<std::vector<std::string>, int, const char*> refusals[] = {
        {{"fr", "en", "--ride"}, 2, "needs --match"},
        {{"fr", "en", "--dry-run", "--csv", "a.csv"}, 2, "writes nothing"},
        {{"fr", "en", "--start", "nan"}, 2, "finite"},
        {{"fr", "missing"}, 1, "missing: No such file"},
        {{"fr", "note.rpp"}, 1, "note.rpp: is no folder"},
        {{"fr", "link"}, 1, "both the subject and the base"},
        {{"fr/EN", "fr"}, 1, "lies in"},
        {{"fr", "en", "-o", "note.rpp"}, 1, "note.rpp: not overwritten"},
        {{"fr", "en", "--csv", "note.rpp"}, 1, "note.rpp: not overwritten"},
        {{"fr", "en", "--unmatched", "note.rpp"}, 1, "note.rpp: not overwritten"},
        {{"fr", "en", "-o", "p.rpp", "--csv", "./p.rpp"}, 1, "written twice"},
        {{"fr", "en", "-o", "/proc/p.rpp"}, 1, "/proc/p.rpp: "},
        {{"fr", "en", "--onto", "note.rpp"}, 1, "note.rpp: "},
        {{"fr", "en", "--match", "--ride", "-o", "fr/p.rpp"}, 1, "would lie in"}};
    for (auto [arguments, status, message] : refusals) {
        arguments.insert(arguments.begin(), "import");
        const Outcome outcome = felspar(arguments);
        EXPECT_EQ(outcome.status, status) << message;
        EXPECT_THAT(outcome.errors, HasSubstr(message));
    }
    EXPECT_EQ(snapshot(), before);
}

} // namespace
} // namespace headless::test
