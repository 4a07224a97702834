#pragma once
// Splits Lua source into tokens, without comments.

#include <string>
#include <string_view>
#include <vector>

namespace headless::check {

enum class TokenKind { name, keyword, text, number, symbol, end };

struct Token {
    TokenKind kind = TokenKind::end;
    std::string text{}; ///< as written; of a string what it stands for
    int line = 0;       ///< from 1

    bool is(std::string_view wanted) const { return kind != TokenKind::text && text == wanted; }
};

/// The tokens of a source that Lua accepts, with one of kind `end` behind them. Of any other source the tokens
/// mean nothing.
std::vector<Token> lua_tokens(std::string_view source);

} // namespace headless::check
