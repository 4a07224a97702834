#include "headless/script/bridge.hpp"

#include "headless/script/results.hpp"
#include "headless/workstation/workstation.hpp"

#include <cstring>
#include <new>
#include <utility>

namespace headless::script {
namespace {

/// A plug-in's call may throw, and an exception must not pass through Lua.
bool call(const BridgedFunction& function, Arguments& arguments, void*& result) noexcept {
    try {
        result =
            function.call(arguments.pointers.data(), static_cast<int>(function.definition.parameters.size()));
        return true;
    } catch (...) {
        return false;
    }
}

// A text of unlimited length that fills its buffer may have been cut off, by less than a character more.
bool may_be_cut_off(const Parameter& parameter, const ArgumentValue& value) {
    constexpr std::size_t longest_character = 4;
    if (!parameter.needs_big_buffer || !value.buffer)
        return false;
    const auto size = static_cast<std::size_t>(value.size);
    return strnlen(value.buffer, size) + longest_character >= size;
}

// Larger buffers for the next call, until nothing larger is possible.
bool enlarge_buffers(const BridgedFunction& function, const Arguments& arguments) noexcept {
    constexpr int largest = 1 << 30;
    const auto& parameters = function.definition.parameters;
    bool enlarged = false;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const ArgumentValue& value = arguments.values[i];
        if (!may_be_cut_off(parameters[i], value) || value.size >= largest)
            continue;
        try {
            function.buffers->buffer(i, static_cast<std::size_t>(value.size) * 2);
            enlarged = true;
        } catch (const std::bad_alloc&) {
            continue;
        }
    }
    return enlarged;
}

int call_bridged(lua_State* L) {
    const auto& function = *static_cast<const BridgedFunction*>(lua_touserdata(L, lua_upvalueindex(1)));
    Arguments arguments{};
    void* result = nullptr;
    do {
        arguments = {};
        read_arguments(L, function, arguments);
        if (!call(function, arguments, result))
            return luaL_error(L, "'%s' failed", function.name.c_str());
    } while (enlarge_buffers(function, arguments));
    return push_results(L, function, arguments, result);
}

} // namespace

Bridge::Bridge(workstation::Workstation& workstation) {
    for (workstation::ScriptFunction& function : workstation.script_functions()) {
        ParsedDefinition definition = parse_definition(function.definition);
        if (definition.parameters.size() <= max_parameters) {
            functions_.push_back(
                {std::move(function.name), std::move(definition), function.call, &workstation, &buffers_});
        }
    }
}

void Bridge::open(lua_State* L) {
    lua_createtable(L, 0, static_cast<int>(functions_.size()));
    for (BridgedFunction& function : functions_) {
        lua_pushlightuserdata(L, &function);
        lua_pushcclosure(L, call_bridged, 1);
        lua_setfield(L, -2, function.name.c_str());
    }
    lua_setglobal(L, "reaper");
}

std::vector<std::string> Bridge::names() const {
    std::vector<std::string> names;
    for (const BridgedFunction& function : functions_)
        names.push_back(function.name);
    return names;
}

} // namespace headless::script
