#pragma once
// Opens files with libsndfile. For use inside this folder.

#include "headless/audio/sound_io.hpp"
#include "headless/base/failure.hpp"
#include "headless/system/files.hpp"

#include <sndfile.h>

#include <cstdint>
#include <filesystem>
#include <memory>

namespace headless::audio {

struct SoundFileCloser {
    void operator()(SNDFILE* handle) const { sf_close(handle); }
};
using SoundFileHandle = std::unique_ptr<SNDFILE, SoundFileCloser>;

/// Distinguishes one state of a file on disk from another.
struct FileStamp {
    system::FileIdentity identity;
    std::int64_t bytes = 0;
    std::int64_t changed_seconds = 0;
    std::int64_t changed_nanoseconds = 0;

    bool operator==(const FileStamp&) const = default;
};

/// Fails, naming the path, if it is not a regular file or the file is empty.
Result<FileStamp> stamp_of(const std::filesystem::path& file);

/// A file that libsndfile has open.
class SoundStream {
public:
    /// @param descriptor  owned and closed by this object; the handle is null if it is not an audio file
    explicit SoundStream(int descriptor)
        : descriptor_(descriptor), io_(descriptor), handle_(io_.open(SFM_READ, info_)) {}

    SNDFILE* handle() const { return handle_.get(); }
    const SF_INFO& info() const { return info_; }

    /// As SoundIo::error_number.
    int error_number() const { return io_.error_number(); }

private:
    system::Descriptor descriptor_; // closed after the handle
    SoundIo io_;
    SF_INFO info_{};
    SoundFileHandle handle_;
};

/// An open file; copies share it.
struct SoundFile {
    std::shared_ptr<const SoundStream> stream;
    SF_INFO info;
    std::filesystem::path path;
    std::int64_t claimed_frames; ///< as the header says, which may be more than the file holds

    SNDFILE* handle() const { return stream->handle(); }
};

/// Opens for reading. `info.frames` is below the claim if the claim is known to be wrong. Fails, naming the
/// path, as stamp_of does and if it is not an audio file with frames in it.
Result<SoundFile> open_sound_file(const std::filesystem::path& file);

} // namespace headless::audio
