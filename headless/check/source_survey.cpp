#include "headless/check/source_survey.hpp"

#include "headless/check/lua_tokens.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <map>
#include <set>
#include <utility>

namespace headless::check {
namespace {

/// What a name stands for.
struct Meaning {
    std::string table{};    ///< empty: something of the script's own
    std::string function{}; ///< empty: the table itself

    bool is_table() const { return !table.empty() && function.empty(); }
    bool is_function() const { return !function.empty(); }
};

/// A name, or a field of a table, in the source.
struct Expression {
    Meaning meaning{};
    std::size_t end = 0; ///< the token behind it
};

using Names = std::set<std::string, std::less<>>;

struct Block {
    std::map<std::string, Meaning, std::less<>> locals{};
    Names present{}; ///< functions that exist where the block runs
    Names absent{};  ///< functions that do not: they exist in the block's `else`
};

template <std::size_t Count>
bool is_one_of(const Token& token, const std::array<std::string_view, Count>& words) {
    return std::ranges::any_of(words, [&](std::string_view word) { return token.is(word); });
}

class Survey {
public:
    explicit Survey(const std::vector<Token>& tokens) : tokens_(tokens) {}

    /// A function may use a global alias that is set below it, so the aliases are collected first.
    std::vector<FunctionUse> run() {
        walk();
        uses_.clear();
        walk();
        std::erase_if(uses_, [&](const FunctionUse& use) {
            return use.table == "reaper" && defined_.contains(use.name);
        });
        return std::move(uses_);
    }

private:
    const Token& at(std::size_t index) const { return tokens_[std::min(index, tokens_.size() - 1)]; }
    const Token& before(std::size_t index) const { return index > 0 ? tokens_[index - 1] : tokens_.back(); }

    void walk() {
        blocks_ = {Block{}};
        condition_ = {};
        for (std::size_t i = 0; at(i).kind != TokenKind::end;) {
            const std::size_t next = at(i).kind == TokenKind::keyword ? keyword(i)
                                     : at(i).kind == TokenKind::name  ? name(i)
                                                                      : i + 1;
            i = std::max(next, i + 1);
        }
    }

    void open(Block block = {}) { blocks_.push_back(std::move(block)); }

    Block close() {
        if (blocks_.size() == 1)
            return {};
        Block closed = std::move(blocks_.back());
        blocks_.pop_back();
        return closed;
    }

    std::size_t keyword(std::size_t i) {
        const Token& word = at(i);
        if (word.is("function"))
            return function(i + 1);
        if (word.is("local"))
            return at(i + 1).is("function") ? local_function(i) : local(i + 1);
        if (word.is("for"))
            return loop_variables(i + 1);
        if (word.is("if") || word.is("elseif") || word.is("while")) {
            if (word.is("elseif"))
                close();
            condition_ = {};
            in_condition_ = true;
        } else if (word.is("do") || word.is("then")) {
            in_condition_ = false;
            open(std::exchange(condition_, {}));
        } else if (word.is("else")) {
            Block closed = close();
            open({{}, std::move(closed.absent), {}});
        } else if (word.is("repeat")) {
            open();
        } else if (word.is("end") || word.is("until")) {
            close();
        }
        return i + 1;
    }

    void declare(const std::string& name, Meaning meaning = {}) {
        blocks_.back().locals[name] = std::move(meaning);
    }

    /// From the name of a function, if it has one, to the end of its parameters.
    std::size_t function(std::size_t i) {
        std::size_t end = i;
        while (!at(end).is("(") && at(end).kind != TokenKind::end)
            ++end;
        if (end == i + 3 && meaning_of(at(i).text).is_table())
            defined_.insert(at(i + 2).text);
        open();
        for (++end; !at(end).is(")") && at(end).kind != TokenKind::end; ++end)
            if (at(end).kind == TokenKind::name)
                declare(at(end).text);
        return end + 1;
    }

    std::size_t local_function(std::size_t i) {
        declare(at(i + 2).text);
        return function(i + 2);
    }

    std::size_t loop_variables(std::size_t i) {
        for (; !at(i).is("=") && !at(i).is("in") && at(i).kind != TokenKind::end; ++i)
            if (at(i).kind == TokenKind::name)
                condition_.locals[at(i).text] = {};
        return i + 1;
    }

    std::size_t local(std::size_t i) {
        std::vector<std::string> names;
        for (bool goes_on = true; goes_on;) {
            if (at(i).kind == TokenKind::name)
                names.push_back(at(i).text);
            i += at(i + 1).is("<") ? 4U : 1U; // with an attribute
            goes_on = at(i).is(",");
            i += goes_on ? 1U : 0U;
        }
        std::vector<Meaning> meanings(names.size());
        if (at(i).is("="))
            i = aliases(i + 1, meanings);
        for (std::size_t n = 0; n < names.size(); ++n)
            declare(names[n], std::move(meanings[n]));
        return i;
    }

    /// Reads the values of an assignment as long as they are plain tables and functions.
    /// @returns the first token of what is left
    std::size_t aliases(std::size_t i, std::vector<Meaning>& meanings) {
        for (Meaning& meaning : meanings) {
            auto value = alias(i);
            if (!value)
                return i;
            if (value->meaning.is_function())
                add_use(value->meaning, at(i).line).is_optional = true;
            meaning = std::move(value->meaning);
            i = value->end;
            if (!at(i).is(","))
                return i;
            ++i;
        }
        return i;
    }

    /// The table or function that is the whole value here.
    std::optional<Expression> alias(std::size_t i) {
        static constexpr std::array<std::string_view, 12> going_on{"(",  ".",  "[",  ":",  "{", "and",
                                                                   "or", "==", "~=", "..", "<", ">"};
        if (at(i).kind != TokenKind::name)
            return std::nullopt;
        Expression value = expression(i);
        const bool is_whole = !is_one_of(at(value.end), going_on) && at(value.end).kind != TokenKind::text;
        return value.meaning.table.empty() || !is_whole ? std::nullopt : std::optional(std::move(value));
    }

    Meaning meaning_of(const std::string& name) const {
        for (auto block = blocks_.rbegin(); block != blocks_.rend(); ++block)
            if (const auto found = block->locals.find(name); found != block->locals.end())
                return found->second;
        if (const auto found = globals_.find(name); found != globals_.end())
            return found->second;
        return name == "reaper" || name == "gfx" ? Meaning{name} : Meaning{};
    }

    /// The name at i, with the field behind it if the name is one of the tables.
    Expression expression(std::size_t i) const {
        if (at(i).is("_G") && at(i + 1).is("."))
            i += 2;
        const Meaning meaning = meaning_of(at(i).text);
        if (!meaning.is_table())
            return {meaning, i + 1};
        if ((at(i + 1).is(".") || at(i + 1).is(":")) && at(i + 2).kind == TokenKind::name)
            return {{meaning.table, at(i + 2).text}, i + 3};
        if (at(i + 1).is("[") && at(i + 2).kind == TokenKind::text && at(i + 3).is("]"))
            return {{meaning.table, at(i + 2).text}, i + 4};
        return {meaning, i + 1};
    }

    std::size_t name(std::size_t i) {
        if (before(i).is(".") || before(i).is(":") || before(i).is("goto") || before(i).is("::"))
            return i + 1;
        const Expression found = expression(i);
        const bool is_direct = found.end > i + 1;
        if (at(found.end).is("=") && !before(i).is("{") && !before(i).is(","))
            return assignment(i, found, is_direct);
        if (found.meaning.is_function() && (is_direct || is_called(found.end)))
            use(i, found);
        return found.end;
    }

    std::size_t assignment(std::size_t i, const Expression& target, bool is_field) {
        if (is_field) {
            if (target.meaning.table == "reaper")
                defined_.insert(target.meaning.function);
            return target.end;
        }
        std::vector<Meaning> value(1);
        const std::size_t end = aliases(target.end + 1, value);
        assign(at(i).text, std::move(value.front()));
        return end;
    }

    void assign(const std::string& name, Meaning meaning) {
        for (auto block = blocks_.rbegin(); block != blocks_.rend(); ++block) {
            if (const auto found = block->locals.find(name); found != block->locals.end()) {
                found->second = std::move(meaning);
                return;
            }
        }
        if (!meaning.table.empty())
            globals_[name] = std::move(meaning);
    }

    bool is_called(std::size_t i) const {
        return at(i).is("(") || at(i).is("{") || at(i).kind == TokenKind::text;
    }

    FunctionUse& add_use(const Meaning& meaning, int line) {
        uses_.push_back({.table = meaning.table, .name = meaning.function, .line = line});
        return uses_.back();
    }

    void use(std::size_t i, const Expression& found) {
        const std::string& function = found.meaning.function;
        FunctionUse& use = add_use(found.meaning, at(i).line);
        use.is_call = is_called(found.end);
        if (!use.is_call) {
            use.is_optional = is_test(i, found.end) || is_present(function);
            if (use.is_optional)
                note_test(function, i, found.end);
            return;
        }
        use.is_optional = is_present(function);
        const std::size_t end = read_arguments(found.end, use.arguments);
        if (function == "APIExists" && !use.arguments.empty() && use.arguments.front()) {
            const std::string tested = *use.arguments.front();
            add_use({found.meaning.table, tested}, at(i).line).is_optional = true;
            note_test(tested, i, end);
        }
    }

    /// Widens the tokens from `begin` to before `end` by the parentheses around them.
    void strip_parentheses(std::size_t& begin, std::size_t& end) const {
        while (begin > 1 && before(begin).is("(") && at(end).is(")") &&
               at(begin - 2).kind != TokenKind::name && !at(begin - 2).is(")") && !at(begin - 2).is("]")) {
            --begin;
            ++end;
        }
    }

    /// Whether the function is only compared, or taken as a condition.
    bool is_test(std::size_t begin, std::size_t end) const {
        static constexpr std::array<std::string_view, 7> openings{"not",    "and",   "or",   "if",
                                                                  "elseif", "while", "until"};
        static constexpr std::array<std::string_view, 6> endings{"then", "and", "or", "==", "~=", "do"};
        strip_parentheses(begin, end);
        const bool is_type = begin > 1 && before(begin).is("(") && at(begin - 2).is("type");
        return is_type || is_one_of(before(begin), openings) || is_one_of(at(end), endings);
    }

    void note_test(const std::string& function, std::size_t begin, std::size_t end) {
        strip_parentheses(begin, end);
        const bool is_compared = at(end + 1).is("nil");
        const bool is_negated = before(begin).is("not") || (is_compared && at(end).is("=="));
        if (in_condition_)
            (is_negated ? condition_.absent : condition_.present).insert(function);
        if (at(is_compared ? end + 2 : end).is("and") && !is_negated)
            present_on_line_[function] = at(end).line;
    }

    bool is_present(const std::string& function) const {
        const auto on_line = present_on_line_.find(function);
        return (on_line != present_on_line_.end() && on_line->second == uses_.back().line) ||
               std::ranges::any_of(blocks_,
                                   [&](const Block& block) { return block.present.contains(function); });
    }

    /// @returns the token behind the arguments
    std::size_t read_arguments(std::size_t i, std::vector<LiteralArgument>& arguments) const {
        if (!at(i).is("(")) {
            if (at(i).kind == TokenKind::text)
                arguments.emplace_back(at(i).text);
            return i + 1;
        }
        int depth = 0;
        std::size_t begin = i + 1;
        for (; at(i).kind != TokenKind::end; ++i) {
            static constexpr std::array<std::string_view, 7> openings{"(",  "[",  "{",     "function",
                                                                      "if", "do", "repeat"};
            static constexpr std::array<std::string_view, 5> endings{")", "]", "}", "end", "until"};
            depth += is_one_of(at(i), openings) ? 1 : 0;
            const bool closes = is_one_of(at(i), endings);
            const bool is_last = closes && depth == 1;
            if ((is_last && i > begin) || (depth == 1 && at(i).is(","))) {
                const bool is_literal = i == begin + 1 && (at(begin).kind == TokenKind::text ||
                                                           at(begin).kind == TokenKind::number);
                arguments.push_back(is_literal ? LiteralArgument(at(begin).text) : std::nullopt);
                begin = i + 1;
            }
            depth -= closes ? 1 : 0;
            if (is_last)
                break;
        }
        return i + 1;
    }

    const std::vector<Token>& tokens_;
    std::vector<Block> blocks_{};
    Block condition_{}; ///< of the block that opens next
    bool in_condition_ = false;
    std::map<std::string, Meaning, std::less<>> globals_{};
    std::map<std::string, int, std::less<>> present_on_line_{};
    Names defined_{}; ///< functions that the script itself puts into the table
    std::vector<FunctionUse> uses_{};
};

} // namespace

std::vector<FunctionUse> survey_source(std::string_view source) {
    const std::vector<Token> tokens = lua_tokens(source);
    return Survey(tokens).run();
}

} // namespace headless::check
