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

/// A file on which the library makes no progress within the patience is a failure that names the file;
/// further attempts with that file fail at once. A read error is also a failure that names the file.
class Decoder {
public:
    /// @param patience longest time without progress
    explicit Decoder(std::chrono::milliseconds patience) : patience_(patience) {}
    void set_patience(std::chrono::milliseconds patience) { patience_ = patience; }

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

    std::chrono::milliseconds patience_;
    Watchdog thread_;
    std::unordered_set<std::string> given_up_;
};

} // namespace headless::audio
