#pragma once
// Files open for reading, without ever waiting for another process or a user.

#include <cstddef>
#include <cstdint>
#include <filesystem>

/// Opening does not wait for the other end of a pipe, and reading does not wait for a user at a terminal.
class ReadableFile {
public:
    explicit ReadableFile(const std::filesystem::path& file);
    ~ReadableFile();
    ReadableFile(const ReadableFile&) = delete;
    ReadableFile& operator=(const ReadableFile&) = delete;

    /// True for a folder, too.
    bool is_open() const { return handle_ != closed; }

    /// Reads up to `count` bytes.
    /// @returns the number of bytes read; 0 at the end and for a folder; negative on failure
    std::ptrdiff_t read(char* bytes, std::size_t count) const;

private:
    static constexpr std::intptr_t closed = -1;
    std::intptr_t handle_; ///< as the system counts open files
};
