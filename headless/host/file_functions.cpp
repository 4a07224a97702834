// Host functions for files and folders, which scripts look for their inputs with.

#include "headless/host/door.hpp"
#include "headless/host/text.hpp"

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace headless {
namespace {

namespace fs = std::filesystem;

/// The names in a folder, in the order of their bytes. Scripts ask for one after the other, so the last
/// folder is kept until the first name is asked for anew.
class Listing {
public:
    const char* name(const char* folder, int index, bool (*is_wanted)(const fs::directory_entry&)) {
        if (index <= 0 || folder_ != to_string(folder))
            read(to_string(folder), is_wanted);
        const auto place = static_cast<std::size_t>(index);
        return index >= 0 && place < names_.size() ? names_[place].c_str() : nullptr;
    }

private:
    void read(std::string folder, bool (*is_wanted)(const fs::directory_entry&)) {
        folder_ = std::move(folder);
        names_.clear();
        std::error_code error;
        for (fs::directory_iterator entry(folder_, error); !error && entry != fs::directory_iterator();
             entry.increment(error))
            if (is_wanted(*entry))
                names_.push_back(entry->path().filename().string());
        std::ranges::sort(names_);
    }

    std::string folder_;
    std::vector<std::string> names_;
};

bool is_file(const fs::directory_entry& entry) {
    std::error_code error;
    return !entry.is_directory(error);
}

bool is_folder(const fs::directory_entry& entry) {
    std::error_code error;
    return entry.is_directory(error);
}

const char* enumerate_files(Workstation&, const char* folder, int index) {
    static thread_local Listing listing;
    return listing.name(folder, index, is_file);
}

const char* enumerate_folders(Workstation&, const char* folder, int index) {
    static thread_local Listing listing;
    return listing.name(folder, index, is_folder);
}

int make_folders(Workstation&, const char* path, int) {
    std::error_code error;
    fs::create_directories(to_string(path), error);
    return fs::is_directory(to_string(path), error) ? 1 : 0;
}

bool file_exists(Workstation&, const char* path) {
    std::error_code error;
    return fs::is_regular_file(to_string(path), error);
}

} // namespace

std::span<const HostFunction> file_functions() {
    static const HostFunction table[] = {
        host_function<enumerate_files, "path,fileindex",
                      "The name of the file of that index in the folder, counted from 0; nil past the end">(
            "EnumerateFiles"),
        host_function<enumerate_folders, "path,subdirindex",
                      "The name of the folder of that index in the folder, counted from 0; nil past the end">(
            "EnumerateSubdirectories"),
        host_function<make_folders, "path,ignored", "Makes a folder and those around it; 0 when that fails">(
            "RecursiveCreateDirectory"),
        host_function<file_exists, "path", "Whether there is a regular file of that path">("file_exists"),
    };
    return table;
}

} // namespace headless
