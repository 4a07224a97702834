#pragma once
// What the forms share.

#include <string>
#include <string_view>

namespace headless::manual {

/// Puts a backslash before each of the letters.
inline std::string with_backslashes(std::string_view text, std::string_view letters) {
    std::string escaped;
    for (const char letter : text) {
        if (letters.find(letter) != std::string_view::npos)
            escaped += '\\';
        escaped += letter;
    }
    return escaped;
}

/// Joins words.
inline std::string join(const auto& words, std::string_view between) {
    std::string text;
    for (const auto& word : words)
        text.append(text.empty() ? "" : between).append(word);
    return text;
}

} // namespace headless::manual
