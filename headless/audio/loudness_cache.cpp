#include "headless/audio/loudness_cache.hpp"

#include "headless/audio/sound_file.hpp"

#include <cmath>

namespace headless::audio {

struct LoudnessCache::Measurement {
    FileStamp stamp;
    FrameRange range;
    double factor;
    LoudnessRequest request;
    Loudness loudness;

    bool covers_request(const FileStamp& present, FrameRange wanted, double wanted_factor,
                        const LoudnessRequest& asked) const {
        const auto covers = [](bool has, bool wants) { return has || !wants; };
        return stamp == present && range == wanted && request.hop_milliseconds == asked.hop_milliseconds &&
               (factor == wanted_factor || !(asked.integrated || asked.loudness_range)) &&
               covers(request.integrated, asked.integrated) &&
               covers(request.loudness_range, asked.loudness_range) &&
               covers(request.true_peak, asked.true_peak) &&
               covers(request.short_term_maximum, asked.short_term_maximum) &&
               covers(request.momentary_maximum, asked.momentary_maximum);
    }
};

namespace {

void move_level(std::optional<PlacedReading>& reading, double gain_db) {
    if (reading)
        reading->value += gain_db;
}

Loudness at_gain(Loudness loudness, double change) {
    if (change == 1.0)
        return loudness;
    const double gain_db = 20.0 * std::log10(std::abs(change));
    move_level(loudness.true_peak_dbtp, gain_db);
    move_level(loudness.short_term_maximum_lufs, gain_db);
    move_level(loudness.momentary_maximum_lufs, gain_db);
    loudness.integrated_lufs.reset();
    loudness.loudness_range_lu.reset();
    return loudness;
}

} // namespace

LoudnessCache::LoudnessCache(AudioCache& audio) : audio_(audio) {}
LoudnessCache::~LoudnessCache() = default;

Result<Loudness> LoudnessCache::measure(const std::filesystem::path& file, FrameRange range,
                                        const GainCurve& gain, const LoudnessRequest& request) {
    const std::optional<double> factor = gain.constant();
    const auto stamp = stamp_of(file);
    if (!factor || *factor == 0.0 || !stamp)
        return measure_loudness(audio_, file, range, gain, request);
    const auto cached = by_path_.find(file.native());
    if (cached != by_path_.end() && cached->second.covers_request(*stamp, range, *factor, request))
        return at_gain(cached->second.loudness, *factor / cached->second.factor);
    auto loudness = measure_loudness(audio_, file, range, gain, request);
    if (loudness)
        by_path_.insert_or_assign(file.native(), Measurement{*stamp, range, *factor, request, *loudness});
    return loudness;
}

} // namespace headless::audio
