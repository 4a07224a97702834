#pragma once
// A Lua state with limited memory, so that a script that allocates without end gets Lua's own "not enough
// memory" and does not exhaust the machine.

#include <lua.hpp>

#include <cstddef>

namespace headless::script {

class LimitedState {
public:
    explicit LimitedState(std::size_t limit_bytes);
    ~LimitedState();
    LimitedState(const LimitedState&) = delete;
    LimitedState& operator=(const LimitedState&) = delete;

    /// Null if there was not enough memory even for an empty state.
    lua_State* get() const { return state_; }

private:
    static void* allocate(void* owner, void* block, std::size_t old_bytes, std::size_t new_bytes) noexcept;

    std::size_t free_bytes_;
    lua_State* state_;
};

} // namespace headless::script
