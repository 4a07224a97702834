#pragma once
// What a script would miss here: functions, keys and commands that it names, found without running it.

#include "headless/base/failure.hpp"
#include "headless/check/key_probe.hpp"

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace headless::check {

enum class FindingKind { function, key, command };

struct Finding {
    FindingKind kind = FindingKind::function;
    std::string name;       ///< of the function; function and key; name or number of the command
    std::string message;    ///< what running the script would say
    std::vector<int> lines; ///< in ascending order
};

struct ScriptCheck {
    std::filesystem::path file;
    std::vector<Finding> missing;
    std::vector<Finding> optional; ///< functions that the script asks for before it uses them
};

/// Works on the workstation's project, which should be a new one.
class ScriptChecker {
public:
    explicit ScriptChecker(workstation::Workstation& workstation);

    /// Findings in the order of their first lines. Fails if the file cannot be read or is no Lua source; the
    /// message names the file, and the line at fault.
    Result<ScriptCheck> check(const std::filesystem::path& file);

private:
    workstation::Workstation& workstation_;
    std::vector<std::string> names_; ///< of the functions in the table `reaper`
    std::set<std::string> existing_;
    KeyProbe probe_;
};

} // namespace headless::check
