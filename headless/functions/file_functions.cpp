// Host functions for files and folders, with which scripts find their inputs.

#include "common/folder_entries.hpp"
#include "common/path_text.hpp"
#include "common/paths.hpp"
#include "headless/functions/adapter.hpp"
#include "headless/functions/tables.hpp"
#include "headless/workstation/text.hpp"

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace headless::functions {
namespace {

namespace fs = std::filesystem;

/// The names in a folder, sorted by their bytes. Scripts ask for one after the other, so the last folder is
/// kept until its first name is requested again.
class Listing {
public:
    const char* name(Workstation& workstation, const char* folder, int index,
                     bool (*is_wanted)(const fs::path&)) {
        if (index <= 0 || folder_ != workstation::to_string(folder))
            read(workstation, workstation::to_string(folder), is_wanted);
        const auto place = static_cast<std::size_t>(index);
        return index >= 0 && place < names_.size() ? names_[place].c_str() : nullptr;
    }

private:
    /// A folder that is not there has no names; one that cannot be read is reported.
    void read(Workstation& workstation, std::string name, bool (*is_wanted)(const fs::path&)) {
        folder_ = std::move(name);
        const fs::path folder = path_text::path_of(folder_);
        names_.clear();
        std::error_code error;
        for (const folder_entries::Entry& entry : folder_entries::read(folder, error))
            if (is_wanted(folder / path_text::path_of(entry.name)))
                names_.push_back(entry.name);
        std::ranges::sort(names_);
        if (error && error != std::errc::no_such_file_or_directory && error != std::errc::not_a_directory)
            workstation.report(system_failure(folder, error.value()));
    }

    std::string folder_;
    std::vector<std::string> names_;
};

bool is_folder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(paths::to_ask_for(path), error);
}

bool is_file(const fs::path& path) { return !is_folder(path); }

const char* enumerate_files(Workstation& workstation, const char* folder, int index) {
    static thread_local Listing listing;
    return listing.name(workstation, folder, index, is_file);
}

const char* enumerate_folders(Workstation& workstation, const char* folder, int index) {
    static thread_local Listing listing;
    return listing.name(workstation, folder, index, is_folder);
}

int make_folders(const char* path, int) {
    const fs::path folder = path_text::path_of(workstation::to_string(path));
    std::error_code error;
    fs::create_directories(folder, error);
    return is_folder(folder) ? 1 : 0;
}

bool file_exists(const char* path) {
    std::error_code error;
    return fs::is_regular_file(path_text::path_of(workstation::to_string(path)), error);
}

} // namespace

std::span<const workstation::HostFunction> file_functions() {
    static const workstation::HostFunction table[] = {
        {"EnumerateFiles",
         host_function<enumerate_files>(
             "path,fileindex",
             "The name of the file of that index in the folder, counted from 0; nil past the end")},
        {"EnumerateSubdirectories",
         host_function<enumerate_folders>(
             "path,subdirindex",
             "The name of the folder of that index in the folder, counted from 0; nil past the end")},
        {"RecursiveCreateDirectory",
         host_function<make_folders>("path,ignored",
                                     "Makes a folder and those around it; 0 when that fails")},
        {"file_exists", host_function<file_exists>("path", "Whether there is a regular file of that path")},
    };
    return table;
}

} // namespace headless::functions
