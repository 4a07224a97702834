#pragma once
// Identifies files by device and inode, so that links and other spellings of a path make no difference.

#include <filesystem>
#include <set>
#include <span>
#include <sys/stat.h>
#include <utility>

namespace headless::jobs {

class FileIdentities {
public:
    FileIdentities() = default;
    explicit FileIdentities(std::span<const std::filesystem::path> files) { add(files); }

    /// Adds the files that exist.
    void add(std::span<const std::filesystem::path> files) {
        for (const std::filesystem::path& file : files) {
            struct stat status {};
            if (stat(file.c_str(), &status) == 0)
                identities_.emplace(status.st_dev, status.st_ino);
        }
    }

    /// False for a file that does not exist.
    bool contains(const std::filesystem::path& file) const {
        struct stat status {};
        return stat(file.c_str(), &status) == 0 && identities_.contains({status.st_dev, status.st_ino});
    }

private:
    std::set<std::pair<dev_t, ino_t>> identities_;
};

} // namespace headless::jobs
