#include "headless/check/lua_tokens.hpp"

#include <gmock/gmock.h>

namespace headless::check {
namespace {

std::string joined(std::string_view source) {
    std::string text;
    for (const Token& token : lua_tokens(source))
        text += (text.empty() ? "" : "|") + token.text;
    return text;
}

TEST(LuaTokens, AreSplitAsLuaDoes) {
    const std::pair<const char*, const char*> cases[] = {
        {"a.b[c]:d(...)", "a|.|b|[|c|]|:|d|(|...|)|"},
        {"x=0xA.8p-1+3e+5-.5 ..'s'", "x|=|0xA.8p-1|+|3e+5|-|.5|..|s|"},
        {"a==b~=c<=d//e", "a|==|b|~=|c|<=|d|//|e|"},
        {"a--b\n--[[c\n]]d--[==[ ]] ]==]e--", "a|d|e|"},
        {"[[\r\na]][==[b]]]==]t[1]", "a|b]]|t|[|1|]|"},
        {R"('\'\\\x41\u{20ac}\65\0661\z
            z' "'")",
         "'\\A\xe2\x82\xac"
         "AB1z|'|"},
        {"#!/usr/bin/lua\na", "a|"},
        {"\xEF\xBB\xBF"
         "a",
         "a|"},
        {"'open", "open|"},
        {"--[[ open", ""},
        {"", ""}};
    for (const auto& [source, tokens] : cases)
        EXPECT_EQ(joined(source), tokens) << source;
}

TEST(LuaTokens, KnowTheirLines) {
    const auto tokens = lua_tokens("a\n[[\n\n]] 'x\\\ny' --[[\n]] b\r\nc");
    std::vector<int> lines;
    for (const Token& token : tokens)
        lines.push_back(token.line);
    EXPECT_THAT(lines, testing::ElementsAre(1, 2, 4, 6, 7, 7));
}

} // namespace
} // namespace headless::check
