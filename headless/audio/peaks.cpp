#include "headless/audio/peaks.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace headless::audio {
namespace {

constexpr double tolerance_frames = 1e-6;
constexpr double max_frames = 9e15; // every whole number up to this is exact as a double

/// The frames that each interval covers.
struct Grid {
    double start_frames;
    double sample_rate;
    double peaks_per_second;

    std::int64_t border(std::int64_t interval) const {
        const double frames = static_cast<double>(interval) * sample_rate / peaks_per_second;
        return static_cast<std::int64_t>(std::floor(start_frames + frames + tolerance_frames));
    }
    std::int64_t begin(std::int64_t interval) const { return border(interval); }
    std::int64_t end(std::int64_t interval) const {
        return std::max(border(interval + 1), border(interval) + 1);
    }

    bool is_usable(std::int64_t intervals) const {
        const double last = start_frames + static_cast<double>(intervals) * sample_rate / peaks_per_second;
        return peaks_per_second > 0 && std::abs(start_frames) < max_frames && std::abs(last) < max_frames;
    }
};

struct Extremes {
    float highest = -std::numeric_limits<float>::infinity();
    float lowest = std::numeric_limits<float>::infinity();

    bool has_seen_samples() const { return highest >= lowest; }

    void take(float sample) {
        highest = sample > highest ? sample : highest;
        lowest = sample < lowest ? sample : lowest;
    }

    void take_channel(std::span<const float> samples, std::size_t channel, std::size_t channels) {
        for (std::size_t i = channel; i < samples.size(); i += channels)
            take(samples[i]);
    }

    void take_all(std::span<const float> samples) {
        constexpr std::size_t width = 8; // in parallel, for vectorisation
        std::array<float, width> highs;
        std::array<float, width> lows;
        highs.fill(highest);
        lows.fill(lowest);
        for (; samples.size() >= width; samples = samples.subspan(width)) {
            for (std::size_t lane = 0; lane < width; ++lane) {
                highs[lane] = samples[lane] > highs[lane] ? samples[lane] : highs[lane];
                lows[lane] = samples[lane] < lows[lane] ? samples[lane] : lows[lane];
            }
        }
        highest = std::ranges::max(highs);
        lowest = std::ranges::min(lows);
        take_channel(samples, 0, 1);
    }
};

/// Assigns the frames of incoming blocks to intervals.
class PeakMeter {
public:
    PeakMeter(const Grid& grid, std::int64_t intervals, int file_channels, int asked_channels,
              std::span<double> maxima, std::span<double> minima, std::int64_t first_frame)
        : grid_(grid), intervals_(intervals), file_channels_(static_cast<std::size_t>(file_channels)),
          extremes_(static_cast<std::size_t>(asked_channels)), maxima_(maxima), minima_(minima),
          frame_(first_frame) {
        while (interval_ < intervals_ && grid_.end(interval_) <= 0)
            ++interval_;
    }

    void process(std::span<const float> block) {
        const std::int64_t block_end = frame_ + static_cast<std::int64_t>(block.size() / file_channels_);
        while (interval_ < intervals_ && grid_.begin(interval_) < block_end) {
            const std::int64_t begin = std::max(grid_.begin(interval_), frame_);
            const std::int64_t end = grid_.end(interval_);
            fold(block.subspan(samples(begin - frame_), samples(std::min(end, block_end) - begin)));
            if (end > block_end)
                break;
            store();
        }
        frame_ = block_end;
    }

    /// Returns the number of intervals up to the end of the processed frames.
    std::int64_t finish() {
        if (extremes_.front().has_seen_samples())
            store();
        return interval_;
    }

private:
    std::size_t samples(std::int64_t frames) const {
        return static_cast<std::size_t>(frames) * file_channels_;
    }

    void fold(std::span<const float> block) {
        if (extremes_.size() == 1) {
            extremes_.front().take_all(block);
            return;
        }
        for (std::size_t channel = 0; channel < std::min(extremes_.size(), file_channels_); ++channel)
            extremes_[channel].take_channel(block, channel, file_channels_);
    }

    void store() {
        std::size_t place = static_cast<std::size_t>(interval_++) * extremes_.size();
        for (Extremes& extremes : extremes_) {
            if (extremes.has_seen_samples()) {
                maxima_[place] = static_cast<double>(extremes.highest);
                minima_[place] = static_cast<double>(extremes.lowest);
            }
            extremes = {};
            ++place;
        }
    }

    Grid grid_;
    std::int64_t intervals_;
    std::size_t file_channels_;
    std::vector<Extremes> extremes_;
    std::span<double> maxima_;
    std::span<double> minima_;
    std::int64_t frame_; // start of the next block
    std::int64_t interval_ = 0;
};

} // namespace

Result<std::int64_t> measure_peaks(Sound& sound, const PeakRequest& request, std::span<double> maxima,
                                   std::span<double> minima) {
    std::ranges::fill(maxima, 0.0);
    std::ranges::fill(minima, 0.0);
    const AudioFormat& format = sound.format();
    const auto channels = static_cast<std::size_t>(std::max(1, request.channel_count));
    const auto intervals = static_cast<std::int64_t>(std::min(maxima.size(), minima.size()) / channels);
    const double sample_rate = format.sample_rate;
    const Grid grid{request.start_seconds * sample_rate, sample_rate, request.peaks_per_second};
    if (request.channel_count < 1 || !grid.is_usable(intervals))
        return tl::unexpected(
            path_failure(sound.file(), "peaks were asked for at an impossible place or rate"));
    if (intervals == 0)
        return 0;
    const std::int64_t first = std::clamp<std::int64_t>(grid.begin(0), 0, format.frames);
    const std::int64_t end = std::clamp(grid.end(intervals - 1), first, format.frames);
    PeakMeter meter(grid, intervals, format.channels, request.channel_count, maxima, minima, first);
    const auto process = [&](std::span<const float> block) -> Result<void> {
        meter.process(block);
        return {};
    };
    return sound.read({first, end - first}, process).map([&] { return meter.finish(); });
}

Result<std::int64_t> measure_peaks(AudioCache& cache, const std::filesystem::path& file,
                                   const PeakRequest& request, std::span<double> maxima,
                                   std::span<double> minima) {
    return FileSound::open(cache, file).and_then([&](FileSound&& sound) {
        return measure_peaks(sound, request, maxima, minima);
    });
}

} // namespace headless::audio
