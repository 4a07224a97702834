#pragma once
// The list of what was installed, kept in the workstation's resource folder. The installers in
// packaging/installers/ read and write the same list, and `sha256sum --check` reads it, too.

#include "headless/base/failure.hpp"

#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace headless::install {

/// Where the list lies in the resource folder.
inline constexpr const char* manifest_path = "Scripts/MERIDEK_FELSPAR/installed.txt";

/// Paths are relative to the resource folder, with slashes.
struct Manifest {
    /// The sums of each file. While an installation is under way there are two for a file that is replaced.
    std::map<std::string, std::set<std::string>> files{};
    std::set<std::string> folders{}; ///< that were made for the files
    bool is_there = false;           ///< read from a file

    /// Whether a file of this path with that sum was installed.
    bool has(const std::string& path, const std::string& sum) const;
};

/// Reads the list; an empty one if there is none. Fails, naming the line, if the first line is not the list's
/// own, if one is damaged, or if a path leads out of the folder or is spelled in another way than it is
/// written: following it could remove a file of the user's.
Result<Manifest> read_manifest(const std::filesystem::path& resource_folder);

/// Writes the list in one step. Its folder must exist.
Result<void> write_manifest(const Manifest& manifest, const std::filesystem::path& resource_folder);

} // namespace headless::install
