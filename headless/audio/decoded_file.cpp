#include "headless/audio/decoded_file.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace headless::audio {
namespace {

// Codecs rarely pack more samples than this into a byte; a header that claims more is checked by decoding.
constexpr std::int64_t believable_samples_per_byte = 16;

std::int64_t frames_per_block(int channels) {
    return std::max<std::int64_t>(1, static_cast<std::int64_t>(block_samples) / channels);
}

// Calls visit(frame, count) for the frames from `first` up to but not including `end`, at most a block at a
// time.
template <class Visit>
Result<void> for_each_block(std::int64_t first, std::int64_t end, int channels, Visit visit) {
    for (std::int64_t frame = first; frame < end;) {
        const std::int64_t count = std::min(end - frame, frames_per_block(channels));
        if (auto done = visit(frame, count); !done)
            return done;
        frame += count;
    }
    return {};
}

Result<void> visit_silence(std::int64_t frames, int channels, const FrameVisitor& visit) {
    if (frames <= 0)
        return {};
    const std::vector<float> silence(
        static_cast<std::size_t>(std::min(frames, frames_per_block(channels)) * channels));
    return for_each_block(0, frames, channels, [&](std::int64_t, std::int64_t count) {
        return visit(std::span(silence).first(static_cast<std::size_t>(count * channels)));
    });
}

tl::unexpected<Failure> failure(const std::filesystem::path& file, const char* reason) {
    return tl::unexpected(path_failure(file, reason));
}

constexpr const char* nothing_decoded = "no audio could be decoded";

} // namespace

Result<DecodedFile> DecodedFile::open(const std::filesystem::path& file, const FileStamp& stamp,
                                      Decoder& decoder) {
    auto sound = decoder.open(file);
    if (!sound)
        return tl::unexpected(sound.error());
    const SF_INFO& info = sound->info;
    DecodedFile opened(*sound, stamp, decoder);
    if (info.frames / believable_samples_per_byte > stamp.bytes / info.channels) {
        if (auto counted = opened.count_frames(*sound); !counted)
            return tl::unexpected(counted.error());
    } else {
        opened.opened_ = std::move(*sound);
    }
    return opened;
}

std::size_t DecodedFile::bytes() const {
    const auto frames = static_cast<std::size_t>(format_.frames);
    const auto frame_bytes = static_cast<std::size_t>(format_.channels) * sizeof(float);
    const auto most = std::numeric_limits<std::size_t>::max();
    return frames > most / frame_bytes ? most : frames * frame_bytes;
}

Result<SoundFile> DecodedFile::reopen() const {
    auto sound = decoder_->open(path_);
    if (sound && (sound->info.channels != format_.channels || sound->info.samplerate != format_.sample_rate))
        return failure(path_, "has changed while it was read");
    return sound;
}

Result<void> DecodedFile::count_frames(const SoundFile& sound) {
    const auto frames = decoder_->count_frames(sound);
    if (!frames)
        return tl::unexpected(frames.error());
    if (*frames == 0)
        return failure(path_, nothing_decoded);
    format_.frames = *frames;
    return {};
}

Result<void> DecodedFile::load() {
    const auto sound = opened_ ? Result<SoundFile>(std::move(*opened_)) : reopen();
    opened_.reset();
    auto decoded =
        sound.and_then([&](const SoundFile& opened) { return decoder_->decode(opened, format_.frames); });
    if (!decoded)
        return tl::unexpected(decoded.error());
    if (decoded->frames == 0)
        return failure(path_, nothing_decoded);
    samples_ = std::move(decoded->samples);
    if (decoded->frames < format_.frames) { // keep no more memory than there is audio
        format_.frames = decoded->frames;
        const auto fitting = std::make_shared_for_overwrite<float[]>(bytes() / sizeof(float));
        std::copy_n(samples_.get(), bytes() / sizeof(float), fitting.get());
        samples_ = fitting;
    }
    return {};
}

Result<void> DecodedFile::read(FrameRange range, const FrameVisitor& visit) {
    const std::int64_t first = range.first_frame;
    const std::int64_t end = first + std::max<std::int64_t>(0, range.frame_count);
    const std::int64_t audio_first = std::clamp<std::int64_t>(0, first, end);
    const std::int64_t audio_end = std::clamp(format_.frames, audio_first, end);
    return visit_silence(audio_first - first, format_.channels, visit)
        .and_then([&] { return read_audio(audio_first, audio_end, visit); })
        .and_then([&] { return visit_silence(end - audio_end, format_.channels, visit); });
}

Result<void> DecodedFile::read_audio(std::int64_t first, std::int64_t end, const FrameVisitor& visit) {
    if (!is_resident())
        return first < end ? stream_audio(first, end, visit) : Result<void>{};
    const int channels = format_.channels;
    return for_each_block(first, end, channels, [&](std::int64_t frame, std::int64_t count) {
        return visit({samples_.get() + frame * channels, static_cast<std::size_t>(count * channels)});
    });
}

Result<void> DecodedFile::stream_audio(std::int64_t first, std::int64_t end, const FrameVisitor& visit) {
    const auto sound = reopen();
    if (!sound)
        return tl::unexpected(sound.error());
    if (first > 0) {
        const auto found = decoder_->seek(*sound, first);
        if (!found)
            return tl::unexpected(found.error());
        if (!*found)
            return failure(path_, "can only be read from its start");
    }
    const int channels = format_.channels;
    return for_each_block(first, end, channels, [&](std::int64_t frame, std::int64_t count) -> Result<void> {
        const auto decoded = decoder_->decode(*sound, count);
        if (!decoded)
            return tl::unexpected(decoded.error());
        if (decoded->frames == 0 && frame == 0)
            return failure(path_, nothing_decoded);
        if (decoded->frames < count)
            decodable_frames_ = std::min(decodable_frames_, frame + decoded->frames);
        const auto block = std::span(decoded->samples.get(), static_cast<std::size_t>(count * channels));
        std::ranges::fill(block.subspan(static_cast<std::size_t>(decoded->frames * channels)), 0.0F);
        return visit(block);
    });
}

} // namespace headless::audio
