#pragma once
// Ends a script on request, whatever it is doing.

#include "headless/base/interruption.hpp"

#include <lua.hpp>

#include <chrono>
#include <optional>

namespace headless::script {

/// While this object exists, a signal gives the running function of the script the time `grace` to finish,
/// and then raises an error in it, again and again if the script catches it. A loop in a coroutine is reached
/// when it yields.
class ScriptStop {
public:
    static constexpr auto grace = std::chrono::seconds(2);

    explicit ScriptStop(lua_State* L);
    ~ScriptStop();
    /// Whether it has raised an error.
    bool has_raised() const;

    ScriptStop(const ScriptStop&) = delete;
    ScriptStop& operator=(const ScriptStop&) = delete;

private:
    lua_State* state_;
    std::optional<interruption::Reaction> reaction_;
};

} // namespace headless::script
