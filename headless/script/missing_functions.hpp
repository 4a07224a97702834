#pragma once
// Calls of functions that the table `reaper` does not have. A look-up of an absent name gives nil, as scripts
// test for functions that way; only a call says what is missing.

#include <lua.hpp>

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace headless::script {

/// The existing name that was most likely meant: the same in another letter case, or one that differs in at most
/// two letters. Empty if there is none.
std::string_view near_name(std::string_view wanted, const std::vector<std::string>& names);

/// Must outlive the Lua state in which it was opened.
///
/// Lua calls the metamethods of nil when nil is called. There the interpreter still knows the name of the called
/// value, so `pcall` and error handlers of the script see the same message as the user does. The name alone does
/// not tell which table it belongs to; that is known from the look-ups that the table `reaper` could not answer.
class MissingFunctions {
public:
    /// @param existing the names in the table `reaper`
    explicit MissingFunctions(std::vector<std::string> existing) : existing_(std::move(existing)) {}

    /// Changes the global `reaper` and nil's metatable. May raise Lua's memory error.
    void open(lua_State* L);

    /// Whether the table has the function. An absent name counts as looked up.
    bool exists(lua_State* L, const char* name) noexcept;

    /// Absent names that were looked up, also by calls.
    const std::set<std::string, std::less<>>& looked_up() const { return looked_up_; }

    /// Absent functions that were called, with the line of the first call, whether or not the script caught the
    /// error.
    const std::map<std::string, int>& called() const { return called_; }

    /// "the headless workstation has no X (line 12); the nearest name is Y".
    /// @param line  0 if it is not known
    std::string message(const std::string& name, int line = 0) const;

private:
    /// A place in a script.
    struct Place {
        std::string source;
        int line = -1;
        bool operator==(const Place&) const = default;
    };

    static int note_look_up(lua_State* L);
    static int call_nil(lua_State* L);
    static Place place_of_caller(lua_State* L);
    void note(lua_State* L, std::string_view name) noexcept;
    bool describe(lua_State* L, const lua_Debug& called) noexcept;

    std::vector<std::string> existing_;
    std::set<std::string, std::less<>> looked_up_;
    std::map<std::string, int> called_;
    std::string last_looked_up_;
    Place last_place_;
    std::string message_; ///< kept here, since Lua errors skip destructors
};

} // namespace headless::script
