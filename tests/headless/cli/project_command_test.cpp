// What `felspar project` says about projects.

#include "tests/headless/cli/command_runner.hpp"

namespace headless::test {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// A folder with a nested one, sends, effects in a container, an empty take, sections, and media here and elsewhere.
constexpr const char* project_text = R"(<REAPER_PROJECT 0.1 "7.12/linux64" 1700000000
  SAMPLERATE 96000 1 0
  TEMPO 90 3 4
  PLAYRATE 1 0 0.25 4
  MASTERHWOUT 0 0 1 0 0 0 0 -1
  <MASTERFXLIST
    BYPASS 0 0 0
    <VST "master effect"
    >
  >
  <TEMPOENVEX
    PT 0 100 1
    PT 8 120 1
  >
  MARKER 3 1.5 "the cue" 0 0 1 R {00000000-0000-4000-8000-000000000003} 0
  MARKER 1 2 scene 9 0 1 R {00000000-0000-4000-8000-000000000001} 0
  MARKER 1 4.25 "" 9
  <TRACK {00000000-0000-4000-8000-000000000011}
    NAME dialogue
    ISBUS 1 1
    FX 1
    <VOLENV2
      ACT 1 -1
      PT 0 1 0
      PT 2 0.5 0
    >
    <FXCHAIN
      BYPASS 0 0 0
      <JS "delay"
      >
      BYPASS 1 0 0
      <CONTAINER Container "pair"
        BYPASS 0 0 0
        <VST "inner"
        >
      >
    >
  >
  <TRACK {00000000-0000-4000-8000-000000000012}
    NAME "a |name <"
    ISBUS 1 1
    <FXCHAIN_REC
      BYPASS 0 0 0
    >
  >
  <TRACK {00000000-0000-4000-8000-000000000013}
    NAME lines
    ISBUS 2 -2
    <ITEM
      POSITION 0
      LENGTH 1
      NAME here
      PLAYRATE 1 1 2 -1 0 0.0025
      SM 0 0.1 + 1 1.2
      <SOURCE WAVE
        FILE "audio/here.wav"
      >
      <TAKEFX
        BYPASS 0 0 0
      >
      TAKE NULL
      TAKE SEL
      NAME section
      <SOURCE SECTION
        LENGTH 0.5
        STARTPOS 0.25
        <SOURCE WAVE
          FILE "audio/here.wav"
        >
      >
    >
    <ITEM
      POSITION 5
      LENGTH 2.5
      NAME gone
      <SOURCE _OFFLINE_WAVE
        FILE "audio/gone.wav"
      >
      <VOLENV
        ACT 1 -1
        PT 0 1 0
      >
    >
    <ITEM
      POSITION 5
      LENGTH 1
      NAME elsewhere
      <SOURCE WAVE
        FILE "C:\sounds\far.wav"
      >
    >
    <ITEM
      POSITION 5
      LENGTH 1
      NAME notes
      <SOURCE MIDI
        HASDATA 1 960 QN
        E 960 b0 7b 00
      >
    >
  >
  <TRACK {00000000-0000-4000-8000-000000000014}
    NAME reverb
    ISBUS 0 0
    AUXRECV 2 0 1 0 0 0 0 0 0 -1:U 0 -1 ''
    AUXRECV 99 0 1 0 0 0 0 0 0 -1:U 0 -1 ''
    HWOUT 1026 0 1 0 0 0 0 -1:U -1
  >
>
)";

struct ProjectCommand : FelsparCommand {
    ProjectCommand() {
        std::filesystem::create_directory(folder / "audio");
        write_speech(folder / "audio/here.wav", 0.5);
        write_bytes(folder / "p.rpp", project_text);
    }

    Outcome project(std::vector<std::string> options) const {
        options.insert(options.begin(), "project");
        return felspar(std::move(options));
    }

    json report() const { return json::parse(project({"p.rpp", "--json"}).output); }
};

std::string numbers_of(const json& track) {
    const auto column = [&](const char* key) {
        const std::string number = track[key].dump();
        return std::string(8 - number.size(), ' ') + number;
    };
    return column("items") + column("takes") + column("effects") + "  ";
}

TEST_F(ProjectCommand, ShowsTheTreeOfTracksWithWhatIsOnThem) {
    const json report = this->report();
    const json& tracks = report["tracks"];
    ASSERT_EQ(tracks.size(), 4U);
    EXPECT_EQ(tracks[1]["folder"], 1);
    EXPECT_EQ(tracks[2]["folder"], 2);
    EXPECT_EQ(tracks[3]["folder"], nullptr);
    EXPECT_EQ(tracks[0]["effects"], 3) << "the container and its effect count";
    EXPECT_EQ(tracks[0]["envelopes"].dump(), R"([{"name":"Volume","points":2}])");
    EXPECT_EQ(tracks[1]["input_effects"], 1);
    EXPECT_EQ(tracks[2]["items"], 4);
    EXPECT_EQ(tracks[2]["takes"], 5) << "without the empty one";
    EXPECT_EQ(tracks[2]["take_effects"], 1);
    EXPECT_EQ(tracks[2]["take_envelopes"].size(), 1U);
    EXPECT_EQ(tracks[2]["sends"].dump(), R"([{"name":"reverb","track":4}])");
    EXPECT_EQ(tracks[3]["receives"].dump(), R"([{"name":"lines","track":3},{"name":null,"track":100}])");
    const std::string text = project({"p.rpp"}).output;
    for (const auto& line :
         {numbers_of(tracks[0]) + "1 dialogue\n", numbers_of(tracks[1]) + "  2 a |name <\n",
          numbers_of(tracks[2]) + "    3 lines\n", numbers_of(tracks[3]) + "4 reverb\n"})
        EXPECT_THAT(text, HasSubstr(line));
    for (const char* detail : {" sends to: 4 reverb\n", " receives from: 3 lines, 100 (no such track)\n",
                               " hardware: 3\n", " envelopes: Volume (2 points)\n", " 1 input effect\n",
                               " take envelopes: Volume (1 point)\n", " 1 take effect\n"})
        EXPECT_THAT(text, HasSubstr(detail));
}

TEST_F(ProjectCommand, ShowsTheProjectItselfMarkersAndMedia) {
    const json report = this->report();
    const std::pair<const char*, json> values[] = {
        {"version", "7.12"},    {"system", "linux64"}, {"length_seconds", 7.5},
        {"sample_rate", 96000}, {"tempo_bpm", 100.0},  {"meter", {3, 4}},
        {"tempo_points", 2},    {"cut_off", false},    {"missing_media", 2}};
    for (const auto& [key, value] : values)
        EXPECT_EQ(report[key], value) << key;
    EXPECT_EQ(report["markers"].dump(), R"([{"name":"the cue","number":3,"position_seconds":1.5}])");
    EXPECT_EQ(report["regions"][0]["end_seconds"], 4.25);
    EXPECT_EQ(report["media"].size(), 3U) << "each file once";
    EXPECT_EQ(report["media"][0]["takes"], 2) << "one of them through a section";
    std::map<std::string, int> unplayed;
    for (const json& entry : report["not_played"])
        unplayed[entry["what"]] = entry["count"];
    const std::map<std::string, int> expected{{"effects", 3},
                                              {"sends between tracks", 2},
                                              {"envelopes of tracks, sends and effects", 1},
                                              {"takes with a pitch shift", 1},
                                              {"takes with stretching by markers", 1},
                                              {"takes with processing by effects", 1},
                                              {"takes with media that is offline", 1},
                                              {"takes with a source of type MIDI", 1}};
    EXPECT_EQ(unplayed, expected);
    const std::string text = project({"p.rpp"}).output;
    for (const char* line :
         {"saved by version 7.12 on linux64, 2023-11-14 22:13 UTC\n",
          "length 0:00:07.500, 96000 Hz, 100 bpm in 3/4, 2 tempo points\n", "0:00:01.500     3  the cue\n",
          "0:00:02.000 - 0:00:04.250     1  scene\n", "Media files (3, 2 missing):\n",
          "       1  missing: audio/gone.wav\n", "       1  missing: C:\\sounds\\far.wav\n",
          "       2  audio/here.wav\n", "       1  takes with a source of type MIDI\n"})
        EXPECT_THAT(text, HasSubstr(line));
}

TEST_F(ProjectCommand, ReadsOtherLineEndsAndWhatIsLeftOfACutFile) {
    const json whole = report();
    std::string text;
    for (const char letter : std::string(project_text))
        text += letter == '\n' ? "\r\n" : std::string(1, letter);
    write_bytes(folder / "p.rpp", text);
    EXPECT_EQ(report(), whole);
    write_bytes(folder / "p.rpp", text.substr(0, text.find("NAME gone")));
    const json cut = report();
    EXPECT_EQ(cut["cut_off"], true);
    EXPECT_EQ(cut["tracks"].size(), 3U);
    EXPECT_EQ(cut["tracks"][0], whole["tracks"][0]);
    EXPECT_THAT(project({"p.rpp"}).output, HasSubstr("\n  the file is cut off"));
    const Outcome check = project({"p.rpp", "--check"});
    EXPECT_EQ(check.status, 1);
    EXPECT_THAT(lines_of(check.output),
                ElementsAre("p.rpp: the file is cut off", HasSubstr("none is missing")));
}

TEST_F(ProjectCommand, ChecksMediaOfSeveralProjects) {
    write_bytes(folder / "empty.rpp", "<REAPER_PROJECT 0.1\n>\n");
    write_bytes(folder / "note.rpp", "a note");
    const Outcome outcome = project({"--check", "p.rpp", "note.rpp", "none.rpp", "empty.rpp"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(lines_of(outcome.output), ElementsAre("p.rpp: audio/gone.wav is missing (1 take)",
                                                      "p.rpp: C:\\sounds\\far.wav is missing (1 take)",
                                                      "empty.rpp: plays no media files"));
    EXPECT_THAT(lines_of(outcome.errors),
                ElementsAre(HasSubstr("note.rpp: "), HasSubstr("none.rpp: No such file")));
    EXPECT_EQ(project({"--check", "empty.rpp", "empty.rpp"}).status, 0);
    EXPECT_EQ(project({"empty.rpp", "p.rpp"}).status, 2);
    EXPECT_EQ(project({"p.rpp"}).status, 0) << "missing media is no failure unless it is asked for";
    const Outcome broken = project({"note.rpp", "--json"});
    EXPECT_EQ(broken.status, 1);
    EXPECT_EQ(json::parse(broken.output)["file"], "note.rpp");
    EXPECT_THAT(json::parse(broken.output)["error"], HasSubstr("note.rpp: "));
}

// Deep folders, long and hostile names, many sends.
TEST_F(ProjectCommand, FitsATerminal) {
    std::string text = "<REAPER_PROJECT 0.1\n";
    for (int i = 0; i < 1000; ++i) {
        std::string name = i % 3 == 0 ? std::string(200, 'x') : i % 3 == 1 ? "\x1b[2J\xe8\x81\xb2" : "";
        for (int part = 0; i % 5 == 0 && part < 40; ++part)
            name += "\xe5\x8f\xb0\xe8\xa9\x9e";
        text += "  <TRACK\n    NAME \"" + name + "\"\n    ISBUS " + (i < 60 ? "1 1" : "0 0") + "\n";
        for (int sender = 0; sender < i % 50; ++sender)
            text += "    AUXRECV " + std::to_string(sender) + " 0 1 0 0 0 0 0 0 -1 0 -1 ''\n";
        text += "  >\n";
    }
    write_bytes(folder / "p.rpp", text + ">\n");
    const Outcome outcome = project({"p.rpp"});
    ASSERT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_THAT(outcome.output, Not(HasSubstr("\x1b")));
    EXPECT_THAT(outcome.output, HasSubstr("[in 60 folders] 1000 xxx"));
    EXPECT_THAT(outcome.output, HasSubstr(" more\n"));
    for (const std::string& line : lines_of(outcome.output)) {
        std::size_t columns = 0; // a character of three bytes takes two
        for (const char letter : line)
            columns += (letter & 0x80) == 0 || (letter & 0xf0) == 0xe0 || (letter & 0xc0) == 0xc0 ? 1 : 0;
        columns +=
            static_cast<std::size_t>(std::ranges::count_if(line, [](char c) { return (c & 0xf0) == 0xe0; }));
        EXPECT_LE(columns, 80U) << line;
    }
    EXPECT_EQ(report()["tracks"].size(), 1000U);
}

} // namespace
} // namespace headless::test
