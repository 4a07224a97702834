#include "headless/audio/decoder.hpp"

#include "headless/audio/frames.hpp"
#include "headless/base/atomic_file.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <span>
#include <vector>

namespace headless::audio {
namespace {

bool holds_integers(const SF_INFO& info) {
    switch (info.format & SF_FORMAT_SUBMASK) {
    case SF_FORMAT_PCM_S8:
    case SF_FORMAT_PCM_16:
    case SF_FORMAT_PCM_24:
    case SF_FORMAT_PCM_32:
    case SF_FORMAT_PCM_U8:
        return true;
    default:
        return false;
    }
}

std::int64_t decode_block(const SoundFile& sound, float* samples, std::int64_t frames) {
    const std::int64_t got = std::max<std::int64_t>(0, sf_readf_float(sound.handle(), samples, frames));
    if (!holds_integers(sound.info))
        for (float& sample : std::span(samples, static_cast<std::size_t>(got * sound.info.channels)))
            sample = std::abs(sample) <= std::numeric_limits<float>::max() ? sample : 0.0F;
    return got;
}

// Frames per step: enough that counting steps costs nothing.
constexpr std::int64_t step_frames = 1 << 16;

/// The frames read are invalid if a read has failed meanwhile: the library takes that for the file's end.
template <class Value>
Result<Value> unless_unreadable(const SoundFile& sound, Value value) {
    if (const int error_number = sound.stream->error_number())
        return tl::unexpected(system_failure(sound.path, error_number));
    return value;
}

Result<Decoded> decode_steps(const SoundFile& sound, std::int64_t frames, Steps& steps) {
    const int channels = sound.info.channels;
    Decoded decoded{std::make_shared_for_overwrite<float[]>(static_cast<std::size_t>(frames * channels)), 0};
    while (decoded.frames < frames) {
        const std::int64_t wanted = std::min(frames - decoded.frames, step_frames);
        const std::int64_t got =
            decode_block(sound, decoded.samples.get() + decoded.frames * channels, wanted);
        decoded.frames += got;
        ++steps;
        if (got < wanted)
            break;
    }
    return unless_unreadable(sound, std::move(decoded));
}

} // namespace

template <class Value, class Work>
Result<Value> Decoder::watch(const std::filesystem::path& file, Work work) {
    const auto result = std::make_shared<std::optional<Result<Value>>>();
    const bool is_done = !abandoned_.contains(file.native()) &&
                         watchdog_.run([=](Steps& steps) { *result = work(steps); }, timeout_);
    if (is_done)
        return std::move(**result);
    abandoned_.insert(file.native());
    return tl::unexpected(path_failure(file, "given up, as the audio library makes no progress with it"));
}

Result<SoundFile> Decoder::open(const std::filesystem::path& file) {
    return watch<SoundFile>(file, [=](Steps&) { return open_sound_file(file); });
}

Result<Decoded> Decoder::decode(const SoundFile& sound, std::int64_t frames) {
    return watch<Decoded>(sound.path, [=](Steps& steps) { return decode_steps(sound, frames, steps); });
}

Result<std::int64_t> Decoder::count_frames(const SoundFile& sound) {
    return watch<std::int64_t>(sound.path, [=](Steps& steps) {
        const std::int64_t block_frames =
            std::max<std::int64_t>(1, static_cast<std::int64_t>(block_samples) / sound.info.channels);
        std::vector<float> block(static_cast<std::size_t>(block_frames * sound.info.channels));
        std::int64_t frames = 0;
        while (const std::int64_t got = decode_block(sound, block.data(), block_frames)) {
            frames += got;
            ++steps;
        }
        return unless_unreadable(sound, frames);
    });
}

Result<bool> Decoder::seek(const SoundFile& sound, std::int64_t frame) {
    return watch<bool>(sound.path, [=](Steps&) {
        return unless_unreadable(sound, sf_seek(sound.handle(), frame, SEEK_SET) == frame);
    });
}

} // namespace headless::audio
