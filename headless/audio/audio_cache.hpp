#pragma once
// Reads audio files as blocks of float frames: decoded once and cached in memory up to a limit.

#include "headless/audio/frames.hpp"
#include "headless/audio/metadata.hpp"
#include "headless/base/failure.hpp"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

namespace headless::audio {

class Decoder;

/// Reads audio files of every format that libsndfile supports.
///
/// Only regular files are opened, so that a pipe or device can never block. A file on which the library makes
/// no progress within the timeout is a failure. The decoded audio of the most recently used files stays in
/// memory up to the limit; a file larger than the limit is decoded again for each read. A file that has
/// changed on disk (size, time stamp, inode) is decoded again. Not for use from two threads at once.
class AudioCache {
public:
    static constexpr std::size_t default_byte_limit = std::size_t{256} << 20;
    static constexpr std::chrono::milliseconds default_timeout{30'000};

    /// @param byte_limit  maximum bytes of decoded audio kept between reads
    /// @param timeout     longest time that decoding may take without progress
    explicit AudioCache(std::size_t byte_limit = default_byte_limit,
                        std::chrono::milliseconds timeout = default_timeout);
    ~AudioCache();
    AudioCache(const AudioCache&) = delete;
    AudioCache& operator=(const AudioCache&) = delete;

    void set_timeout(std::chrono::milliseconds timeout);

    /// Returns the format of the audio in `file`. Until the file has been decoded, the frame count is the
    /// header's if that is plausible for the file's size; after that it is the number of frames that could be
    /// decoded. Fails, naming the path, if the file is missing, unreadable, not regular, not audio, or has no
    /// frames.
    Result<AudioFormat> format(const std::filesystem::path& file);

    /// Passes exactly `range.frame_count` frames to `visit`, in order. Frames before the start and past the
    /// end of the audio are zeros, as are non-finite samples. Fails as `format` does, if nothing at all could
    /// be decoded, and if `visit` fails. `visit` must not use this cache.
    Result<void> read(const std::filesystem::path& file, FrameRange range, const FrameVisitor& visit);

    /// Reads fail as soon as this returns true. It is called between blocks of frames.
    std::function<bool()> is_interrupted;

    /// Empty for a file that is as long as its header claims, and for one that cannot be opened. That a file
    /// larger than the limit is truncated is known once it has been read to its end.
    std::optional<Truncation> truncation(const std::filesystem::path& file);

    /// The texts in the file's header. Fails as `format` does.
    Result<Metadata> metadata(const std::filesystem::path& file);

    /// Bytes of decoded audio in memory, never above the limit.
    std::size_t resident_bytes() const { return resident_bytes_; }

private:
    struct CachedFile;
    using FilesByPath = std::unordered_map<std::filesystem::path::string_type, std::unique_ptr<CachedFile>>;

    Result<CachedFile*> find_or_open(const std::filesystem::path& file);
    Result<void> load(CachedFile& cached);
    void evict_until_free(std::size_t bytes);
    void erase(FilesByPath::iterator cached);

    std::size_t byte_limit_;
    std::size_t resident_bytes_ = 0;
    std::unique_ptr<Decoder> decoder_; // used by the files
    FilesByPath by_path_;
    std::list<CachedFile*> by_recency_; ///< most recently used first
    CachedFile* last_used_ = nullptr;
};

} // namespace headless::audio
