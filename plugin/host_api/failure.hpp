#pragma once
// What a function of the API returns if it fails.

#include <type_traits>

/// The failure of each kind of result: false, null, or the code 1.
template <class R>
constexpr R failure = R(std::is_same_v<R, int> ? 1 : 0);
template <class R>
constexpr R* failure<R*> = nullptr;
