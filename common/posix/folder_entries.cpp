#include "common/folder_entries.hpp"

#include <cerrno>
#include <dirent.h>
#include <memory>
#include <string_view>

namespace folder_entries {
namespace {

struct Close {
    void operator()(DIR* folder) const { closedir(folder); }
};

bool is_folder(const std::filesystem::path& folder, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    std::error_code gone;
    return std::filesystem::is_directory(std::filesystem::symlink_status(folder / entry.d_name, gone));
}

} // namespace

std::vector<Entry> read(const std::filesystem::path& folder, std::error_code& error) {
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

} // namespace folder_entries
