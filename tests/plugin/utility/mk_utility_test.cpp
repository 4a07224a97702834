#include "tests/headless/support/scratch_folder.hpp"
#include "utility/dialog_command.hpp"
#include "utility/mk_utility.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <regex>

namespace {

TEST(Strcpy, cuts_to_the_buffer_and_leaves_an_empty_one_alone) {
    char buffer[8] = "before";
    mk_utility::strcpy(buffer, 0, "text");
    mk_utility::strcpy(buffer, -1, "text");
    mk_utility::strcpy(nullptr, 8, "text");
    EXPECT_STREQ(buffer, "before");
    mk_utility::strcpy(buffer, 5, "日本");
    EXPECT_STREQ(buffer, "日\xE6") << "cut at a byte, also inside a character";
    EXPECT_EQ(buffer[5], 'e') << "nothing behind the NUL is touched";
    mk_utility::strcpy(buffer, 1, "text");
    EXPECT_STREQ(buffer, "");
}

TEST(GetVersion, is_cut_to_the_buffer) {
    char version[16] = "";
    get_version(version, sizeof version);
    EXPECT_STREQ(version, "1.1.0");
    get_version(version, 4);
    EXPECT_STREQ(version, "1.1");
    get_version(version, 0);
    EXPECT_STREQ(version, "1.1");
}

TEST(Stricmp, folds_ascii_letters_only) {
    EXPECT_TRUE(mk_utility::Stricmp("ABC", "abc"));
    EXPECT_FALSE(mk_utility::Stricmp("ABC", "abd"));
    EXPECT_FALSE(mk_utility::Stricmp("É", "é"));
    EXPECT_FALSE(mk_utility::Stricmp(nullptr, nullptr));
}

TEST(Rounding, goes_half_away_from_zero_or_up) {
    EXPECT_EQ(mk_utility::round(-0.5, 0), -1.0);
    EXPECT_EQ(mk_utility::round(0.5, 0), 1.0);
    EXPECT_EQ(mk_utility::round(-6.020599913279624, 2), -6.02);
    EXPECT_EQ(mk_utility::round(1.1234567894, 9), 1.123456789);
    EXPECT_EQ(mk_utility::round_up(1.001, 2), 1.01);
    EXPECT_EQ(mk_utility::round_up(-1.009, 2), -1.0);
    EXPECT_EQ(mk_utility::round(-std::numeric_limits<double>::infinity(), 2),
              -std::numeric_limits<double>::infinity());
}

TEST(Rounding, leaves_a_value_alone_when_the_digits_are_beyond_what_a_scale_can_hold) {
    EXPECT_EQ(mk_utility::round(1.26, 10), 1.26);
    EXPECT_EQ(mk_utility::round_up(1.26, 400), 1.26);
}

TEST(Volume, converts_with_the_cut_constant) {
    EXPECT_EQ(mk_utility::to_reaper_volume(0.0), 1.0);
    EXPECT_EQ(mk_utility::to_reaper_volume(-6.0), 0.5011872355810072);
    EXPECT_EQ(mk_utility::to_dB(0.5), -6.020599913279624);
    EXPECT_EQ(mk_utility::to_dB(mk_utility::to_reaper_volume(-6.0)), -5.999999966140547);
    EXPECT_TRUE(std::isinf(mk_utility::to_dB(0.0)));
}

TEST(MatchInTail, takes_the_tail_as_a_pattern_behind_at_least_one_character) {
    EXPECT_TRUE(mk_utility::match_intail("take.WAV", "\\.wav"));
    EXPECT_FALSE(mk_utility::match_intail(".wav", "\\.wav"));
    EXPECT_TRUE(mk_utility::match_intail("takexwav", ".wav"));
    EXPECT_THROW(mk_utility::match_intail("take", "("), std::regex_error);
    EXPECT_THROW(mk_utility::match_intail("take", std::string(5000, '(')), std::regex_error);
}

TEST(MatchInTail, survives_long_texts_and_patterns_that_branch) {
    const std::string text(1 << 20, 'a');
    EXPECT_TRUE(mk_utility::match_intail(text, "a"));
    EXPECT_FALSE(mk_utility::match_intail(text.substr(0, 5000), "(a|aa)+b"));
}

TEST(SplitExtension, splits_at_the_last_dot_of_a_single_line) {
    using Parts = std::pair<std::string, std::string>;
    EXPECT_EQ(mk_utility::split_extension("a.b.wav"), Parts("a.b", "wav"));
    EXPECT_EQ(mk_utility::split_extension("noext"), Parts("noext", ""));
    EXPECT_EQ(mk_utility::split_extension("name."), Parts("name", ""));
    EXPECT_EQ(mk_utility::split_extension(".hidden"), Parts("", "hidden"));
    EXPECT_EQ(mk_utility::split_extension("a\nb.wav"), Parts("a\nb.wav", ""));
    EXPECT_EQ(mk_utility::split_extension("a.wav\r"), Parts("a.wav\r", ""));
}

TEST(DialogCommand, is_built_word_by_word_for_the_script_runner) {
    using mk_utility::osascript_command;
    EXPECT_EQ(
        osascript_command({.message = "Hello", .title = "T", .icon = {}}),
        "osascript -e 'display dialog  \"Hello\" with title \"T\" buttons{\"OK\"} default button \"OK\" '");
    EXPECT_EQ(
        osascript_command({.message = "M", .title = "T", .asks_yes_or_no = true, .icon = "/i c.icns"}),
        "osascript -e 'set B to button returned of (display dialog  \"M\" with title \"T\" buttons{\"Yes\", "
        "\"No\"} default button \"Yes\" with icon POSIX file \"/i c.icns\")'");
}

TEST(DialogCommand, shows_quotes_as_they_are_and_runs_nothing_in_them) {
    const std::string hostile = "it's \"so\" \\ `id` $(id)";
    EXPECT_EQ(mk_utility::zenity_command({.message = hostile, .title = "T", .icon = {}}),
              "zenity --info --ok-label=OK --no-markup --title='T' --text='it'\\''s \"so\" \\ `id` $(id)'");
    EXPECT_NE(mk_utility::osascript_command({.message = hostile, .title = "T", .icon = {}})
                  .find("\"it'\\''s \\\"so\\\" \\\\ `id` $(id)\""),
              std::string::npos);
}

// The dialog service is found by the path, so a stand-in answers for it.
TEST(MessageBox, gives_the_button_and_a_no_for_a_service_that_fails) {
    const headless::test::ScratchFolder folder;
    const std::string old_path = std::getenv("PATH");
    setenv("PATH", (folder.path.string() + ":" + old_path).c_str(), 1);
    const auto service_exits_with = [&](int status) {
        std::ofstream(folder.path / "zenity") << "#!/bin/sh\nexit " << status << "\n";
        std::filesystem::permissions(folder.path / "zenity", std::filesystem::perms::owner_all);
    };
    service_exits_with(0);
    EXPECT_EQ(mk_utility::show_message_box_info("m"), 0);
    EXPECT_EQ(mk_utility::show_message_box_info_YesNo("m"), 6);
    service_exits_with(1);
    EXPECT_EQ(mk_utility::show_message_box_info_YesNo("m"), 7);
    EXPECT_NE(mk_utility::show_message_box_error("m"), 0);
    setenv("PATH", old_path.c_str(), 1);
}

} // namespace
