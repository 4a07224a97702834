#pragma once
// `felspar run --check`: lists what scripts would miss, without running them.

#include <filesystem>
#include <vector>

namespace headless::workstation {
class Workstation;
} // namespace headless::workstation

namespace headless::cli {

enum class CheckForm {
    text, ///< a line for each finding: "a.lua:12: the headless workstation has no X"
    json  ///< a line for each script: its file, and what is missing, optional, or wrong with it
};

/// Prints the findings to standard output.
/// @param workstation with an empty project, which is changed
/// @returns the exit status: 1 if a script misses anything that it does not ask for first, or cannot be read
int check_scripts(workstation::Workstation& workstation, const std::vector<std::filesystem::path>& scripts,
                  CheckForm form);

} // namespace headless::cli
