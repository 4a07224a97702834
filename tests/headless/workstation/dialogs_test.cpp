#include "headless/workstation/dialogs.hpp"

#include <gmock/gmock.h>
#include <sstream>
#include <tuple>

namespace headless {
namespace {

TEST(Button, IsFoundByItsFirstLetters) {
    const std::tuple<const char*, int, int> answers[] = {
        {"YES\n", 4, 6}, {"maybe\n\nc\n", 3, 2}, {"yesterday\n", 4, 7}, {"", 5, 2},
        {"", 2, 5},      {"o\n", 9, 1}};
    for (const auto& [typed, type, button] : answers) {
        std::istringstream input(typed);
        std::ostringstream output;
        EXPECT_EQ(workstation::ask_button(input, output, "Really?", "Question", type), button)
            << typed << type;
        EXPECT_THAT(output.str(), testing::HasSubstr("Really?"));
    }
}

TEST(Form, KeepsValuesForEmptyAnswers) {
    std::vector<workstation::FormField> fields{{"Name", "line"}, {"Count", "3"}};
    std::istringstream input("\n5\n");
    std::ostringstream output;
    EXPECT_TRUE(workstation::ask_fields(input, output, "Fields", fields));
    EXPECT_EQ(fields[0].value, "line");
    EXPECT_EQ(fields[1].value, "5");
    std::istringstream ended("only one\n");
    EXPECT_FALSE(workstation::ask_fields(ended, output, "Fields", fields));
}

} // namespace
} // namespace headless
