#pragma once
// Letter case as this library ignores it: ASCII letters only, in every locale.

namespace mk_utility {

constexpr char lower_case(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

} // namespace mk_utility
