#pragma once
// The border to libsndfile: opening files with care. For use inside this folder.

#include "headless/base/failure.hpp"

#include <sndfile.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <sys/types.h>

namespace headless {

struct SoundFileCloser {
    void operator()(SNDFILE* handle) const { sf_close(handle); }
};
using SoundFileHandle = std::unique_ptr<SNDFILE, SoundFileCloser>;

/// Tells one state of a file on disk from another.
struct FileStamp {
    dev_t device = 0;
    ino_t inode = 0;
    std::int64_t bytes = 0;
    std::int64_t changed_seconds = 0;
    std::int64_t changed_nanoseconds = 0;

    bool operator==(const FileStamp&) const = default;
};

/// Fails, naming the path, when there is no regular file with something in it.
Result<FileStamp> stamp_of(const std::filesystem::path& file);

/// An open file; copies share it.
struct SoundFile {
    std::shared_ptr<SNDFILE> handle;
    SF_INFO info;
    std::filesystem::path path;
};

/// Opens for reading. Fails, naming the path, as stamp_of does and when it is no audio file with frames in
/// it.
Result<SoundFile> open_sound_file(const std::filesystem::path& file);

} // namespace headless
