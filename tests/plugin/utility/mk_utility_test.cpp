#include "system/posix/dialog_command.hpp"
#include "utility/mk_utility.hpp"

#include <gtest/gtest.h>

#include <regex>

namespace {

TEST(Strcpy, CutsToTheBuffer) {
    char buffer[8] = "before";
    mk_utility::strcpy(buffer, -1, "text");
    mk_utility::strcpy(nullptr, 8, "text");
    EXPECT_STREQ(buffer, "before");
    mk_utility::strcpy(buffer, 5, "日本");
    EXPECT_STREQ(buffer, "日\xE6") << "cut at a byte, also inside a character";
    EXPECT_EQ(buffer[5], 'e') << "nothing behind the NUL is touched";
    get_version(buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "1.1.0");
    get_version(buffer, 4);
    EXPECT_STREQ(buffer, "1.1");
}

TEST(Rounding, RoundsHalvesAwayFromZeroOrUp) {
    EXPECT_EQ(mk_utility::round(-0.5, 0), -1.0);
    EXPECT_EQ(mk_utility::round(1.1234567894, 9), 1.123456789);
    EXPECT_EQ(mk_utility::round(1.26, 10), 1.26);
    EXPECT_EQ(mk_utility::round_up(1.001, 2), 1.01);
    EXPECT_EQ(mk_utility::round_up(-1.009, 2), -1.0);
    EXPECT_EQ(mk_utility::round_up(1.26, 400), 1.26);
}

TEST(MatchInTail, MatchesAPatternAfterAnything) {
    EXPECT_TRUE(mk_utility::match_intail("take.WAV", "\\.wav"));
    EXPECT_FALSE(mk_utility::match_intail(".wav", "\\.wav"));
    EXPECT_THROW(mk_utility::match_intail("take", "("), std::regex_error);
    EXPECT_TRUE(mk_utility::match_intail("take_abAB.wav", "(ab)\\1\\.wav"));
    EXPECT_FALSE(mk_utility::match_intail(std::string(3000, 'a'), "a{3000}"));
    EXPECT_TRUE(mk_utility::match_intail(std::string(1 << 20, 'a'), "a"));
}

TEST(SplitExtension, SplitsAtTheLastDot) {
    using Parts = std::pair<std::string, std::string>;
    const std::pair<const char*, Parts> cases[] = {
        {"a.b.wav", {"a.b", "wav"}},    {"noext", {"noext", ""}},    {"name.", {"name", ""}},
        {"a\nb.wav", {"a\nb.wav", ""}}, {".hidden", {"", "hidden"}}, {"a.wav\r", {"a.wav\r", ""}}};
    for (const auto& [path, parts] : cases)
        EXPECT_EQ(mk_utility::split_extension(path), parts);
}

TEST(DialogCommand, EscapesAnyText) {
    const std::string hostile = "it's \"so\" \\ `id` $(id)";
    const desktop::Dialog tells{.message = hostile, .title = "T", .icon = {}};
    const desktop::Dialog asks{.message = "M", .title = "T", .asks_yes_or_no = true, .icon = "/i c.icns"};
    EXPECT_EQ(desktop::zenity_command(tells),
              "zenity --info --ok-label=OK --no-markup --title='T' --text='it'\\''s \"so\" \\ `id` $(id)'");
    EXPECT_EQ(desktop::osascript_command(tells),
              "osascript -e 'display dialog  \"it'\\''s \\\"so\\\" \\\\ `id` $(id)\" with title \"T\" "
              "buttons{\"OK\"} default button \"OK\" '");
    EXPECT_EQ(
        desktop::osascript_command(asks),
        "osascript -e 'set B to button returned of (display dialog  \"M\" with title \"T\" buttons{\"Yes\", "
        "\"No\"} default button \"Yes\" with icon POSIX file \"/i c.icns\")'");
}

} // namespace
