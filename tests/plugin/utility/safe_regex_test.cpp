// Regular expressions beside std::regex, which is right on short texts, and alone on long ones.

#include "tests/plugin/utility/random_patterns.hpp"
#include "utility/safe_regex.hpp"

#include <gtest/gtest.h>

#include <regex>
#include <vector>

namespace {

using mk_test::RegexCase;

/// What a replacement gives: "=" and the text, or that the pattern is refused.
template <class Replace>
std::string answer(Replace replace) {
    try {
        return "=" + replace();
    } catch (const std::regex_error&) {
        return "refused";
    }
}

std::string ours(const RegexCase& each) {
    return answer([&] { return mk_utility::replace_all(each.text, each.pattern, each.format); });
}

std::string plain(const RegexCase& each) {
    return answer([&] { return std::regex_replace(each.text, std::regex(each.pattern), each.format); });
}

TEST(SafeRegex, AgreesWithStdRegexOnFileNames) {
    const char* const patterns[] = {// clang-format off
        "cat|category", "\\.wav$", "\\.(wav|aiff?|flac)$", "^[^_]+_", "_[^_]*$", "(.*)\\.(.*)", "(.+?)_(.+)", "\\d+",
        "\\d{2,3}", "(\\d+)(?=\\.wav)", "(?!\\.)[a-z]+", "[A-Z][a-z]+", "\\s+", "^\\s+|\\s+$", "[\\s_-]+", "\\bvo\\b",
        "\\B_\\B", "(\\w)\\1", "\\b(\\w+) \\1\\b", "^(en|fr|de)_", "_(en|fr|de)(?=[_.])", "(take)?_?(\\d*)", "x*", "",
        "()", "a||b", "(a|ab)(c|bcd)(d*)", "(a*)*", "(a*)+", "(a?)*?b", "((a)|b)*", "(?:(a)|b)\\1", "(z)?\\1", "(a)(b)?",
        "[^\\x00-\\x7f]+", "[\\x80-\\xff]+", "[a-\xff]", "\xc3.", "[\xc3\xa9]", "[[:alpha:]]+", "[[:d:][:s:][:w:]]+",
        "[[:ALNUM:]]", "[[:none:]]", "[[.hyphen.]]", "[[=a=]]", "[[.a.]-c]", "[[:alpha:]-z]", "[]", "[^]", "[]?", "[^]*",
        "[]]", "[-a]", "[a-]", "[a-b-c]", "[--/]", "[+--]", "[a-\\d]", "[\\w-]", "[\\w-a]", "[z-a]", "[\\b]", "[\\B]",
        "[\\1]", "[a", "[", "a{2}", "a{2,}", "a{,2}", "a{2,1}", "a{", "a{x}", "{1}", "a}", "a]", "a)", "(", "(?", "(?<a>b)",
        "(?i)a", "(?>a)", "(?#a)", "(*FAIL)", "*", "+a", "|*", "^*", "a**", "a++", "a?+", "a{2}{2}", "a+?+", "(?=a)*",
        "\\", "\\1", "(\\1)", "(a)\\2", "(a)\\01", "(a)\\10", "\\0", "\\x4", "\\x41", "\\u00e9", "\\u0141", "\\u41", "\\c",
        "\\cA", "\\Qa\\E", "\\K", "\\R", "\\h", "\\A", "\\z", "\\e", "\\a", "\\p{L}", "\\-", "\\_", ".", "..", "$", "^", "$^",
        "a$b", "\n", "\r\n", "^b", "b$", "[^a]", "(?:a|b)+?c", "((((a))))", "(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)(k)\\11"};
    const char* const texts[] = {
        "", "a", "aab", "abcd", "cat category", "Line_012 final.wav", "en_vo_Anna_003.take2.AIFF", "  the the  cafe\u0301 \u00e9.wav ",
        "a\r\nb\n\nb", "-+,-./z[]}~", "abcdefghijkk", "\x01\x7f\xff_A 1"};
    // clang-format on
    for (const char* pattern : patterns)
        for (const char* text : texts)
            for (const char* format : {"X", "<$&|$1|$2>", "$`$'$", "$$1$01$10$a$0"})
                EXPECT_EQ(ours({pattern, text, format}), plain({pattern, text, format}))
                    << pattern << " in " << text;
}

TEST(SafeRegex, AgreesWithStdRegexOnRandomPatterns) {
    mk_test::RandomPatterns patterns(20);
    for (int left = 5000; left > 0; --left) {
        const RegexCase each = patterns.next();
        EXPECT_EQ(ours(each), plain(each)) << each.pattern << " in " << each.text;
    }
}

// Here std::regex departs from the standard: a lookahead takes its position for the start of the text, and
// keeps what it captured in an abandoned attempt.
TEST(SafeRegex, LooksBehindInLookaheads) {
    EXPECT_EQ(ours({"a(?=\\b)", "ab a", "X"}), "=ab X");
    EXPECT_EQ(ours({"(?:(?=(a))ab|a)", "ac", "<$1>"}), "=<>c");
}

std::string repeated(const std::string& text, std::size_t size) {
    std::string long_text;
    while (long_text.size() < size)
        long_text += text;
    return long_text;
}

TEST(SafeRegex, ReplacesInLongTexts) {
    constexpr std::size_t mebibyte = std::size_t{1} << 20;
    std::string names = "line_0_";
    for (int number = 1; number < 20; ++number)
        names += "|line_" + std::to_string(number) + "_";
    const struct {
        std::string pattern, text, replaced;
    } cases[] = {
        {names, repeated("line_7_ line_21_ ", 50'000), repeated("x line_21_ ", 50'000 / 17 * 11 + 11)},
        {"[^,]*,", repeated("abc ", 3000), repeated("abc ", 3000)},
        {"\\b(\\w+) \\1\\b", repeated("one two two ", 3000), repeated("one x ", 1500)},
        {"^.{0,1023}$", repeated("a", 1023), "x"},
        {"^.{0,1023}$", repeated("a", 1024), repeated("a", 1024)},
        {"a{3000}", repeated("a", 6001), "xxa"},
        {"(a|b)*", repeated("ab", mebibyte), "xx"},
        {"(\\w+)_(\\d+) ", repeated("take_12 ", mebibyte), repeated("x", mebibyte / 8)},
        {"(a)\\1", repeated("a", mebibyte), repeated("x", mebibyte / 2)},
        {".*", repeated("a", mebibyte), "xx"}};
    for (const auto& each : cases)
        EXPECT_TRUE(mk_utility::replace_all(each.text, each.pattern, "x") == each.replaced) << each.pattern;
}

TEST(SafeRegex, RefusesCostlySearches) {
    const std::string long_text = repeated("a", std::size_t{1} << 20);
    for (const char* pattern : {"(a+)+b", "[^,]*,", "(((a{99}){99}){99}){9}", "a{65536}"})
        EXPECT_EQ(ours({pattern, long_text, "x"}), "refused") << pattern;
    EXPECT_EQ(ours({"a", long_text, "$'"}), "refused") << "the result grows with the square of the text";
    for (const std::string& brackets : {std::string(100'000, '('), std::string(100'000, '[')})
        EXPECT_EQ(ours({brackets, "a", "x"}), "refused");
    EXPECT_EQ(ours({std::string(1000, '(') + "a" + std::string(1000, ')'), "a", "x"}), "refused");
    EXPECT_EQ(ours({std::string(240, '(') + "a" + std::string(240, ')'), "ab", "$99"}), "=ab");
}

TEST(SafeRegex, MatchesWholeTextsOfAnyBytes) {
    using mk_utility::LetterCase;
    EXPECT_TRUE(mk_utility::matches_whole("ABBA\xc3", "(a)(b)\\2[^b-z]\xc3", LetterCase::is_ignored));
    EXPECT_FALSE(mk_utility::matches_whole("ABBA\xe3", "abba\xc3", LetterCase::is_ignored)) << "ASCII alone";
    EXPECT_TRUE(mk_utility::matches_whole({"a\0b", 3}, "a|ab|a\\0b", LetterCase::matters));
    EXPECT_FALSE(mk_utility::matches_whole("ab\n", "ab", LetterCase::matters));
}

} // namespace
