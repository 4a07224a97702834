#pragma once
// Audio files as blocks of float frames: opened with care, decoded once, kept in memory within a bound.
// Samples are interleaved floats, +-1 is full scale; values beyond it are kept as they are.

#include "headless/base/failure.hpp"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <list>
#include <memory>
#include <span>
#include <string>
#include <unordered_map>

namespace headless {

/// Shape of the audio in one file.
struct AudioFormat {
    int sample_rate = 0; ///< frames a second
    int channels = 0;
    std::int64_t frames = 0; ///< one sample per channel each

    double length_seconds() const { return static_cast<double>(frames) / sample_rate; }
    bool operator==(const AudioFormat&) const = default;
};

/// A run of frames of a file. It may reach beyond the file on either side: there it is silent.
struct FrameRange {
    std::int64_t first_frame = 0;
    std::int64_t frame_count = 0;

    bool operator==(const FrameRange&) const = default;
};

/// Reads audio files of every format that libsndfile knows.
///
/// Only regular files are opened, so that a pipe or device can never block. The decoded audio of the files
/// used last stays in memory as long as it fits the limit; a file larger than that is decoded anew at each
/// reading. A file that has changed on disk (size, time stamp, identity) is decoded again. Not for use from
/// two threads at once.
class AudioStore {
public:
    static constexpr std::size_t default_byte_limit = std::size_t{256} << 20;
    /// Most samples (frames times channels) that a visitor is given at once.
    static constexpr std::size_t block_samples = std::size_t{1} << 14;

    /// Sees the next block of interleaved samples, whole frames. A failure ends the reading and is passed on.
    using FrameVisitor = std::function<Result<void>(std::span<const float>)>;

    /// @param byte_limit most bytes of decoded audio kept between readings
    explicit AudioStore(std::size_t byte_limit = default_byte_limit);
    ~AudioStore();
    AudioStore(const AudioStore&) = delete;
    AudioStore& operator=(const AudioStore&) = delete;

    /// Shape of the audio in `file`. The frame count is what the file's header claims until the file has been
    /// decoded, and what could be decoded from then on.
    /// Fails, naming the path, when the file is missing, unreadable, not regular, no audio, or without
    /// frames.
    Result<AudioFormat> format(const std::filesystem::path& file);

    /// Hands exactly `range.frame_count` frames to `visit`, in order. Frames before the start and past the
    /// end of the audio are zeros, as are samples that are no finite numbers. Fails as `format` does, when
    /// nothing at all could be decoded, and when `visit` does.
    Result<void> read(const std::filesystem::path& file, FrameRange range, const FrameVisitor& visit);

    /// Bytes of decoded audio in memory, never above the limit after a reading.
    std::size_t resident_bytes() const { return resident_bytes_; }

private:
    struct Entry;
    using Entries = std::list<Entry>;

    Result<Entry*> find_or_open(const std::filesystem::path& file);
    Result<void> load(Entry& entry);
    void make_room(std::size_t bytes);

    std::size_t byte_limit_;
    std::size_t resident_bytes_ = 0;
    Entries entries_; ///< used last stands first
    std::unordered_map<std::string, Entries::iterator> by_path_;
};

} // namespace headless
