// Strings compared, replaced and split: bytes in, bytes out, whatever a script passes.

#include "api/project/strings.hpp"
#include "utility/mk_utility.hpp"

#include <gtest/gtest.h>

#include <tuple>

namespace {

using namespace MK_FELSPAR;
using Texts = std::vector<std::string>;

TEST(Strings, CompareInAnyCaseOrExactly) {
    struct {
        const char *text, *check;
        bool same, included, included_exactly;
    } const cases[] = {{"ABC", "abc", true, true, false},    {"ABC[", "abc{", false, false, false},
                       {"Hello", "ELL", false, true, false}, {"Hello", "ell", false, true, true},
                       {"", "", true, true, true},           {"\u00e9", "\u00c9", false, false, false},
                       {"a", "", false, true, true},         {"", "a", false, false, false}};
    for (const auto& each : cases) {
        SCOPED_TRACE(std::string(each.text) + " and " + each.check);
        bool same = false, included = false, exactly = false;
        EXPECT_TRUE(CheckSameString(each.text, each.check, &same));
        EXPECT_TRUE(CheckIncludePerfectString(each.text, each.check, &exactly));
        EXPECT_TRUE(mk_api::string::CheckIncludeString(each.text, each.check, &included));
        EXPECT_EQ(std::tuple(same, included, exactly),
                  std::tuple(each.same, each.included, each.included_exactly));
    }
    EXPECT_FALSE(mk_utility::Stricmp(nullptr, nullptr)) << "null equals nothing";
}

/// The replaced text, or "refused" when the buffer stayed as it was.
std::string replaced(const std::string& text, const std::string& search, const char* replacement) {
    std::string buffer = "refused" + std::string(2 * text.size() + 100, '\0');
    const bool is_replaced = ReplaceSearchString(text.c_str(), search.c_str(), replacement, buffer.data(),
                                                 static_cast<int>(buffer.size()));
    EXPECT_EQ(is_replaced, std::string(buffer.c_str()) != "refused");
    return buffer.c_str();
}

TEST(Strings, ReplaceEveryMatch) {
    EXPECT_EQ(
        (Texts{replaced("abcabc", "(b)(c)", "$2$1"), replaced("a.b", "a.b", "[$&$$]"),
               replaced("abc", "x*", "-"), replaced("Aa\xff", "a", ""), replaced("abab", "(ab)\\1", "<$1>")}),
        (Texts{"acbacb", "[a.b$]", "-a-b-c-", "A\xff", "<ab>"}));
    EXPECT_EQ(replaced("aa", "(", "x"), "refused");
    char buffer[] = "untouched";
    EXPECT_TRUE(ReplaceSearchString("abc", "a", "b", buffer, 0));
    EXPECT_TRUE(DeleteBlankString("a b", buffer, 0));
    EXPECT_STREQ(buffer, "untouched");
    EXPECT_TRUE(DeleteBlankString(" a b  \t\u3000cdefg", buffer, sizeof buffer));
    EXPECT_STREQ(buffer, "ab\t\u3000cde");
}

} // namespace
