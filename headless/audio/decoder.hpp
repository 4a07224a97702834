#pragma once
// libsndfile at arm's length: some malformed files make it run in circles, so it works on a watched thread.
// For use inside this folder.

#include "headless/audio/sound_file.hpp"
#include "headless/audio/watched_thread.hpp"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <unordered_set>

namespace headless {

/// Frames out of a file: interleaved samples, all of them finite.
struct Decoded {
    std::shared_ptr<float[]> samples;
    std::int64_t frames = 0;
};

/// A file that the library makes no progress with within the patience is a failure that names it, at once
/// when it comes again.
class Decoder {
public:
    /// @param patience longest time without progress
    explicit Decoder(std::chrono::milliseconds patience) : patience_(patience) {}
    void set_patience(std::chrono::milliseconds patience) { patience_ = patience; }

    /// As open_sound_file.
    Result<SoundFile> open(const std::filesystem::path& file);

    /// The next frames, at most so many; fewer mean the end of what can be decoded.
    Result<Decoded> decode(const SoundFile& sound, std::int64_t frames);

    /// How many frames can be decoded from here on.
    Result<std::int64_t> count_frames(const SoundFile& sound);

    /// @returns whether the file is at that frame now
    Result<bool> seek(const SoundFile& sound, std::int64_t frame);

private:
    template <class Value, class Work>
    Result<Value> watch(const std::filesystem::path& file, Work work);

    std::chrono::milliseconds patience_;
    WatchedThread thread_;
    std::unordered_set<std::string> given_up_;
};

} // namespace headless
