#pragma once
// Lower case of ASCII letters, in every locale. All other bytes stay as they are.

#include <algorithm>
#include <string>
#include <string_view>

namespace letter_case {

constexpr char to_lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

inline std::string lowered(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), to_lower);
    return result;
}

} // namespace letter_case
