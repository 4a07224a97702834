// Strings compared, split, copied and replaced, and regular expressions.

#include "api/project/strings.hpp"

#include "tests/platforms/pure_results/results.hpp"
#include "utility/mk_utility.hpp"
#include "utility/safe_regex.hpp"

#include <algorithm>
#include <iterator>
#include <regex>

namespace pure_results {
namespace {

using mk_utility::LetterCase;

const std::string texts[] = {"",
                             "a",
                             "ABC[",
                             "abc{",
                             "Line_012 final.wav",
                             "  the the  cafe\u0301 \u00e9.wav ",
                             "\u53f0\u8a5e_\u00c9.WAV",
                             "a\r\nb\n\nb",
                             "-+,-./z[]}~",
                             "aaaaaaaaaaaaaaaaaac",
                             "\x01\x7f\xff_A 1"};

const char* const patterns[] = {"",
                                "x*",
                                "(a|ab)(c|bcd)(d*)",
                                "(a*)*",
                                "(a?)*?b",
                                "((a)|b)*",
                                "(?:(a)|b)\\1",
                                "(z)?\\1",
                                "(a+)+b",
                                "(a|aa)+$",
                                "^(\\w+\\s?)*$",
                                "\\.wav$",
                                "\\.(wav|aiff?|flac)$",
                                "(\\d+)(?=\\.wav)",
                                "(?!\\.)[a-z]+",
                                "\\b(\\w+) \\1\\b",
                                "\\B_\\B",
                                "^b",
                                "b$",
                                "$^",
                                ".",
                                "..",
                                "[^a]",
                                "[\\s_-]+",
                                "[^\\x00-\\x7f]+",
                                "[\\x80-\\xff]",
                                "\xc3.",
                                "[\xc3\xa9]",
                                "[[:alpha:]]+",
                                "[[:ALNUM:]]",
                                "[[:none:]]",
                                "[[.hyphen.]]",
                                "[[=a=]]",
                                "[]",
                                "[^]",
                                "[-a]",
                                "[a-\\d]",
                                "[z-a]",
                                "[\\b]",
                                "a{2,}",
                                "a{,2}",
                                "a{2,1}",
                                "{1}",
                                "a}",
                                "a)",
                                "(",
                                "(?<a>b)",
                                "(?i)a",
                                "(?>a)",
                                "(*FAIL)",
                                "*",
                                "a**",
                                "a++",
                                "\\",
                                "\\1",
                                "(a)\\10",
                                "\\0",
                                "\\x4",
                                "\\u00e9",
                                "\\cA",
                                "\\Qa\\E",
                                "\\p{L}",
                                "\\-",
                                "\\_",
                                "a{65536}",
                                "(((a{99}){99}){99}){9}"};

std::string replaced(const std::string& text, const std::string& pattern, const std::string& format) {
    try {
        return shown(mk_utility::replace_all(text, pattern, format));
    } catch (const std::regex_error&) {
        return "refused";
    }
}

std::string matched(const std::string& text, const std::string& pattern, LetterCase letter_case) {
    try {
        return mk_utility::matches_whole(text, pattern, letter_case) ? "yes" : "no";
    } catch (const std::regex_error&) {
        return "refused";
    }
}

/// A pattern that may well be invalid, put together from parts of patterns.
std::string random_pattern(Numbers& numbers) {
    static const char* const parts[] = {
        "a",           "b",   "c",   "_",   ".",    "-",       " ",    "1",    "\\.",   "\\d",    "\\w",
        "\\s",         "\\S", "\\D", "(",   ")",    "(",       ")",    "(?:",  "(?=",   "(?!",    "|",
        "|",           "*",   "+",   "?",   "*?",   "+?",      "??",   "{2}",  "{1,2}", "{0}",    "{2,}",
        "^",           "$",   "\\b", "\\B", "\\1",  "\\2",     "[ab]", "[^a]", "[a-c]", "[\\d_]", "[[:d:]]",
        "[[:UPPER:]]", "[",   "]",   "\n",  "\xc3", "\\u0062", "\\t"};
    std::string pattern;
    for (std::size_t left = 1 + numbers.below(9); left > 0; --left)
        pattern += parts[numbers.below(std::size(parts))];
    return pattern;
}

std::string random_text(Numbers& numbers) {
    static const char* const parts[] = {"a", "b",  "c",  "_", ".",      "-",  " ",
                                        "1", "\n", "\r", "A", "\u00e9", "abc"};
    std::string text;
    for (std::size_t left = numbers.below(9); left > 0; --left)
        text += parts[numbers.below(std::size(parts))];
    return text;
}

void add_comparisons(Results& results) {
    for (const std::string& text : texts) {
        std::string line = "compare " + shown(text) + ":";
        for (const char* check : {"", "A", "abc[", "\u00e9", "\u00c9.wav", "THE", "\xff"}) {
            bool is_same = false, is_included = false, is_included_exactly = false;
            MK_FELSPAR::CheckSameString(text.c_str(), check, &is_same);
            mk_api::string::CheckIncludeString(text.c_str(), check, &is_included);
            MK_FELSPAR::CheckIncludePerfectString(text.c_str(), check, &is_included_exactly);
            line += " " + std::to_string(is_same) + std::to_string(is_included) +
                    std::to_string(is_included_exactly) +
                    std::to_string(mk_utility::Stricmp(text.c_str(), check));
        }
        results.add(line);
    }
}

} // namespace

void add_strings(Results& results) {
    add_comparisons(results);
    for (const std::string& text : texts) {
        char cut[8] = "", blankless[16] = "";
        mk_utility::strcpy(cut, sizeof cut, text);
        MK_FELSPAR::DeleteBlankString(text.c_str(), blankless, sizeof blankless);
        const auto [stem, extension] = mk_utility::split_extension(text);
        results.add("parts " + shown(text) + ": " + shown({cut, blankless, stem, extension}));
        for (const char* separators : {"", " ", "_. \n", "\xa9"}) {
            std::vector<std::string> pieces;
            MK_FELSPAR::GetStringSplitList(text, separators, pieces);
            results.add("split " + shown(separators) + ": " + shown(pieces));
        }
    }
    results.add("format " + shown(mk_utility::format("<%s>%%", "\u00e9")) +
                shown(mk_utility::format("%s-%-5s|%.2s", "a", "b", "cde")));
}

void add_patterns(Results& results) {
    for (const char* pattern : patterns) {
        std::string line = "pattern " + shown(pattern) + ":";
        for (const std::string& text : texts) {
            const std::string first = replaced(text, pattern, "<$&|$1>");
            line += " " + first;
            if (first == "refused") // slowly, perhaps
                continue;
            line += matched(text, pattern, LetterCase::is_ignored);
            for (const char* format : {"", "X", "$`$'$", "$$1$01$10$a$0"})
                results.sweep(replaced(text, pattern, format));
        }
        results.add(line);
    }
    results.end_sweep("replacement formats");
    Numbers numbers(2);
    for (int left = 20'000; left > 0; --left) {
        const std::string pattern = random_pattern(numbers);
        const std::string text = random_text(numbers);
        results.sweep(replaced(text, pattern, "{$&,$1,$2}"));
        results.sweep(matched(text, pattern, LetterCase::matters));
        results.sweep(matched(text, pattern, LetterCase::is_ignored));
    }
    results.end_sweep("random patterns");
    // What would take too long is refused after the same amount of work.
    for (const auto& [pattern, size] : {std::pair{"(a+)+b", 23U},
                                        {"(a+)+b", 1000U},
                                        {"[^,]*,", 10'000U},
                                        {"[^,]*,", 60'000U},
                                        {"(a|b)*", 100'000U},
                                        {".*", 100'000U}})
        results.add("long " + shown(pattern) + " " + std::to_string(size) + ": " +
                    replaced(std::string(size, 'a'), pattern, "x").substr(0, 20));
}

} // namespace pure_results
