#pragma once
// Memory that runs out at a chosen allocation, of C++ and of whoever asks `next_allocation_fails`.

namespace mk_test {

/// Whose allocations count.
enum class Memory { of_all, of_askers };

/// Lets the n-th allocation from now on fail, counted from 1; others succeed.
void fail_allocation(int n, Memory memory);

/// @returns whether the failure has happened
bool stop_failing();

/// Calls with the n-th allocation failing, for n = 1, 2, 3 ... until none is left to fail.
/// @returns how many failed
template <class Call>
int fail_each_allocation(Call call, Memory memory = Memory::of_all) {
    int failures = -1;
    do {
        fail_allocation(++failures + 1, memory);
        call();
    } while (stop_failing());
    return failures;
}

/// Counts an allocation. @returns whether it is the one to fail
bool next_allocation_fails();

} // namespace mk_test
