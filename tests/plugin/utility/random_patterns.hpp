#pragma once
// Random regular expressions, with texts and replacement formats for them. Lookaheads are those that
// std::regex gets right: they match something.

#include <cstddef>
#include <random>
#include <string>

namespace mk_test {

struct RegexCase {
    std::string pattern, text, format;
};

class RandomPatterns {
public:
    explicit RandomPatterns(unsigned seed) : random_(seed) {}

    RegexCase next() {
        RegexCase next{.pattern = alternatives(2), .text = {}, .format = {}};
        for (std::size_t left = below(8); left > 0; --left)
            next.text += one_of({"a", "b", "c", "_", ".", "-", " ", "1", "\n", "\r", "A", "\u00e9", "abc"});
        next.format = one_of({"[$&]", "<$1|$2>", "$`$'", "$$$01$10", "{$&,$1,$2,$3}"});
        return next;
    }

private:
    std::size_t below(std::size_t bound) { return random_() % bound; }

    template <std::size_t Count>
    std::string one_of(const char* const (&choices)[Count]) {
        return choices[below(Count)];
    }

    std::string alternatives(int depth) {
        std::string pattern;
        do {
            for (std::size_t left = below(4); left > 0; --left)
                pattern += term(depth);
        } while (below(4) == 0 && !(pattern += '|').empty());
        return pattern;
    }

    std::string term(int depth) {
        const std::size_t kind = below(depth > 0 ? 16 : 12);
        if (kind == 15)
            return one_of({"(?=", "(?!"}) + literal() + "|" + literal() + literal() + ")";
        if (kind >= 12)
            return one_of({"(", "(", "(?:"}) + alternatives(depth - 1) + ")" + repeat();
        if (kind == 11)
            return set() + repeat();
        return (kind == 10 ? one_of({"^", "$", "\\b", "\\B", "\\1", "\\2", ".", "."}) : literal()) + repeat();
    }

    std::string literal() {
        if (below(3) > 0)
            return one_of({"a", "b", "c", "_", ".", "-", " ", "1", "\\.", "\\d", "\\w"});
        return one_of({"\\s", "\\S", "\\D", "\\W", "\n", "\r", "A", "\xc3", "\xa9", "\\x61", "\\u0062", "\\t",
                       "]", "}", "\\c_", "\\0", "\\/"});
    }

    std::string set() {
        std::string set = one_of({"[", "[", "[^"});
        for (std::size_t left = below(4); left > 0; --left)
            set +=
                one_of({"a",     "b",         "a-c",   "_",          "-",         "\\d",   "\\w", "\\s",
                        "\\D",   "[:alpha:]", "[:d:]", "[:UPPER:]",  ".",         "[",     "^",   "\\b",
                        "\\]",   "b-a",       "\\x62", "0-9",        " ",         "\xc3",  "\n",  "\xc3-\xff",
                        "[=a=]", "[.a.]",     "\\1",   "[.hyphen.]", "[.space.]", "~-\xc3"});
        return set + "]";
    }

    std::string repeat() {
        if (below(3) > 0)
            return {};
        if (below(4) > 0)
            return one_of({"*", "+", "?", "*?", "+?", "??", "{2}", "{1,2}", "{0}", "{2,}", "{0,1}?"});
        return one_of({"{2,1}", "**", "{,2}", "?{2}", "{1"});
    }

    std::mt19937 random_;
};

} // namespace mk_test
