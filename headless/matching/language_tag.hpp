#pragma once
// Language tags in file names: "en_line_01", "line_01-fr", "pt-BR.line_01".

#include <string_view>

namespace headless::matching {

enum class TagPlace { none, beginning, end };

/// A name split at its language tag. The views point into the name.
struct LanguageTag {
    TagPlace place = TagPlace::none;
    std::string_view rest;     ///< the name without the tag and its separator
    std::string_view language; ///< with its region, if it has one
    bool is_word = false;      ///< also an everyday English word, such as "it" or "no"
};

/// Looks for an ISO 639 code or the English name of a language, in any letter case, separated by '_', '-',
/// '.' or a blank: first at the beginning of the name, then at its end. A region may follow the code: after
/// '-' in any letter case, after '_' in capitals only, since "fr_be_quiet" is not a Belgian line. Source: ISO
/// 639-1 and 639-2 codes of the languages that games and films are dubbed into, and the country codes that
/// are commonly used instead of them.
LanguageTag find_language(std::string_view name);

/// True if two names with an equal rest are plausible as one line in two languages: the tags are in the same
/// place or one name has none, the languages differ, and at least one tag is not an everyday word.
bool are_translations(const LanguageTag& left, const LanguageTag& right);

} // namespace headless::matching
