#pragma once
// A folder for the files of one test, and their bytes.

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>
#include <vector>

namespace headless::test {

/// An empty folder, removed with all that is in it at the end.
class ScratchFolder {
public:
    ScratchFolder() {
        static std::atomic<int> serial{0};
        path = std::filesystem::temp_directory_path() /
               ("felspar test " + std::to_string(getpid()) + "-" + std::to_string(serial++));
        std::filesystem::create_directories(path);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    std::filesystem::path operator/(const std::string& name) const { return path / name; }

    std::filesystem::path path;
};

/// What lies in the folder, in no order.
inline std::vector<std::string> names_in(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    return names;
}

inline std::string bytes_of(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline void write_bytes(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

} // namespace headless::test
