#include "headless/install/workstation_folder.hpp"

#include "common/folder_entries.hpp"
#include "common/letter_case.hpp"
#include "common/path_text.hpp"
#include "headless/base/file_reading.hpp"
#include "headless/base/ini_file.hpp"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <system_error>

namespace headless::install {
namespace {

namespace fs = std::filesystem;

constexpr const char* settings_name = "reaper.ini";

bool is_folder(const fs::path& path) {
    std::error_code missing;
    return fs::is_directory(path, missing);
}

/// The folders that PATH leads to the program in, with links followed.
std::vector<fs::path> program_folders_in(std::string_view path_variable) {
    std::vector<fs::path> folders;
    while (!path_variable.empty()) {
        const std::size_t end = std::min(path_variable.find(':'), path_variable.size());
        const fs::path program = path_text::path_of(path_variable.substr(0, end)) / "reaper";
        std::error_code missing;
        const fs::path found = fs::canonical(program, missing);
        if (!missing && fs::is_regular_file(found, missing))
            folders.push_back(found.parent_path());
        path_variable.remove_prefix(std::min(end + 1, path_variable.size()));
    }
    return folders;
}

std::vector<fs::path> program_folders(Platform platform, const Environment& environment) {
    if (platform == Platform::windows) {
        const fs::path programs = path_text::path_of(environment("ProgramFiles"));
        return {programs / "REAPER (x64)", programs / "REAPER"};
    }
    const fs::path home = path_text::path_of(environment("HOME"));
    if (platform == Platform::macos)
        return {"/Applications", home / "Applications"};
    std::vector<fs::path> folders = program_folders_in(environment("PATH"));
    folders.insert(folders.end(), {"/opt/REAPER", home / "opt" / "REAPER"});
    return folders;
}

/// The first line of a project, or some bytes of it: `<REAPER_PROJECT 0.1 "6.19/linux-x86_64" 1700000000`.
/// Empty if it cannot be read, or the name has no path on this system.
std::string head_of(const std::string& project) {
    constexpr std::size_t max_bytes = 256;
    try {
        const auto head = beginning_of(path_text::path_of(project), max_bytes);
        return head && *head ? (*head)->substr(0, (*head)->find_first_of("\r\n")) : "";
    } catch (const fs::filesystem_error&) {
        return "";
    }
}

/// From the head of the project that the workstation opened last.
std::string version_of(const fs::path& resource_folder) {
    const auto settings = text_of(resource_folder / settings_name);
    const auto project =
        settings && *settings ? ini_value(**settings, "REAPER", "lastproject") : std::nullopt;
    const std::string line = head_of(project.value_or(""));
    if (!line.starts_with("<REAPER_PROJECT "))
        return {};
    const std::size_t begin = line.find('"');
    const std::size_t end = line.find_first_of("/\"", std::min(begin, line.size() - 1) + 1);
    return end == std::string::npos ? std::string() : line.substr(begin + 1, end - begin - 1);
}

/// The first by name, as there may be one for each processor.
std::string sws_in(const fs::path& resource_folder) {
    std::string found;
    std::error_code unreadable;
    for (const auto& entry : folder_entries::read(resource_folder / "UserPlugins", unreadable))
        if (letter_case::lowered(entry.name).starts_with("reaper_sws") &&
            (found.empty() || entry.name < found))
            found = entry.name;
    return found;
}

} // namespace

std::vector<fs::path> find_resource_folders(Platform platform, const Environment& environment) {
    std::vector<fs::path> folders;
    const fs::path configuration = configuration_folder(platform, environment);
    if (!configuration.empty() && is_folder(configuration / "REAPER"))
        folders.push_back(configuration / "REAPER");
    for (const fs::path& program : program_folders(platform, environment)) {
        std::error_code missing;
        if (program.is_absolute() && fs::is_regular_file(program / settings_name, missing) &&
            std::ranges::find(folders, program) == folders.end())
            folders.push_back(program);
    }
    return folders;
}

Result<WorkstationFolder> choose_resource_folder(const fs::path& named, Platform platform,
                                                 const Environment& environment) {
    if (!named.empty() && !is_folder(named))
        return tl::unexpected(path_failure(named, "is not a folder"));
    std::vector<fs::path> found =
        named.empty() ? find_resource_folders(platform, environment) : std::vector<fs::path>{named};
    if (found.empty())
        return tl::unexpected(
            Failure{"the workstation's resource folder was not found: start the workstation "
                    "once, or name the folder with --resource-path"});
    WorkstationFolder folder{found.front()};
    folder.others.assign(found.begin() + 1, found.end());
    folder.version = version_of(folder.path);
    folder.sws = sws_in(folder.path);
    return folder;
}

} // namespace headless::install
