#include "headless/script/arguments.hpp"

#include "headless/script/number_array.hpp"
#include "headless/workstation/workstation.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <type_traits>

namespace headless::script {
namespace {

static_assert(std::is_trivially_destructible_v<Arguments>);

[[noreturn]] void refuse(lua_State* L, const BridgedFunction& function, int index, const char* wanted) {
    luaL_error(L, "bad argument #%d to '%s' (%s expected, got %s)", index, function.name.c_str(), wanted,
               luaL_typename(L, index));
    std::abort(); // luaL_error does not return
}

[[noreturn]] void refuse_handle(lua_State* L, const BridgedFunction& function, int index,
                                std::string_view type) {
    const std::string_view name = type.substr(0, type.size() - 1); // without the asterisk
    lua_pushlstring(L, name.data(), name.size());
    luaL_error(L, "bad argument #%d to '%s' (%s expected)", index, function.name.c_str(),
               lua_tostring(L, -1));
    std::abort();
}

double read_number(lua_State* L, const BridgedFunction& function, int index) {
    int is_number = 0;
    const double number = lua_tonumberx(L, index, &is_number);
    if (is_number == 0)
        refuse(L, function, index, "number");
    return number;
}

/// Fractions are truncated. Values outside int are limited to its range, except that whole numbers up to 32
/// bits keep their bits, so that colours and flags may be written as unsigned numbers.
int read_integer(lua_State* L, const BridgedFunction& function, int index) {
    const double number = read_number(L, function, index);
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<unsigned>::max();
    return std::isnan(number)
               ? 0
               : static_cast<int>(static_cast<std::int64_t>(std::clamp(std::trunc(number), lowest, highest)));
}

/// Scripts also pass 0 and 1 for booleans.
bool read_boolean(lua_State* L, const BridgedFunction& function, int index) {
    if (lua_type(L, index) == LUA_TNUMBER)
        return lua_tonumberx(L, index, nullptr) != 0.0;
    if (!lua_isboolean(L, index))
        refuse(L, function, index, "boolean");
    return lua_toboolean(L, index) != 0;
}

const char* read_text(lua_State* L, const BridgedFunction& function, int index) {
    if (lua_isstring(L, index) == 0)
        refuse(L, function, index, "string");
    return lua_tostring(L, index);
}

bool is_active_project(lua_State* L, int index) {
    if (lua_type(L, index) != LUA_TNUMBER)
        return lua_isnoneornil(L, index);
    const double number = lua_tonumberx(L, index, nullptr);
    return number == 0.0 || number == -1.0;
}

void* read_handle(lua_State* L, const BridgedFunction& function, int index, const Parameter& parameter) {
    const std::string_view type = parameter.type;
    if (parameter.is_project() && is_active_project(L, index))
        return nullptr;
    if (type == "void*" && lua_isnoneornil(L, index))
        return nullptr;
    void* handle = lua_islightuserdata(L, index) ? lua_touserdata(L, index) : nullptr;
    if (!handle || (type != "void*" && !function.workstation->is_live(type, handle).value_or(true)))
        refuse_handle(L, function, index, type);
    return handle;
}

char* find_buffer(const BridgedFunction& function, std::size_t parameter, std::size_t bytes) noexcept {
    try {
        return function.buffers->buffer(parameter, bytes);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

/// A buffer that begins with the string and has space for what may come back.
void prepare_buffer(lua_State* L, const BridgedFunction& function, std::size_t parameter, const char* text,
                    ArgumentValue& value) {
    const std::size_t wanted = function.definition.parameters[parameter].needs_big_buffer
                                   ? std::max(TextBuffers::big_bytes, function.buffers->size(parameter))
                                   : TextBuffers::ordinary_bytes;
    const std::size_t length = std::strlen(text);
    const std::size_t bytes = std::max(wanted, length + 1);
    value.buffer =
        bytes <= std::numeric_limits<int>::max() ? find_buffer(function, parameter, bytes) : nullptr;
    if (!value.buffer) {
        luaL_error(L, "'%s': no memory for a text of %f bytes", function.name.c_str(),
                   static_cast<double>(bytes));
    }
    std::memcpy(value.buffer, text, length + 1);
    value.size = static_cast<int>(bytes);
}

void* address_of(const Parameter& parameter, ArgumentValue& value) {
    switch (parameter.kind) {
    case ValueKind::integer:
        return &value.integer;
    case ValueKind::boolean:
        return &value.boolean;
    case ValueKind::number:
        return &value.number;
    default:
        return &value.text;
    }
}

void read_value(lua_State* L, const BridgedFunction& function, std::size_t parameter, int index,
                ArgumentValue& value) {
    switch (function.definition.parameters[parameter].kind) {
    case ValueKind::integer:
        value.integer = read_integer(L, function, index);
        break;
    case ValueKind::boolean:
        value.boolean = read_boolean(L, function, index);
        break;
    case ValueKind::number:
        value.number = read_number(L, function, index);
        break;
    case ValueKind::text:
        value.text = read_text(L, function, index);
        break;
    case ValueKind::array:
        if (NumberArray* array = to_number_array(L, index)) {
            value.buffer = reinterpret_cast<char*>(array->numbers());
            value.size = static_cast<int>(array->size);
        } else {
            refuse(L, function, index, "reaper.array");
        }
        break;
    default:
        break;
    }
}

void* pointer_of_bits(std::intptr_t bits) { return reinterpret_cast<void*>(bits); }

void* encode_argument(const Parameter& parameter, ArgumentValue& value) {
    if (parameter.by_address && parameter.kind != ValueKind::array)
        return address_of(parameter, value);
    switch (parameter.kind) {
    case ValueKind::integer:
        return pointer_of_bits(value.integer);
    case ValueKind::boolean:
        return pointer_of_bits(value.boolean ? 1 : 0);
    case ValueKind::number:
        return &value.number;
    case ValueKind::text:
        return value.buffer ? value.buffer : const_cast<char*>(value.text);
    case ValueKind::array:
        return value.buffer;
    default:
        return nullptr;
    }
}

} // namespace

void read_arguments(lua_State* L, const BridgedFunction& function, Arguments& arguments) {
    int index = 0;
    const auto& parameters = function.definition.parameters;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const Parameter& parameter = parameters[i];
        ArgumentValue& value = arguments.values[i];
        void*& pointer = arguments.pointers[i];
        if (parameter.kind == ValueKind::size) {
            pointer = pointer_of_bits(arguments.values[i - 1].size);
            continue;
        }
        if (parameter.is_argument()) {
            ++index;
            const bool is_omitted = parameter.is_optional && lua_isnoneornil(L, index);
            if (is_omitted && !parameter.is_result())
                continue; // null
            if (parameter.kind == ValueKind::handle) {
                pointer = read_handle(L, function, index, parameter);
                continue;
            }
            if (!is_omitted) // otherwise it begins as 0 or empty, and gets its result
                read_value(L, function, i, index, value);
        }
        if (parameter.kind == ValueKind::text && parameter.type == "char*")
            prepare_buffer(L, function, i, value.text ? value.text : "", value);
        pointer = encode_argument(parameter, value);
    }
}

} // namespace headless::script
