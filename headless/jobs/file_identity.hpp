#pragma once
// Identifies files as the system does, so that links and other spellings of a path make no difference.

#include "headless/system/files.hpp"

#include <filesystem>
#include <set>
#include <span>

namespace headless::jobs {

class FileIdentities {
public:
    FileIdentities() = default;
    explicit FileIdentities(std::span<const std::filesystem::path> files) { add(files); }

    /// Adds the files that exist.
    void add(std::span<const std::filesystem::path> files) {
        for (const std::filesystem::path& file : files)
            if (const auto status = system::status_of(file))
                identities_.insert(status->identity);
    }

    /// False for a file that does not exist.
    bool contains(const std::filesystem::path& file) const {
        const auto status = system::status_of(file);
        return status && identities_.contains(status->identity);
    }

private:
    std::set<system::FileIdentity> identities_;
};

} // namespace headless::jobs
