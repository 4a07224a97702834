#include "headless/script/memory_limit.hpp"

#include <cstdlib>

namespace headless::script {

LimitedState::LimitedState(std::size_t limit_bytes)
    : free_bytes_(limit_bytes), state_(lua_newstate(allocate, this)) {}

LimitedState::~LimitedState() {
    if (state_)
        lua_close(state_);
}

void* LimitedState::allocate(void* owner, void* block, std::size_t old_bytes,
                             std::size_t new_bytes) noexcept {
    std::size_t& free_bytes = static_cast<LimitedState*>(owner)->free_bytes_;
    const std::size_t held = block ? old_bytes : 0; // without a block Lua passes a type here
    if (new_bytes == 0) {
        std::free(block);
        free_bytes += held;
        return nullptr;
    }
    if (new_bytes > held && new_bytes - held > free_bytes)
        return nullptr;
    void* moved = std::realloc(block, new_bytes);
    if (!moved && new_bytes <= held)
        moved = block; // Lua assumes that a block can always shrink
    if (moved) {
        free_bytes += held;
        free_bytes -= new_bytes;
    }
    return moved;
}

} // namespace headless::script
