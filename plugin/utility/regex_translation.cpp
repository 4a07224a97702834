#include "utility/regex_translation.hpp"

#include "utility/regex_bracket.hpp"

#include <cstddef>
#include <optional>
#include <regex>
#include <vector>

namespace mk_utility {
namespace {

using namespace std::regex_constants;

constexpr int deepest_nesting = 250;
constexpr std::size_t max_repeats = 65535;
constexpr std::size_t longest_stretch = 64;
constexpr const char* callout = "(?C1)";

[[noreturn]] void refuse(error_type reason) { throw std::regex_error(reason); }

/// How often a term is matched.
struct Repeat {
    std::size_t least = 0;
    std::optional<std::size_t> most; ///< empty: no limit
    bool is_lazy = false;

    std::string written() const {
        return "{" + std::to_string(least) + "," + (most ? std::to_string(*most) : "") +
               (is_lazy ? "}?" : "}");
    }
};

std::size_t read_count(PatternText& text) {
    if (!text.is_at_digit())
        refuse(error_badbrace);
    const std::size_t count = text.take_number(max_repeats + 1);
    return count <= max_repeats ? count : throw std::regex_error(error_complexity);
}

Repeat read_braces(PatternText& text) {
    Repeat repeat;
    repeat.least = read_count(text);
    if (!text.take_if(','))
        repeat.most = repeat.least;
    else if (!text.is_at('}'))
        repeat.most = read_count(text);
    if (!text.take_if('}') || repeat.most.value_or(max_repeats) < repeat.least)
        refuse(error_badbrace);
    return repeat;
}

std::optional<Repeat> read_repeat(PatternText& text) {
    Repeat repeat;
    if (text.take_if('{'))
        repeat = read_braces(text);
    else if (text.take_if('?'))
        repeat.most = 1;
    else if (text.take_if('+'))
        repeat.least = 1;
    else if (!text.take_if('*'))
        return std::nullopt;
    repeat.is_lazy = text.take_if('?');
    return repeat;
}

class Translation {
public:
    explicit Translation(std::string_view pattern) : text_(pattern) {}

    std::string whole() {
        alternatives();
        if (!text_.is_at_end())
            refuse(error_paren);
        return std::move(written_);
    }

private:
    void alternatives() {
        if (++nesting_ > deepest_nesting)
            refuse(error_complexity);
        do {
            count();
            while (!text_.is_at_end() && !text_.is_at_one_of("|)"))
                term();
        } while (follows('|'));
        --nesting_;
    }

    bool follows(char separator) {
        if (!text_.take_if(separator))
            return false;
        written_ += separator;
        return true;
    }

    void term() {
        if (stretch_ == longest_stretch)
            count();
        ++stretch_;
        const std::size_t begin = written_.size();
        switch (const char next = text_.take(error_paren)) {
        case '*':
        case '+':
        case '?':
        case '{':
            refuse(error_badrepeat);
        case '^':
            written_ += "\\A";
            return;
        case '$':
            written_ += "\\z";
            return;
        case '(':
            return group(begin);
        case '\\':
            return escape(begin);
        case '.':
            written_ += "[^\\r\\n]";
            break;
        case '[':
            written_ += read_brackets(text_);
            break;
        default:
            written_ += written_byte(next);
        }
        repeats(begin, true);
    }

    void group(std::size_t begin) {
        const bool is_captured = !text_.take_if('?');
        const char kind = is_captured ? ':' : text_.take(error_paren);
        if (kind != ':' && kind != '=' && kind != '!')
            refuse(error_paren);
        const std::size_t number = is_closed_.size();
        if (is_captured)
            is_closed_.push_back(false);
        written_ += is_captured ? std::string("(") : std::string("(?") + kind;
        alternatives();
        if (!follows(')'))
            refuse(error_paren);
        if (is_captured)
            is_closed_[number] = true;
        if (kind == ':')
            repeats(begin, false);
    }

    void escape(std::size_t begin) {
        const Escape escape = read_escape(text_, false);
        switch (escape.kind) {
        case Escape::Kind::word_boundary:
            written_ += "\\b";
            return;
        case Escape::Kind::no_word_boundary:
            written_ += "\\B";
            return;
        case Escape::Kind::back_reference:
            refer_back(escape.group);
            repeats(begin, false);
            return count();
        case Escape::Kind::byte:
            written_ += written_byte(escape.byte);
            break;
        case Escape::Kind::set:
            written_ += written_set(escape.set, false);
            break;
        }
        repeats(begin, true);
    }

    void refer_back(std::size_t group) {
        if (group >= is_closed_.size() || !is_closed_[group])
            refuse(error_backref);
        written_ += "\\g{" + std::to_string(group) + "}";
    }

    /// Reads the repeats after what was written from `begin` on. One may repeat another.
    void repeats(std::size_t begin, bool is_one_byte) {
        for (bool is_first = true; const auto repeat = read_repeat(text_); is_first = false) {
            if (!is_first)
                written_.insert(begin, "(?:") += ')';
            if (is_first && is_one_byte)
                repeat_byte(begin, *repeat);
            else
                written_ += repeat->written();
            count();
        }
    }

    /// Splits off repeats that are longer than the stretch from one callout to the next.
    void repeat_byte(std::size_t begin, Repeat repeat) {
        const std::string byte = written_.substr(begin);
        const std::size_t stretches = repeat.least / longest_stretch;
        if (stretches > 0)
            written_ += "{" + std::to_string(longest_stretch) + "}" + callout + "){" +
                        std::to_string(stretches) + "}" + byte;
        if (stretches > 0)
            written_.insert(begin, "(?:");
        repeat.least -= stretches * longest_stretch;
        if (repeat.most)
            *repeat.most -= stretches * longest_stretch;
        written_ += repeat.written();
    }

    void count() {
        written_ += callout;
        stretch_ = 0;
    }

    PatternText text_;
    std::string written_;
    std::size_t stretch_ = 0; ///< terms since the last callout
    int nesting_ = 0;
    std::vector<bool> is_closed_{false}; ///< by group number; 0 is not a group
};

} // namespace

std::string translate_pattern(std::string_view pattern) { return Translation(pattern).whole(); }

} // namespace mk_utility
