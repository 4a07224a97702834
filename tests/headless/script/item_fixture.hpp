#pragma once
// A project file with items of every kind, edited by scripts, and the lines that this changes in it.

#include "headless/rpp/rpp.hpp"
#include "tests/headless/script/script_fixture.hpp"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace headless::test {

inline constexpr std::string_view items_text = R"(<REAPER_PROJECT 0.1 "6.80/win64" 1700000000
  AUTOXFADE 129
  CURSOR 0
  TEMPO 120 4 4
  SELECTION 0 0
  SELECTION2 0 0
  <TRACK {A0000000-0000-4000-8000-000000000001}
    NAME first
    SEL 0
    TRACKID {A0000000-0000-4000-8000-000000000001}
    <ITEM
      POSITION 2.00000000000000
      SNAPOFFS 0.5
      LENGTH 4
      LOOP 0
      ALLTAKES 0
      FADEIN 1 0.5 0 1 0 0.2 0.2
      FADEOUT 1.1 0.25 0.1 1 1 0 0
      MUTE 0 -1
      SEL 0
      GROUP 3
      IGUID {B0000000-0000-4000-8000-000000000001}
      IID 7
      <NOTES
        |one > two
        |>
      >
      UNKNOWN 1  2   "3"
      TAKE
      NAME "line 1"
      TAKEVOLPAN 0.00 1.000 -1
      SOFFS 1
      PLAYRATE 2 1 0 -1 0 0.0025
      CHANMODE 0
      GUID {C0000000-0000-4000-8000-000000000001}
      TKM 1.50 early 0
      TKM 6 "late one" 0 0.25
      <SOURCE SECTION
        LENGTH 9
        STARTPOS 1
        OVERLAP 0.01
        <SOURCE WAVE
          FILE "a.wav"
        >
      >
      <TAKEFX
        BYPASS 0 0 0
        FXID {D0000000-0000-4000-8000-000000000001}
      >
      <VOLENV
        EGUID {D0000000-0000-4000-8000-000000000002}
        ACT 1 -1
        PT 0 1 0
        PT 8 0 0
      >
      SM 0 1 0 1 + 4 6 0.5 + 8 9
      TAKE NULL
      TAKE SEL
      NAME notes
      TAKEVOLPAN 0 1 -1
      SOFFS 0.5 1
      PLAYRATE 1 1 0 -1 0 0.0025
      CHANMODE 0
      GUID {C0000000-0000-4000-8000-000000000002}
      <SOURCE MIDI
        HASDATA 1 960 QN
        POOLEDEVTS {D0000000-0000-4000-8000-000000000003}
        E 1920 b0 7b 00
      >
    >
    <ITEM
      POSITION 8 LENGTH 2
      LENGTH 2
      SNAPOFFS 0
      SEL 1
      FADEIN 0 0.01 0
      FADEOUT 3 0.01 0
      NAME "old"
      VOLPAN 0.5 0 1
      SOFFS 0
      <SOURCE WAVE
        FILE "b.wav"
      >
    >
  >
  <TRACK {A0000000-0000-4000-8000-000000000002}
    NAME second
    SEL 1
    <ITEM
      POSITION 4
      LENGTH 1
      SEL 0
      GROUP 3
      COLOR 17834032 B
      IGUID {B0000000-0000-4000-8000-000000000003}
    >
  >
>
)";

/// The project's lines end in carriage returns, as files from Windows do.
class ItemScripts : public ScriptTest {
protected:
    ItemScripts() {
        project.erase_track(*project.track(0));
        project.record_path.clear();
        std::string text(items_text);
        for (std::size_t i = 0; (i = text.find('\n', i)) != text.npos; i += 2)
            text.replace(i, 1, "\r\n");
        EXPECT_TRUE(rpp::parse_project(project, text, folder.path));
        before_ = lines_of(text);
    }

    /// Runs a script that finds the items in `one`, `old` and `two`, takes in `take` (with a section) and `midi`, and tracks
    /// in `first` and `second`.
    /// @returns the lines that it changed in the file, without their indents: "-" for those that are gone, "+"
    /// for new ones
    std::string changes(const std::string& script) {
        const auto outcome = run(R"(
            local r = reaper
            local first, second = r.GetTrack(0, 0), r.GetTrack(0, 1)
            local one, old, two = r.GetMediaItem(0, 0), r.GetMediaItem(0, 1), r.GetMediaItem(0, 2)
            local take, midi = r.GetTake(one, 1), r.GetTake(one, 3)
            local function command(number) r.Main_OnCommand(number, 0) end
            local function equal(wanted, ...)
                local found = {...}
                for i, value in ipairs(wanted) do
                    assert(found[i] == value, i .. ": " .. tostring(found[i]) .. " instead of " .. tostring(value))
                end
            end
        )" + script);
        EXPECT_EQ(outcome.error, "");
        const std::string text = rpp::project_text(project, folder.path);
        project::Project reread;
        EXPECT_TRUE(rpp::parse_project(reread, text, folder.path));
        EXPECT_EQ(rpp::project_text(reread, folder.path), text) << "what is saved reads as the same";
        return difference(before_, lines_of(text));
    }

private:
    static std::vector<std::string> lines_of(const std::string& text) {
        std::vector<std::string> lines;
        for (std::size_t begin = 0; begin < text.size();) {
            const std::size_t end = text.find('\n', begin);
            const std::string line = text.substr(begin, end - begin);
            EXPECT_TRUE(line.ends_with('\r')) << line;
            const std::size_t content = line.find_first_not_of(' ');
            lines.push_back(line.substr(content, line.size() - 1 - content));
            begin = end + 1;
        }
        return lines;
    }

    /// By the longest common sequence of lines.
    static std::string difference(const std::vector<std::string>& before,
                                  const std::vector<std::string>& after) {
        std::vector<std::vector<std::size_t>> common(before.size() + 1,
                                                     std::vector<std::size_t>(after.size() + 1));
        for (std::size_t i = before.size(); i-- > 0;)
            for (std::size_t j = after.size(); j-- > 0;)
                common[i][j] = before[i] == after[j] ? common[i + 1][j + 1] + 1
                                                     : std::max(common[i + 1][j], common[i][j + 1]);
        std::string text;
        for (std::size_t i = 0, j = 0; i < before.size() || j < after.size();)
            if (i < before.size() && j < after.size() && before[i] == after[j])
                ++i, ++j;
            else if (j == after.size() || (i < before.size() && common[i + 1][j] >= common[i][j + 1]))
                text += "-" + before[i++] + "\n";
            else
                text += "+" + after[j++] + "\n";
        return text;
    }

    std::vector<std::string> before_;
};

} // namespace headless::test
