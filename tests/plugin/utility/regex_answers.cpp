// Prints what patterns at random make of their texts, so that builds with different C++ libraries can be
// compared.

#include "tests/plugin/utility/random_patterns.hpp"
#include "utility/safe_regex.hpp"

#include <cstdio>
#include <regex>

int main() {
    mk_test::RandomPatterns patterns(1);
    for (int left = 20'000; left > 0; --left) {
        const mk_test::RegexCase each = patterns.next();
        std::string answer;
        try {
            answer = mk_utility::replace_all(each.text, each.pattern, each.format);
        } catch (const std::regex_error&) {
            answer = "refused";
        }
        std::printf("%s\n%s\n", each.pattern.c_str(), answer.c_str());
    }
}
