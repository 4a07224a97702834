#include "headless/check/script_check.hpp"

#include "headless/base/file_reading.hpp"
#include "headless/check/source_survey.hpp"
#include "headless/script/missing_functions.hpp"
#include "headless/script/script_runner.hpp"
#include "headless/workstation/commands.hpp"
#include "headless/workstation/workstation.hpp"

#include <lua.hpp>

#include <algorithm>
#include <charconv>
#include <memory>
#include <optional>

namespace headless::check {
namespace {

struct CloseState {
    void operator()(lua_State* L) const { lua_close(L); }
};

Result<void> check_syntax(const std::filesystem::path& file) {
    const std::unique_ptr<lua_State, CloseState> state(luaL_newstate());
    if (!state)
        return tl::unexpected(path_failure(file, "not enough memory"));
    if (luaL_loadfilex(state.get(), file.string().c_str(), "t") == LUA_OK)
        return {};
    const char* message = lua_tostring(state.get(), -1);
    return tl::unexpected(Failure{message ? message : "no Lua source"});
}

std::optional<int> number_of(const std::string& text) {
    int number = 0;
    const char* end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, number);
    return parsed.ec == std::errc() && parsed.ptr == end ? std::optional(number) : std::nullopt;
}

/// Collects findings, each name once.
class Findings {
public:
    void add(FindingKind kind, const std::string& name, const std::string& message, int line) {
        auto found = std::ranges::find_if(
            findings_, [&](const Finding& finding) { return finding.kind == kind && finding.name == name; });
        if (found == findings_.end())
            found = findings_.insert(found, {kind, name, message, {}});
        if (found->lines.empty() || found->lines.back() != line)
            found->lines.push_back(line);
    }

    bool has_function(const std::string& name) const {
        return std::ranges::any_of(findings_, [&](const Finding& finding) {
            return finding.kind == FindingKind::function && finding.name == name;
        });
    }

    std::vector<Finding>& all() { return findings_; }

private:
    std::vector<Finding> findings_;
};

/// The command that a call runs or looks up, if it is not known.
std::optional<std::string> missing_command(const workstation::Workstation& workstation,
                                           const FunctionUse& use) {
    if (use.arguments.empty() || !use.arguments.front())
        return std::nullopt;
    const std::string& command = *use.arguments.front();
    if (use.name == "Main_OnCommand" || use.name == "Main_OnCommandEx") {
        const auto number = number_of(command);
        return number && !workstation::is_command(*number) ? std::optional(command) : std::nullopt;
    }
    if (use.name != "NamedCommandLookup")
        return std::nullopt;
    auto* look_up = workstation.function_as<int(const char*)>("NamedCommandLookup");
    return look_up && look_up(command.c_str()) == 0 ? std::optional(command) : std::nullopt;
}

} // namespace

ScriptChecker::ScriptChecker(workstation::Workstation& workstation)
    : workstation_(workstation), names_(script::names_for_lua(workstation)),
      existing_(names_.begin(), names_.end()), probe_(workstation) {}

Result<ScriptCheck> ScriptChecker::check(const std::filesystem::path& file) {
    const auto source = text_of(file);
    if (!source)
        return tl::unexpected(source.error());
    if (!*source)
        return tl::unexpected(path_failure(file, "is no regular file"));
    if (const auto syntax = check_syntax(file); !syntax)
        return tl::unexpected(syntax.error());
    const script::MissingFunctions missing_functions(names_);
    Findings missing;
    Findings optional;
    for (const FunctionUse& use : survey_source(**source)) {
        if (use.table == "gfx") {
            if (use.is_call)
                missing.add(FindingKind::function, "gfx." + use.name, "there is no window to draw in",
                            use.line);
            continue;
        }
        if (!existing_.contains(use.name)) {
            (use.is_optional ? optional : missing)
                .add(FindingKind::function, use.name, missing_functions.message(use.name), use.line);
            continue;
        }
        if (const auto unknown = probe_.unknown_key(use.name, use.arguments))
            missing.add(FindingKind::key, use.name + ' ' + unknown->key, unknown->message, use.line);
        if (const auto command = missing_command(workstation_, use))
            missing.add(FindingKind::command, *command, "command " + *command + " is not known", use.line);
    }
    std::erase_if(optional.all(), [&](const Finding& finding) { return missing.has_function(finding.name); });
    return ScriptCheck{file, std::move(missing.all()), std::move(optional.all())};
}

} // namespace headless::check
