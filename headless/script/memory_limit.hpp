#pragma once
// A Lua state whose memory is bounded, so that a script that wants ever more ends with Lua's own "not enough
// memory" and not with the whole machine.

#include <lua.hpp>

#include <cstddef>

namespace headless {

class LimitedState {
public:
    explicit LimitedState(std::size_t limit_bytes);
    ~LimitedState();
    LimitedState(const LimitedState&) = delete;
    LimitedState& operator=(const LimitedState&) = delete;

    /// Null when there was not even memory for an empty state.
    lua_State* get() const { return state_; }

private:
    static void* allocate(void* owner, void* block, std::size_t old_bytes, std::size_t new_bytes) noexcept;

    std::size_t free_bytes_;
    lua_State* state_;
};

} // namespace headless
