#include "headless/report/printable.hpp"

#include <gtest/gtest.h>

#include <string>

namespace headless {
namespace {

using namespace std::string_literals;

struct Text {
    const char* name;
    std::string given;
    std::string shown;
};

class Printable : public testing::TestWithParam<Text> {};

TEST_P(Printable, shows_what_would_not_stand_in_its_line_and_keeps_the_rest) {
    EXPECT_EQ(printable(GetParam().given), GetParam().shown);
    EXPECT_EQ(printable(GetParam().shown), GetParam().shown) << "a second time";
}

INSTANTIATE_TEST_SUITE_P(
    texts, Printable,
    testing::Values(Text{"plain", "say \"line\" `1` it's.wav", "say \"line\" `1` it's.wav"},
                    Text{"japanese", "台詞_こんにちは.wav", "台詞_こんにちは.wav"},
                    Text{"beyond_the_basic_plane", "\xf0\x9f\x8e\x99.wav", "\xf0\x9f\x8e\x99.wav"},
                    Text{"line_breaks_and_tab", "a\nb\r\tc", "a\\nb\\r\\tc"},
                    Text{"terminal_commands", "\x1b[2J\x7f", "\\x1b[2J\\x7f"},
                    Text{"nul", "a\0b"s, "a\\x00b"},
                    Text{"command_of_one_byte_in_other_codes", "\xc2\x9b", "\\u009b"},
                    Text{"turned_direction", "a\xe2\x80\xaevaw.exe", "a\\u202evaw.exe"},
                    Text{"byte_of_another_encoding", "caf\xe9.wav", "caf\\xe9.wav"},
                    Text{"cut_in_a_character", "\xe5\x8f", "\\xe5\\x8f"},
                    Text{"longer_than_needed", "\xc0\xaf", "\\xc0\\xaf"},
                    Text{"surrogate", "\xed\xa0\x80", "\\xed\\xa0\\x80"},
                    Text{"past_the_last_character", "\xf4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"}),
    [](const auto& row) { return row.param.name; });

TEST(Fitting, counts_two_columns_for_a_wide_character_and_never_splits_one) {
    EXPECT_EQ(fitting("abc", 3), "abc");
    EXPECT_EQ(fitting("abc", 2), "ab");
    EXPECT_EQ(fitting("a台詞", 4), "a台");
    EXPECT_EQ(fitting("a台詞", 5), "a台詞");
    EXPECT_EQ(fitting("台", 0), "");
}

} // namespace
} // namespace headless
