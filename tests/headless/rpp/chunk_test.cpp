#include "headless/rpp/chunk_reader.hpp"
#include "headless/rpp/chunk_writer.hpp"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>

namespace headless::rpp {
namespace {

struct QuoteCase {
    const char* name;
    std::string text;
    std::string written;
    std::string read;
};

class Quoted : public testing::TestWithParam<QuoteCase> {};

TEST_P(Quoted, is_read_back_as_far_as_a_line_can_hold_it) {
    EXPECT_EQ(in_quotes(GetParam().text), GetParam().written);
    const std::string line = "NAME " + in_quotes(GetParam().text) + " after";
    ChunkReader in(line);
    ASSERT_TRUE(in.next());
    EXPECT_EQ(in.text(0), GetParam().read);
    EXPECT_EQ(in.text(1), "after");
}

INSTANTIATE_TEST_SUITE_P(
    Text, Quoted,
    testing::Values(QuoteCase{"empty", "", R"("")", ""}, QuoteCase{"plain", "line", R"("line")", "line"},
                    QuoteCase{"double_quotes", R"(a "b")", R"('a "b"')", R"(a "b")"},
                    QuoteCase{"both_quotes", R"(a "b" 'c')", R"(`a "b" 'c'`)", R"(a "b" 'c')"},
                    QuoteCase{"all_quotes", R"(a "b" 'c' `d`)", R"(`a "b" 'c' 'd'`)", R"(a "b" 'c' 'd')"},
                    QuoteCase{"line_breaks_and_controls", std::string("a\r\nb\t\x7F\0c", 8), R"("a  b   c")",
                              "a  b   c"},
                    QuoteCase{"a_backslash_at_the_end", R"(a\)", R"("a\")", R"(a\)"},
                    QuoteCase{"other_letters", "台詞", R"("台詞")", "台詞"},
                    QuoteCase{"broken_letters", "a\xFF\xC3", "\"a\xFF\xC3\"", "a\xFF\xC3"}),
    [](const auto& row) { return row.param.name; });

TEST(Decimal, is_plain_short_and_exact_in_every_locale) {
    const char* old_locale = std::setlocale(LC_ALL, nullptr);
    const std::string keep = old_locale;
    std::setlocale(LC_ALL, "de_DE.UTF-8"); // has no effect where it is not installed
    EXPECT_EQ(decimal(0.1), "0.1");
    EXPECT_EQ(decimal(-2.5), "-2.5");
    EXPECT_EQ(decimal(48000.0), "48000");
    EXPECT_EQ(decimal(5e-5), "0.00005");
    EXPECT_EQ(decimal(-0.0), "0");
    EXPECT_EQ(decimal(std::numeric_limits<double>::infinity()), "0");
    EXPECT_EQ(decimal(std::numeric_limits<double>::quiet_NaN()), "0");
    for (const double value : {1.0 / 3.0, 5e-324, std::numeric_limits<double>::max(), 0.1 + 0.2, -1e22}) {
        const std::string text = decimal(value);
        EXPECT_EQ(text.find_first_not_of("-.0123456789"), std::string::npos) << text;
        const std::string line = "X " + text;
        ChunkReader reader(line);
        ASSERT_TRUE(reader.next());
        EXPECT_EQ(reader.number(0, 0.0), value);
    }
    std::setlocale(LC_ALL, keep.c_str());
}

TEST(ChunkReader, walks_a_block_and_skips_the_blocks_that_nobody_enters) {
    ChunkReader in(
        "<OUTER 1\r\n\r\n  <UNKNOWN\n <DEEPER\n | <no block\n >\n >\n\tLINE 2.5\n <KNOWN 3\n X\n >\n>\n");
    ASSERT_TRUE(in.next());
    EXPECT_EQ(in.name(), "OUTER");
    EXPECT_EQ(in.integer(0, 0), 1);
    in.enter();
    ASSERT_TRUE(in.next());
    EXPECT_EQ(in.name(), "UNKNOWN");
    ASSERT_TRUE(in.next());
    EXPECT_EQ(in.name(), "LINE");
    EXPECT_EQ(in.number(0, 0.0), 2.5);
    EXPECT_EQ(in.number(1, 7.0), 7.0);
    ASSERT_TRUE(in.next());
    EXPECT_TRUE(in.begins_block());
    in.enter();
    ASSERT_TRUE(in.next());
    EXPECT_EQ(in.name(), "X");
    EXPECT_FALSE(in.next()); // the end of KNOWN
    EXPECT_FALSE(in.next()); // the end of OUTER
    EXPECT_FALSE(in.failure());
}

} // namespace
} // namespace headless::rpp
