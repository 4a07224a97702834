#pragma once
// Runs libsndfile on a watched thread, since some malformed files make it loop forever. For use inside this
// folder.

#include "headless/audio/sound_file.hpp"
#include "headless/audio/watchdog.hpp"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <unordered_set>

namespace headless::audio {

/// Frames decoded from a file: interleaved samples, all of them finite.
struct Decoded {
    std::shared_ptr<float[]> samples;
    std::int64_t frames = 0;
};

/// Every failure names the file. A file on which the library makes no progress within the timeout is a
/// failure, and later attempts with that file fail at once.
class Decoder {
public:
    /// @param timeout longest time without progress
    explicit Decoder(std::chrono::milliseconds timeout) : timeout_(timeout) {}
    void set_timeout(std::chrono::milliseconds timeout) { timeout_ = timeout; }

    /// As open_sound_file.
    Result<SoundFile> open(const std::filesystem::path& file);

    /// Returns the next frames, at most `frames`. Fewer mean the end of what can be decoded.
    Result<Decoded> decode(const SoundFile& sound, std::int64_t frames);

    /// Returns the number of frames that can be decoded from here on.
    Result<std::int64_t> count_frames(const SoundFile& sound);

    /// @returns whether the file is now positioned at that frame
    Result<bool> seek(const SoundFile& sound, std::int64_t frame);

private:
    template <class Value, class Work>
    Result<Value> watch(const std::filesystem::path& file, Work work);

    std::chrono::milliseconds timeout_;
    Watchdog watchdog_;
    std::unordered_set<std::filesystem::path::string_type> abandoned_;
};

} // namespace headless::audio
