#pragma once
// What lies in a folder. The standard library's folder iterators end the process when memory runs out while
// they move on; these functions throw std::bad_alloc.

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace folder_entries {

struct Entry {
    std::string name;       ///< in UTF-8
    bool is_folder = false; ///< one itself, not a link to one
};

/// The entries of a folder without "." and "..", in the order in which the system delivers them. On Windows
/// names without a UTF-8 form are left out.
/// @param error  set, in the generic category, when the folder cannot be read; what was read until then is
/// returned
std::vector<Entry> read(const std::filesystem::path& folder, std::error_code& error);

/// The same. @throws std::filesystem::filesystem_error when the folder cannot be read
inline std::vector<Entry> read(const std::filesystem::path& folder) {
    std::error_code error;
    std::vector<Entry> entries = read(folder, error);
    if (error)
        throw std::filesystem::filesystem_error("cannot read folder", folder, error);
    return entries;
}

} // namespace folder_entries
