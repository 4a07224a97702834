#pragma once
// Memory that runs out at a chosen allocation, of C++ and of whoever asks `next_allocation_fails`.

#include <functional>

namespace mk_test {

/// Whose allocations count.
enum class Memory { of_all, of_askers };

/// Calls with the n-th allocation failing, for n = 1, 2, 3 ... until none is left to fail.
/// @returns how many failed
int fail_each_allocation(const std::function<void()>& call, Memory memory = Memory::of_all);

/// Counts an allocation. @returns whether it is the one to fail
bool next_allocation_fails();

} // namespace mk_test
