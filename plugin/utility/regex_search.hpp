#pragma once
// Searches one text for one pattern, match by match, with a limit on the work of all searches together.

#include "utility/safe_regex.hpp"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <cstddef>
#include <cstdint>
#include <memory>
#include <pcre2.h>
#include <string_view>

namespace mk_utility {

/// Frees an object of the matching library.
template <auto Function>
struct FreeBy {
    template <class T>
    void operator()(T* made) const {
        Function(made);
    }
};

/// The text must outlive the search. The functions throw std::regex_error if the work limit is reached, and
/// std::bad_alloc if memory runs out.
class RegexSearch {
public:
    /// @throws std::regex_error if the pattern is invalid or too large
    RegexSearch(std::string_view text, std::string_view pattern, LetterCase letter_case);
    RegexSearch(const RegexSearch&) = delete;
    RegexSearch& operator=(const RegexSearch&) = delete;

    /// Returns whether the pattern matches the whole text.
    bool matches_whole();

    /// Finds the first match, and on each further call the next one.
    /// @returns false if there is none
    bool find_next();

    /// Returns what a group matched; group 0 is the whole pattern. Empty if the group matched nothing or does
    /// not exist.
    std::string_view group(std::size_t number) const;

    /// Return the text between the previous match and this one, and the text after this one.
    std::string_view before() const;
    std::string_view after() const;

private:
    bool search(std::size_t from, std::uint32_t options);
    bool search_after_empty_match();
    static int pay_at_callout(pcre2_callout_block* block, void* search);

    std::string_view text_;
    std::unique_ptr<pcre2_code, FreeBy<pcre2_code_free>> code_;
    std::unique_ptr<pcre2_match_data, FreeBy<pcre2_match_data_free>> match_;
    std::unique_ptr<pcre2_match_context, FreeBy<pcre2_match_context_free>> context_;
    std::size_t visible_from_ = 0; ///< start of the text that the matcher sees
    std::size_t before_begin_ = 0; ///< end of the previous match
    bool has_match_ = false;
    bool sees_text_before_ = false;
    std::size_t work_left_;
    std::size_t last_position_ = 0;
};

} // namespace mk_utility
