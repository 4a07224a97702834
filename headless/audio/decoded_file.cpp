#include "headless/audio/decoded_file.hpp"

#include "headless/audio/blocks.hpp"

#include <algorithm>
#include <limits>

namespace headless::audio {
namespace {

// Codecs rarely pack more samples than this into a byte; a header that claims more is checked by decoding.
constexpr std::int64_t believable_samples_per_byte = 16;

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
    return visit_with_silence(range, format_, visit, [&](std::int64_t first, std::int64_t end) {
        return read_audio(first, end, visit);
    });
}

Result<void> DecodedFile::read_audio(std::int64_t first, std::int64_t end, const FrameVisitor& visit) {
    if (!is_resident())
        return stream_audio(first, end, visit);
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
