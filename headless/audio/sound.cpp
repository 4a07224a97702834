#include "headless/audio/sound.hpp"

#include "headless/audio/blocks.hpp"

#include <algorithm>

namespace headless::audio {
namespace {

constexpr std::size_t short_samples = std::size_t{1} << 22; // 16 MiB

AudioFormat with_frames(AudioFormat format, std::int64_t frames) {
    format.frames = frames;
    return format;
}

AudioFormat with_channels(AudioFormat format, std::size_t channels) {
    format.channels = static_cast<int>(channels);
    return format;
}

Result<void> append(Sound& sound, FrameRange range, std::vector<float>& samples) {
    return sound.read(range, [&](std::span<const float> block) -> Result<void> {
        samples.insert(samples.end(), block.begin(), block.end());
        return {};
    });
}

void reverse_frames(std::vector<float>& samples, std::size_t channels) {
    std::ranges::reverse(samples);
    for (auto frame = samples.begin(); frame != samples.end(); frame += static_cast<std::ptrdiff_t>(channels))
        std::reverse(frame, frame + static_cast<std::ptrdiff_t>(channels));
}

} // namespace

Result<void> FileSound::read(FrameRange range, const FrameVisitor& visit) {
    return cache_.format(file()).and_then([&](const AudioFormat& present) -> Result<void> {
        if (present.channels != format().channels || present.sample_rate != format().sample_rate)
            return tl::unexpected(path_failure(file(), "has got another format while it was used"));
        return cache_.read(file(), range, visit);
    });
}

SectionSound::SectionSound(std::unique_ptr<Sound> inner, FrameRange stretch, bool reversed)
    : Sound(inner->file(), with_frames(inner->format(), std::max<std::int64_t>(0, stretch.frame_count))),
      inner_(std::move(inner)), first_frame_(stretch.first_frame), reversed_(reversed) {}

Result<void> SectionSound::read(FrameRange range, const FrameVisitor& visit) {
    return visit_with_silence(range, format(), visit, [&](std::int64_t first, std::int64_t end) {
        return reversed_ ? read_reversed(first, end, visit)
                         : inner_->read({first_frame_ + first, end - first}, visit);
    });
}

Result<void> SectionSound::read_reversed(std::int64_t first, std::int64_t end, const FrameVisitor& visit) {
    const std::int64_t inner_end = first_frame_ + format().frames;
    std::vector<float> samples;
    return for_each_block(first, end, format().channels, [&](std::int64_t frame, std::int64_t count) {
        samples.clear();
        return append(*inner_, {inner_end - frame - count, count}, samples).and_then([&] {
            reverse_frames(samples, static_cast<std::size_t>(format().channels));
            return visit(samples);
        });
    });
}

RepeatedSound::RepeatedSound(std::unique_ptr<Sound> inner)
    : Sound(inner->file(), with_frames(inner->format(), endless_frames)), inner_(std::move(inner)),
      period_frames_(inner_->format().frames) {}

Result<void> RepeatedSound::read(FrameRange range, const FrameVisitor& visit) {
    const std::int64_t end = range.first_frame + range.frame_count;
    for (std::int64_t frame = range.first_frame; frame < end;) {
        const std::int64_t remainder = frame % period_frames_;
        const std::int64_t first = remainder < 0 ? remainder + period_frames_ : remainder;
        const std::int64_t count = std::min(end - frame, period_frames_ - first);
        if (auto done = read_once({first, count}, visit); !done)
            return done;
        frame += count;
    }
    return {};
}

// A short sound is kept, as it may be read a million times.
Result<void> RepeatedSound::read_once(FrameRange range, const FrameVisitor& visit) {
    const int channels = format().channels;
    if (period_frames_ > static_cast<std::int64_t>(short_samples) / channels)
        return inner_->read(range, visit);
    if (samples_.empty()) {
        std::vector<float> samples;
        if (auto done = append(*inner_, {0, period_frames_}, samples); !done)
            return done;
        samples_ = std::move(samples);
    }
    const std::int64_t end = range.first_frame + range.frame_count;
    return for_each_block(range.first_frame, end, channels, [&](std::int64_t frame, std::int64_t count) {
        return visit(std::span(samples_).subspan(static_cast<std::size_t>(frame * channels),
                                                 static_cast<std::size_t>(count * channels)));
    });
}

ChannelSound::ChannelSound(std::unique_ptr<Sound> inner, std::vector<Mean> channels)
    : Sound(inner->file(), with_channels(inner->format(), channels.size())), inner_(std::move(inner)),
      channels_(std::move(channels)) {}

Result<void> ChannelSound::read(FrameRange range, const FrameVisitor& visit) {
    const auto inner_width = static_cast<std::size_t>(inner_->format().channels);
    const std::size_t width = channels_.size();
    std::vector<float> mixed;
    return inner_->read(range, [&](std::span<const float> block) {
        mixed.assign(block.size() / inner_width * width, 0.0F);
        for (std::size_t channel = 0; channel < width; ++channel) {
            const Mean& mean = channels_[channel];
            const float share = 1.0F / static_cast<float>(mean.size());
            for (const std::size_t from : mean)
                for (std::size_t in = from, out = channel; out < mixed.size();
                     in += inner_width, out += width)
                    mixed[out] += share * block[in];
        }
        return visit(mixed);
    });
}

} // namespace headless::audio
