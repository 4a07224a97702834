#include "utility/regex_search.hpp"

#include "utility/regex_translation.hpp"

#include <algorithm>
#include <limits>
#include <new>
#include <regex>

namespace mk_utility {
namespace {

// The work limit of all searches of one text together. A byte that a repeat passes counts as one, a callout
// as much as the time of eight. That is seconds at most for a text of 1 MiB, and grows with longer texts.
constexpr std::size_t min_budget = std::size_t{1} << 29;
constexpr std::size_t budget_of_byte = 512;
constexpr std::size_t cost_of_callout = 8;

// Each step that may have to be undone is stored: enough for a group that is repeated for each byte of 1 MiB.
constexpr std::uint32_t max_memory_kib = 512U * 1024U;

PCRE2_SPTR bytes_of(std::string_view text) { return reinterpret_cast<PCRE2_SPTR>(text.data()); }

/// @throws std::bad_alloc if `object` is null, which the library returns if memory runs out
template <class T>
T* made(T* object) {
    return object ? object : throw std::bad_alloc();
}

pcre2_code* compile(const std::string& pattern, LetterCase letter_case) {
    const std::unique_ptr<pcre2_compile_context, FreeBy<pcre2_compile_context_free>> context(
        made(pcre2_compile_context_create(nullptr)));
    // With a line end of two bytes, the search would not start between them.
    pcre2_set_newline(context.get(), PCRE2_NEWLINE_LF);
    int error = 0;
    std::size_t position = 0;
    pcre2_code* const code = pcre2_compile(bytes_of(pattern), pattern.size(),
                                           PCRE2_NO_START_OPTIMIZE | PCRE2_NEVER_UTF |
                                               (letter_case == LetterCase::is_ignored ? PCRE2_CASELESS : 0),
                                           &error, &position, context.get());
    if (!code && error != PCRE2_ERROR_HEAP_FAILED)
        throw std::regex_error(std::regex_constants::error_complexity);
    return made(code);
}

} // namespace

RegexSearch::RegexSearch(std::string_view text, std::string_view pattern, LetterCase letter_case)
    : text_(text), code_(compile(translate_pattern(pattern), letter_case)),
      match_(made(pcre2_match_data_create_from_pattern(code_.get(), nullptr))),
      context_(made(pcre2_match_context_create(nullptr))),
      work_left_(std::max(min_budget, budget_of_byte * text.size())) {
    pcre2_set_match_limit(context_.get(), std::numeric_limits<std::uint32_t>::max());
    pcre2_set_depth_limit(context_.get(), std::numeric_limits<std::uint32_t>::max());
    pcre2_set_heap_limit(context_.get(), max_memory_kib);
    pcre2_set_callout(context_.get(), pay_at_callout, this);
}

bool RegexSearch::matches_whole() { return search(0, PCRE2_ANCHORED | PCRE2_ENDANCHORED); }

bool RegexSearch::find_next() {
    if (!has_match_)
        return has_match_ = search(0, 0);
    before_begin_ = text_.size() - after().size();
    if (!group(0).empty()) {
        sees_text_before_ = true;
        return search(before_begin_, 0);
    }
    return before_begin_ < text_.size() && search_after_empty_match();
}

// Searches as std::regex_iterator does: first for a match that is not empty at the same position, then
// further on. The first of these does not see the text before it unless an earlier search did.
bool RegexSearch::search_after_empty_match() {
    if (search(before_begin_, PCRE2_ANCHORED | PCRE2_NOTEMPTY_ATSTART))
        return true;
    sees_text_before_ = true;
    return search(before_begin_ + 1, 0);
}

bool RegexSearch::search(std::size_t from, std::uint32_t options) {
    visible_from_ = sees_text_before_ ? 0 : from;
    const std::string_view visible = text_.substr(visible_from_);
    last_position_ = from - visible_from_;
    const int found = pcre2_match(code_.get(), bytes_of(visible), visible.size(), from - visible_from_,
                                  options, match_.get(), context_.get());
    if (found == PCRE2_ERROR_NOMEMORY)
        throw std::bad_alloc();
    if (found < 0 && found != PCRE2_ERROR_NOMATCH)
        throw std::regex_error(std::regex_constants::error_complexity);
    return found > 0;
}

int RegexSearch::pay_at_callout(pcre2_callout_block* block, void* search) {
    auto& self = *static_cast<RegexSearch*>(search);
    const std::size_t position = block->current_position;
    const std::size_t cost =
        cost_of_callout + (position > self.last_position_ ? position - self.last_position_ : 0);
    self.last_position_ = position;
    if (self.work_left_ < cost)
        return PCRE2_ERROR_CALLOUT;
    self.work_left_ -= cost;
    return 0;
}

std::string_view RegexSearch::group(std::size_t number) const {
    const std::size_t* const ends = pcre2_get_ovector_pointer(match_.get());
    if (number >= pcre2_get_ovector_count(match_.get()) || ends[2 * number] == PCRE2_UNSET)
        return {};
    return text_.substr(visible_from_ + ends[2 * number], ends[2 * number + 1] - ends[2 * number]);
}

std::string_view RegexSearch::before() const {
    return text_.substr(before_begin_, text_.size() - after().size() - group(0).size() - before_begin_);
}

std::string_view RegexSearch::after() const {
    return text_.substr(visible_from_ + pcre2_get_ovector_pointer(match_.get())[1]);
}

} // namespace mk_utility
