#include "tests/plugin/support/failing_memory.hpp"

#include <cstdlib>
#include <new>
#include <utility>

namespace {

thread_local int left = 0; // 0: none is to fail
thread_local mk_test::Memory counted = mk_test::Memory::of_all;

} // namespace

int mk_test::fail_each_allocation(const std::function<void()>& call, Memory memory) {
    counted = memory;
    for (int n = 1;; ++n) {
        left = n;
        call();
        if (std::exchange(left, 0) > 0)
            return n - 1;
    }
}

bool mk_test::next_allocation_fails() { return left > 0 && --left == 0; }

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    const bool fails = counted == mk_test::Memory::of_all && mk_test::next_allocation_fails();
    return fails ? nullptr : std::malloc(size);
}

void* operator new(std::size_t size) {
    void* block = operator new(size, std::nothrow);
    if (!block)
        throw std::bad_alloc();
    return block;
}

void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
