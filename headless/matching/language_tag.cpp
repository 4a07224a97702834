#include "headless/matching/language_tag.hpp"

#include "common/letter_case.hpp"

#include <algorithm>
#include <array>
#include <string>

namespace headless::matching {
namespace {

using namespace std::literals;

constexpr std::string_view separators = "_-. ";

constexpr auto languages = std::to_array<std::string_view>(
    {"ar",        "ara",    "arabic",  "bg",      "br",         "bul",        "bulgarian", "ca",       "cat",
     "catalan",   "ces",    "chi",     "chinese", "chs",        "cht",        "cn",        "cs",       "cz",
     "cze",       "czech",  "da",      "dan",     "danish",     "de",         "deu",       "dk",       "dut",
     "dutch",     "el",     "ell",     "en",      "eng",        "english",    "es",        "est",      "et",
     "eu",        "eus",    "fi",      "fil",     "fin",        "finnish",    "fr",        "fra",      "fre",
     "french",    "ger",    "german",  "gl",      "glg",        "gr",         "gre",       "greek",    "he",
     "heb",       "hebrew", "hi",      "hin",     "hindi",      "hr",         "hrv",       "hu",       "hun",
     "hungarian", "id",     "ind",     "it",      "ita",        "italian",    "ja",        "japanese", "jp",
     "jpn",       "ko",     "kor",     "korean",  "kr",         "lit",        "lt",        "lv",       "may",
     "ms",        "msa",    "nb",      "nl",      "nld",        "nn",         "no",        "nob",      "nor",
     "norwegian", "pl",     "pol",     "polish",  "por",        "portuguese", "pt",        "ptbr",     "ro",
     "ron",       "ru",     "rum",     "rus",     "russian",    "sk",         "sl",        "slk",      "slo",
     "slv",       "spa",    "spanish", "sr",      "srp",        "sv",         "swe",       "swedish",  "th",
     "tha",       "thai",   "tr",      "tur",     "turkish",    "tw",         "ua",        "uk",       "ukr",
     "ukrainian", "us",     "vi",      "vie",     "vietnamese", "zh",         "zho"});
static_assert(std::ranges::is_sorted(languages));

constexpr std::array everyday_words = {"da"sv, "et"sv,  "fin"sv, "he"sv,  "hi"sv, "id"sv, "it"sv,    "may"sv,
                                       "no"sv, "pol"sv, "ro"sv,  "slo"sv, "us"sv, "ms"sv, "polish"sv};

constexpr std::array regions = {"419"sv, "ae"sv,   "ar"sv,   "at"sv, "au"sv, "be"sv, "br"sv, "ca"sv,
                                "ch"sv,  "cl"sv,   "cn"sv,   "co"sv, "de"sv, "eg"sv, "es"sv, "fr"sv,
                                "gb"sv,  "hans"sv, "hant"sv, "hk"sv, "ie"sv, "in"sv, "it"sv, "jp"sv,
                                "kr"sv,  "la"sv,   "mx"sv,   "nl"sv, "nz"sv, "pt"sv, "ru"sv, "sa"sv,
                                "se"sv,  "sg"sv,   "tw"sv,   "uk"sv, "us"sv};

using letter_case::lowered;

bool is_language(std::string_view word) { return std::ranges::binary_search(languages, lowered(word)); }

bool is_region(char separator, std::string_view word) {
    const bool has_small_letters = std::ranges::any_of(word, [](char c) { return c >= 'a' && c <= 'z'; });
    return (separator == '-' || (separator == '_' && !has_small_letters)) &&
           std::ranges::find(regions, lowered(word)) != regions.end();
}

LanguageTag tag(TagPlace place, std::string_view rest, std::string_view language, std::string_view code) {
    if (rest.empty())
        return {};
    return {place, rest, language, std::ranges::find(everyday_words, lowered(code)) != everyday_words.end()};
}

LanguageTag find_at_beginning(std::string_view name) {
    const std::size_t end = name.find_first_of(separators);
    const std::string_view code = name.substr(0, end);
    if (end == std::string_view::npos || !is_language(code))
        return {};
    const std::size_t region_end = name.find_first_of(separators, end + 1);
    if (region_end != std::string_view::npos &&
        is_region(name[end], name.substr(end + 1, region_end - end - 1)))
        return tag(TagPlace::beginning, name.substr(region_end + 1), name.substr(0, region_end), code);
    return tag(TagPlace::beginning, name.substr(end + 1), code, code);
}

LanguageTag find_at_end(std::string_view name) {
    const std::size_t separator = name.find_last_of(separators);
    if (separator == std::string_view::npos)
        return {};
    const std::string_view last = name.substr(separator + 1);
    const std::string_view before = name.substr(0, separator);
    const std::size_t earlier_separator = before.find_last_of(separators);
    if (earlier_separator != std::string_view::npos && is_region(name[separator], last)) {
        const std::string_view code = before.substr(earlier_separator + 1);
        if (is_language(code))
            return tag(TagPlace::end, before.substr(0, earlier_separator), name.substr(earlier_separator + 1),
                       code);
    }
    return is_language(last) ? tag(TagPlace::end, before, last, last) : LanguageTag{};
}

} // namespace

LanguageTag find_language(std::string_view name) {
    for (const LanguageTag& found : {find_at_beginning(name), find_at_end(name)})
        if (found.place != TagPlace::none)
            return found;
    return {TagPlace::none, name, {}, false};
}

bool are_translations(const LanguageTag& left, const LanguageTag& right) {
    const bool left_is_bare = left.place == TagPlace::none;
    const bool right_is_bare = right.place == TagPlace::none;
    if (left_is_bare || right_is_bare)
        return left_is_bare != right_is_bare && !left.is_word && !right.is_word;
    return left.place == right.place && lowered(left.language) != lowered(right.language) &&
           !(left.is_word && right.is_word);
}

} // namespace headless::matching
