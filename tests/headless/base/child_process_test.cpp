#include "headless/base/child_process.hpp"

#include <gmock/gmock.h>

namespace headless {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ChildProcess, CommandLinesAreSplitAtBlanksOutsideQuotes) {
    EXPECT_THAT(command_words("  a  b\tc\n"), ElementsAre("a", "b", "c"));
    EXPECT_THAT(command_words("\"/with blank/a\" 'it''s' x\"y z\"w \"\""),
                ElementsAre("/with blank/a", "its", "xy zw", ""));
    EXPECT_THAT(command_words("a 'open b"), ElementsAre("a", "open b"));
    EXPECT_THAT(command_words(" "), IsEmpty());
}

TEST(ChildProcess, GivesStatusAndWholeOutput) {
    const auto printed = run_process({"sh", "-c", "head -c 300000 /dev/zero; exit 7"}, {});
    ASSERT_TRUE(printed);
    EXPECT_EQ(printed->status, 7);
    EXPECT_EQ(printed->output.size(), 300000U);
    const auto killed = run_process({"sh", "-c", "kill -9 $$"}, {});
    ASSERT_TRUE(killed);
    EXPECT_EQ(killed->status, 128 + 9);
    const auto reader = run_process({"cat"}, {});
    ASSERT_TRUE(reader) << "the standard input is empty";
    EXPECT_EQ(reader->output, "");
}

TEST(ChildProcess, EndsWhatTakesTooLongOrCannotStart) {
    EXPECT_FALSE(run_process({"sleep", "1000"}, std::chrono::milliseconds(1)));
    EXPECT_FALSE(run_process({"/no/such/program"}, {}));
    EXPECT_FALSE(run_process({}, {}));
    EXPECT_FALSE(start_process({"/no/such/program"}));
    EXPECT_TRUE(start_process({"true"}));
}

} // namespace
} // namespace headless
