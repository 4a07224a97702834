#pragma once
// What lies in a folder. The standard library's folder iterators end the process when memory runs out while
// they move on; these functions throw std::bad_alloc.

#include <cerrno>
#include <dirent.h>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace folder_entries {

struct Entry {
    std::string name;
    bool is_folder = false; ///< one itself, not a link to one
};

struct Close {
    void operator()(DIR* folder) const { closedir(folder); }
};

inline bool is_folder(const std::filesystem::path& folder, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    std::error_code gone;
    return std::filesystem::is_directory(std::filesystem::symlink_status(folder / entry.d_name, gone));
}

/// The entries of a folder without "." and "..", in the order in which the system delivers them.
/// @param error  set when the folder cannot be read; what was read until then is returned
inline std::vector<Entry> read(const std::filesystem::path& folder, std::error_code& error) {
    const std::unique_ptr<DIR, Close> open(opendir(folder.c_str()));
    std::vector<Entry> entries;
    const dirent* entry = nullptr;
    while (open && (errno = 0, entry = readdir(open.get()))) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            entries.push_back({std::string(name), is_folder(folder, *entry)});
    }
    error.assign(errno, std::generic_category());
    return entries;
}

/// The same. @throws std::filesystem::filesystem_error when the folder cannot be read
inline std::vector<Entry> read(const std::filesystem::path& folder) {
    std::error_code error;
    std::vector<Entry> entries = read(folder, error);
    if (error)
        throw std::filesystem::filesystem_error("cannot read folder", folder, error);
    return entries;
}

} // namespace folder_entries
