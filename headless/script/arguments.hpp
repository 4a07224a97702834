#pragma once
// Converts the arguments of one call from Lua's stack to the pointers that a ScriptCall takes.

#include "headless/script/definition.hpp"

#include <lua.hpp>

#include <array>
#include <cstddef>
#include <memory>
#include <string>

namespace headless::workstation {
class Workstation;
} // namespace headless::workstation

namespace headless::script {

/// Functions with more parameters are not offered to scripts.
constexpr std::size_t max_parameters = 24;

/// The value of one argument or result during a call.
struct ArgumentValue {
    int integer;
    bool boolean;
    double number;
    const char* text;
    char* buffer; ///< of a string that the function writes to
    int size;     ///< of the buffer in bytes, of an array in numbers
};

/// Owns nothing, since Lua errors skip destructors.
struct Arguments {
    std::array<void*, max_parameters> pointers;
    std::array<ArgumentValue, max_parameters> values;
};

/// Buffers for strings that a call returns. Only one call uses them at a time.
class TextBuffers {
public:
    static constexpr std::size_t ordinary_bytes = 4096; ///< the longest path, with its NUL
    static constexpr std::size_t big_bytes = std::size_t{1} << 20U;

    char* buffer(std::size_t parameter, std::size_t bytes) {
        if (!buffers_[parameter] || bytes > sizes_[parameter]) {
            buffers_[parameter] = std::make_unique_for_overwrite<char[]>(bytes);
            sizes_[parameter] = bytes;
        }
        return buffers_[parameter].get();
    }

    /// Of the buffer that the parameter has by now.
    std::size_t size(std::size_t parameter) const { return sizes_[parameter]; }

private:
    std::array<std::unique_ptr<char[]>, max_parameters> buffers_;
    std::array<std::size_t, max_parameters> sizes_{};
};

/// A function as the bridge calls it.
struct BridgedFunction {
    std::string name;
    ParsedDefinition definition;
    void* (*call)(void** arguments, int count);
    workstation::Workstation* workstation;
    TextBuffers* buffers;
};

/// Fills the pointers from the stack, which holds the arguments from index 1. Raises the Lua error "bad argument
/// #1 to 'X' (MediaTrack expected)" if an argument is missing, has another type, or is a stale handle.
void read_arguments(lua_State* L, const BridgedFunction& function, Arguments& arguments);

} // namespace headless::script
