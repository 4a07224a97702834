#pragma once
// Audio files as blocks of float frames: opened with care, decoded once, kept in memory within a bound.

#include "headless/audio/frames.hpp"
#include "headless/base/failure.hpp"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <list>
#include <memory>
#include <string>
#include <unordered_map>

namespace headless {

class Decoder;

/// Reads audio files of every format that libsndfile knows.
///
/// Only regular files are opened, so that a pipe or device can never block; a file that the library makes no
/// progress with for the time of `patience` is a failure. The decoded audio of the files
/// used last stays in memory as long as it fits the limit; a file larger than that is decoded anew at each
/// reading. A file that has changed on disk (size, time stamp, identity) is decoded again. Not for use from
/// two threads at once.
class AudioStore {
public:
    static constexpr std::size_t default_byte_limit = std::size_t{256} << 20;
    static constexpr std::chrono::milliseconds default_patience{30'000};

    void set_patience(std::chrono::milliseconds patience);

    /// @param byte_limit most bytes of decoded audio kept between readings
    /// @param patience   longest time that a file may take without progress
    explicit AudioStore(std::size_t byte_limit = default_byte_limit,
                        std::chrono::milliseconds patience = default_patience);
    ~AudioStore();
    AudioStore(const AudioStore&) = delete;
    AudioStore& operator=(const AudioStore&) = delete;

    /// Shape of the audio in `file`. The frame count is the header's, if that is believable for the file's
    /// size, until the file has been decoded, and what could be decoded from then on. Fails, naming the path,
    /// when the file is missing, unreadable, not regular, no audio, or without frames.
    Result<AudioFormat> format(const std::filesystem::path& file);

    /// Hands exactly `range.frame_count` frames to `visit`, in order. Frames before the start and past the
    /// end of the audio are zeros, as are samples that are no finite numbers. Fails as `format` does, when
    /// nothing at all could be decoded, and when `visit` does, which must not use this store.
    Result<void> read(const std::filesystem::path& file, FrameRange range, const FrameVisitor& visit);

    /// Bytes of decoded audio in memory, never above the limit.
    std::size_t resident_bytes() const { return resident_bytes_; }

private:
    struct Known;
    using KnownFiles = std::unordered_map<std::string, std::unique_ptr<Known>>;

    Result<Known*> find_or_open(const std::filesystem::path& file);
    Result<void> load(Known& known);
    void make_room(std::size_t bytes);
    void forget(KnownFiles::iterator known);

    std::size_t byte_limit_;
    std::size_t resident_bytes_ = 0;
    std::unique_ptr<Decoder> decoder_; // the files' own
    KnownFiles by_path_;
    std::list<Known*> resident_; ///< used last stands first
    Known* asked_last_ = nullptr;
};

} // namespace headless
