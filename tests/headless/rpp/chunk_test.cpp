#include "headless/rpp/chunk_reader.hpp"
#include "headless/rpp/chunk_writer.hpp"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>

namespace headless::rpp {
namespace {

struct Quoted {
    std::string text;
    std::string written;
    std::string read;
};

TEST(ChunkWriter, quotes_a_text_so_that_it_is_read_back_as_far_as_a_line_can_hold_it) {
    for (const auto& [text, written, read] :
         {Quoted{"", R"("")", ""},
          {R"(plain台詞\)", R"("plain台詞\")", R"(plain台詞\)"},
          {R"(a "b")", R"('a "b"')", R"(a "b")"},
          {R"(a "b" 'c')", R"(`a "b" 'c'`)", R"(a "b" 'c')"},
          {R"(a "b" 'c' `d`)", R"(`a "b" 'c' 'd'`)", R"(a "b" 'c' 'd')"},
          {std::string("a\r\nb\t\x7F\0c", 8), R"("a  b   c")", "a  b   c"},
          {"broken letters \xFF\xC3", "\"broken letters \xFF\xC3\"", "broken letters \xFF\xC3"}}) {
        EXPECT_EQ(in_quotes(text), written);
        const std::string line = "NAME " + in_quotes(text) + " after";
        ChunkReader in(line);
        ASSERT_TRUE(in.next());
        EXPECT_EQ(in.text(0), read);
        EXPECT_EQ(in.text(1), "after");
    }
}

TEST(Decimal, is_plain_short_and_exact_in_every_locale) {
    const std::string old_locale = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "de_DE.UTF-8"); // has no effect where it is not installed
    EXPECT_EQ(decimal(-2.5), "-2.5");
    EXPECT_EQ(decimal(48000.0), "48000");
    EXPECT_EQ(decimal(5e-5), "0.00005");
    EXPECT_EQ(decimal(-0.0), "0");
    EXPECT_EQ(decimal(std::numeric_limits<double>::infinity()), "0");
    EXPECT_EQ(decimal(std::numeric_limits<double>::quiet_NaN()), "0");
    for (const double value : {1.0 / 3.0, 5e-324, std::numeric_limits<double>::max(), 0.1 + 0.2, -1e22}) {
        const std::string line = "X " + decimal(value);
        EXPECT_EQ(line.find_first_not_of("-.0123456789", 2), std::string::npos) << line;
        ChunkReader reader(line);
        ASSERT_TRUE(reader.next());
        EXPECT_EQ(reader.number(0, 0.0), value);
    }
    std::setlocale(LC_ALL, old_locale.c_str());
}

} // namespace
} // namespace headless::rpp
