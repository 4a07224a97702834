#pragma once
// Languages in file names: "en_line_01", "line_01-fr", "pt-BR.line_01".

#include <string_view>

namespace headless {

enum class TagPlace { none, beginning, end };

/// A name taken apart at its language. The views are into the name.
struct LanguageTag {
    TagPlace place = TagPlace::none;
    std::string_view rest;     ///< the name without the tag and what joined it
    std::string_view language; ///< with its region, if it has one
    bool is_word = false;      ///< an everyday English word, too, such as "it" or "no"
};

/// Looks for a code of ISO 639 or the English name of a language, in any case, joined by '_', '-', '.' or a
/// blank; first at the beginning of the name, then at its end. A region may be joined to the code: after '-'
/// in any case, after '_' in capitals only, since "fr_be_quiet" is no Belgian line. Source: ISO 639-1 and
/// 639-2 codes of the languages that games and films are dubbed into, and the country codes that are commonly
/// put in their place.
LanguageTag find_language(std::string_view name);

/// True when two names of equal rest are believable as one line in two languages: the tags stand in the same
/// place or one name has none, the languages differ, and at least one tag is no everyday word.
bool are_translations(const LanguageTag& left, const LanguageTag& right);

} // namespace headless
