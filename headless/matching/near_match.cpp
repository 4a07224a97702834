#include "headless/matching/near_match.hpp"

#include "common/letter_case.hpp"
#include "headless/matching/language_tag.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <utf8proc.h>

namespace headless::matching {
namespace {

enum Difference : unsigned { unicode_form = 1, letter_case = 2, blanks = 4, language = 8, all = 15 };

struct DifferenceName {
    Difference difference;
    std::string_view name;
};

constexpr std::array<DifferenceName, 4> difference_names{{{letter_case, "letter case"},
                                                          {unicode_form, "Unicode form"},
                                                          {blanks, "blanks"},
                                                          {language, "language"}}};

struct FreeText {
    void operator()(utf8proc_uint8_t* text) const { std::free(text); }
};

bool is_ascii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string mapped(std::string_view text, int options) {
    if (is_ascii(text)) // most names are
        return (options & UTF8PROC_CASEFOLD) != 0 ? letter_case::lowered(text) : std::string(text);
    utf8proc_uint8_t* result = nullptr;
    const auto length = utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                     static_cast<utf8proc_ssize_t>(text.size()), &result,
                                     static_cast<utf8proc_option_t>(options));
    const std::unique_ptr<utf8proc_uint8_t, FreeText> owner(result);
    return length < 0 ? std::string(text)
                      : std::string(reinterpret_cast<const char*>(result), static_cast<std::size_t>(length));
}

/// Includes the no-break and the ideographic space, which Japanese keyboards type.
std::string_view trimmed(std::string_view text) {
    constexpr std::array<std::string_view, 4> all_blanks{" ", "\t", "\xc2\xa0", "\xe3\x80\x80"};
    const auto trim = [&](auto stands_there, auto remove) {
        const auto blank = std::ranges::find_if(all_blanks, stands_there);
        if (blank != all_blanks.end())
            remove(blank->size());
        return blank != all_blanks.end();
    };
    while (
        trim([&](auto blank) { return text.starts_with(blank); }, [&](auto n) { text.remove_prefix(n); })) {
    }
    while (trim([&](auto blank) { return text.ends_with(blank); }, [&](auto n) { text.remove_suffix(n); })) {
    }
    return text;
}

struct NameParts {
    std::string_view stem;
    std::string_view extension; ///< with its dot
};

NameParts split(std::string_view name) {
    const std::size_t dot = std::min(name.rfind('.'), name.size());
    return {name.substr(0, dot), name.substr(dot)};
}

/// The name without differences of these kinds.
std::string key_without(unsigned differences, std::string_view name) {
    const int options = ((differences & unicode_form) != 0 ? UTF8PROC_STABLE | UTF8PROC_COMPOSE : 0) |
                        ((differences & letter_case) != 0 ? UTF8PROC_CASEFOLD : 0);
    const std::string plain = options != 0 ? mapped(name, options) : std::string(name);
    NameParts parts = split(plain);
    if ((differences & blanks) != 0)
        parts.stem = trimmed(parts.stem);
    if ((differences & language) != 0)
        parts.stem = find_language(parts.stem).rest;
    return std::string(parts.stem).append(parts.extension);
}

} // namespace

std::string loose_key(std::string_view name) { return key_without(all, name); }

std::vector<std::string_view> differences_between(std::string_view left, std::string_view right) {
    std::vector<std::string_view> differences;
    for (const auto& [difference, name] : difference_names) {
        const unsigned others = all & ~static_cast<unsigned>(difference);
        if (key_without(others, left) != key_without(others, right))
            differences.push_back(name);
    }
    const auto language_of = [](std::string_view name) { return find_language(trimmed(split(name).stem)); };
    const bool in_two_languages = std::ranges::find(differences, "language") != differences.end();
    if (in_two_languages && !are_translations(language_of(left), language_of(right)))
        return {};
    return differences;
}

} // namespace headless::matching
