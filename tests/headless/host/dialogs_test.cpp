#include "headless/host/dialogs.hpp"

#include <gtest/gtest.h>

#include <sstream>

namespace headless {
namespace {

struct AnswerCase {
    const char* name;
    int type;
    const char* typed;
    int button;
};

class ButtonTest : public testing::TestWithParam<AnswerCase> {};

TEST_P(ButtonTest, is_found_by_the_beginning_of_its_name) {
    std::istringstream input(GetParam().typed);
    std::ostringstream output;
    EXPECT_EQ(ask_button(input, output, "Really?", "Question", GetParam().type), GetParam().button);
    EXPECT_NE(output.str().find("Really?"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Answers, ButtonTest,
                         testing::Values(AnswerCase{"yes", 4, "YES\n", 6}, AnswerCase{"letter", 4, "n\n", 7},
                                         AnswerCase{"second_try", 3, "maybe\n\nc\n", 2},
                                         AnswerCase{"too_long", 4, "yesterday\n", 7},
                                         AnswerCase{"end_of_input_ok", 0, "", 1},
                                         AnswerCase{"end_of_input_cancel", 5, "", 2},
                                         AnswerCase{"end_of_input_ignore", 2, "", 5},
                                         AnswerCase{"unknown_type", 9, "o\n", 1}),
                         [](const auto& test) { return test.param.name; });

TEST(Form, keeps_the_initial_value_for_an_empty_answer) {
    std::vector<FormField> fields{{"Name", "line"}, {"Count", "3"}};
    std::istringstream input("\n5\n");
    std::ostringstream output;
    EXPECT_TRUE(ask_fields(input, output, "Fields", fields));
    EXPECT_EQ(fields[0].value, "line");
    EXPECT_EQ(fields[1].value, "5");
    std::istringstream ended("only one\n");
    EXPECT_FALSE(ask_fields(ended, output, "Fields", fields));
}

} // namespace
} // namespace headless
