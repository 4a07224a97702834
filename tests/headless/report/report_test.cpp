#include "headless/report/printable.hpp"
#include "headless/report/progress.hpp"
#include "headless/report/ride_report.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <pty.h>
#include <unistd.h>

namespace headless {
namespace {

TEST(Printable, EscapesCharactersThatDisturbTheLine) {
    const std::pair<std::string, std::string> texts[] = {
        {"say \"line\" `1` it's.wav", "say \"line\" `1` it's.wav"},
        {"台詞_こんにちは \xf0\x9f\x8e\x99.wav", "台詞_こんにちは \xf0\x9f\x8e\x99.wav"},
        {"a\nb\r\tc", "a\\nb\\r\\tc"},
        {"terminal commands \x1b[2J\x7f \xc2\x9b", "terminal commands \\x1b[2J\\x7f \\u009b"},
        {"turned direction \xe2\x80\xaevaw.exe", "turned direction \\u202evaw.exe"},
        {"another encoding, caf\xe9.wav", "another encoding, caf\\xe9.wav"},
        {"cut in a character \xe5\x8f", "cut in a character \\xe5\\x8f"},
        {"longer than needed \xc0\xaf", "longer than needed \\xc0\\xaf"},
        {"no characters \xed\xa0\x80 \xf4\x90\x80\x80",
         "no characters \\xed\\xa0\\x80 \\xf4\\x90\\x80\\x80"}};
    for (const auto& [given, shown] : texts)
        EXPECT_EQ(report::printable(given), shown);
}

TEST(Progress, RewritesOneLineThatFitsTheTerminal) {
    int screen = -1;
    int terminal = -1;
    const winsize size{.ws_row = 2, .ws_col = 20, .ws_xpixel = 0, .ws_ypixel = 0};
    ASSERT_EQ(openpty(&screen, &terminal, nullptr, nullptr, &size), 0);
    {
        report::Progress progress(terminal);
        progress.erase();
        progress.show(3, 40, "a\n台詞_a_li台.wav");
    }
    close(terminal);
    std::string shown;
    for (char letter = 0; read(screen, &letter, 1) == 1;) // until all that was written has come
        shown += letter;
    EXPECT_EQ(shown, "\r\x1b[K3/40  a\\n台詞_a_li\r\x1b[K");
    close(screen);
}

TEST(Progress, EstimatesTheTimeLeft) {
    EXPECT_EQ(report::time_left_text(5.0, 0, 40), "");
    EXPECT_EQ(report::time_left_text(10.0, 10, 75), "1:05 left");
    EXPECT_EQ(report::time_left_text(10.0, 1, 722), "2:00:10 left");
}

const report::RideReport long_take{.file = "in/a\nb.wav",
                                   .output = "ridden/caf\xe9.wav",
                                   .length_seconds = 73.34875,
                                   .windows = 7334,
                                   .points_written = 7330,
                                   .points_kept = 4812,
                                   .largest_cut_db = -7.96,
                                   .largest_boost_db = 2.0,
                                   .momentary_max_before_lufs = -20.04,
                                   .momentary_max_after_lufs = -std::numeric_limits<double>::infinity()};

TEST(RideReport, PrintsAHeadingAndRows) {
    EXPECT_EQ(report::text_heading() + report::text_row(long_take) +
                  report::text_row({.file = "caf\xe9.wav", .largest_cut_db = -0.01}),
              "  length  windows  written    kept     cut   boost   before   after  file\n"
              "       s                              dB      dB     LUFS    LUFS\n"
              "   73.35     7334     7330    4812    -8.0    +2.0    -20.0    -inf  a\\nb.wav\n"
              "    0.00        0        0       0     0.0     0.0        -       -  caf\\xe9.wav\n");
}

TEST(RideReport, PrintsValidJsonForAnyValue) {
    const std::string line = report::json_line(long_take);
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    EXPECT_EQ(nlohmann::json::parse(line), nlohmann::json::parse(R"({
        "file": "in/a\nb.wav", "output": "ridden/caf\ufffd.wav", "length_seconds": 73.34875,
        "windows": 7334, "points_written": 7330, "points_kept": 4812, "largest_cut_db": -7.96,
        "largest_boost_db": 2.0, "momentary_max_before_lufs": -20.04, "momentary_max_after_lufs": null})"));
    EXPECT_EQ(report::json_failure_line("\xe9", "no \xe9"),
              "{\"file\":\"\xef\xbf\xbd\",\"error\":\"no \xef\xbf\xbd\"}\n");
}

} // namespace
} // namespace headless
