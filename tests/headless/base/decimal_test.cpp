#include "headless/base/decimal.hpp"

#include <gmock/gmock.h>
#include <limits>

namespace headless {
namespace {

struct Reading {
    const char* text;
    double value;
    const char* rest;
};

TEST(Decimal, IsReadUpToWhatIsNoNumber) {
    constexpr double infinite = std::numeric_limits<double>::infinity();
    for (const auto& [text, value, rest] :
         {Reading{"0.1", 0.1, ""}, Reading{"-.5e1x", -5.0, "x"}, Reading{"1,5", 1.0, ",5"},
          Reading{"1e", 1.0, "e"}, Reading{"0x10", 0.0, "x10"}, Reading{"0e-400", 0.0, ""},
          Reading{"-inf", -infinite, ""}, Reading{"9007199254740993", 9007199254740992.0, ""},
          Reading{"4.9e-324", std::numeric_limits<double>::denorm_min(), ""},
          Reading{"1.7976931348623157e308", std::numeric_limits<double>::max(), ""}}) {
        const auto number = read_decimal(text);
        ASSERT_TRUE(number) << text;
        EXPECT_EQ(number->value, value) << text;
        EXPECT_EQ(number->rest, rest) << text;
    }
}

TEST(Decimal, IsNotReadWhereADoubleWouldBeFarFromIt) {
    for (const char* text : {"", "+1", " 1", "-", ".", "e5", "1e400", "-1e400", "2e-324", "0.001e-400"})
        EXPECT_FALSE(read_decimal(text)) << text;
}

} // namespace
} // namespace headless
