#include "headless/base/configuration_folder.hpp"

#include "common/path_text.hpp"
#include "headless/system/program.hpp"

namespace headless {
namespace {

namespace fs = std::filesystem;

/// Empty if the variable is, rather than a path from the current folder.
fs::path below(const std::string& folder, const char* path) {
    return folder.empty() ? fs::path() : path_text::path_of(folder) / path;
}

} // namespace

Platform this_platform() { return FELSPAR_PLATFORM; }

std::string process_environment(const char* name) { return system::environment_variable(name); }

fs::path configuration_folder(Platform platform, const Environment& environment) {
    if (platform == Platform::windows)
        return path_text::path_of(environment("APPDATA"));
    if (platform == Platform::macos)
        return below(environment("HOME"), "Library/Application Support");
    const std::string stated = environment("XDG_CONFIG_HOME");
    return stated.empty() ? below(environment("HOME"), ".config") : path_text::path_of(stated);
}

} // namespace headless
