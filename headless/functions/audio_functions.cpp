// Host functions that measure takes: peaks and loudness.

#include "headless/audio/level.hpp"
#include "headless/audio/peaks.hpp"
#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"
#include "headless/workstation/take_audio.hpp"
#include "headless/workstation/take_loudness.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

namespace headless::functions {
namespace {

constexpr std::int64_t largest_peak_count = 0xFFFFF; // the result has 20 bits for it

constexpr double silence_lufs = -std::numeric_limits<double>::infinity();

// Maxima, then minima; a third block for the extra kind is never filled. Levels are those of the file,
// without volume and envelope.
int get_take_peaks(Workstation& workstation, const project::Take& take, double peaks_per_second,
                   double start_seconds, int channel_count, int interval_count, int /*extra_kind*/,
                   double* buffer) {
    if (!buffer || channel_count < 1 || interval_count < 1)
        return 0;
    const auto audio = workstation::audio_of(workstation.audio(), take);
    if (!audio) {
        workstation.report(audio.error());
        return 0;
    }
    const double from_item_start = start_seconds - take.item().position_seconds();
    const audio::PeakRequest request{audio->start_seconds + from_item_start, peaks_per_second, channel_count};
    const std::size_t block =
        static_cast<std::size_t>(channel_count) * static_cast<std::size_t>(interval_count);
    const auto delivered =
        audio::measure_peaks(*audio->sound, request, {buffer, block}, {buffer + block, block});
    if (!delivered) {
        workstation.report(delivered.error());
        return 0;
    }
    return static_cast<int>(std::min(*delivered, largest_peak_count));
}

// Scripts have no addresses: they pass an array, whose size limits what may be written.
int get_take_peaks_into_array(Workstation& workstation, const project::Take& take, double peaks_per_second,
                              double start_seconds, int channel_count, int interval_count, int extra_kind,
                              double* array, int array_size) {
    const std::int64_t values = 2 * std::int64_t{std::max(channel_count, 0)} * std::max(interval_count, 0);
    if (values > array_size) {
        workstation.report(Failure{"GetMediaItemTake_Peaks: the array has room for " +
                                   std::to_string(array_size) + " values, not for " +
                                   std::to_string(values)});
        return 0;
    }
    return get_take_peaks(workstation, take, peaks_per_second, start_seconds, channel_count, interval_count,
                          extra_kind, array);
}

void put_placed(double* value, double* position_seconds, const audio::PlacedReading& reading,
                double start_seconds) {
    put(value, reading.value);
    put(position_seconds, start_seconds + reading.position_seconds);
}

// Positions are project time, except for the true peak's, which is relative to the item.
bool analyze_take_loudness(Workstation& workstation, const project::Take& take, bool wants_true_peak,
                           double* integrated, double* range, double* true_peak, double* true_peak_position,
                           double* short_term_maximum, double* momentary_maximum, double* short_term_position,
                           double* momentary_position) {
    const audio::LoudnessRequest request{.integrated = integrated != nullptr,
                                         .loudness_range = range != nullptr,
                                         .true_peak = wants_true_peak,
                                         .short_term_maximum = short_term_maximum || short_term_position,
                                         .momentary_maximum = true};
    const auto loudness = workstation::heard_loudness(workstation, take, request);
    if (!loudness) {
        workstation.report(loudness.error());
        return false;
    }
    const double start_seconds = take.item().position_seconds();
    put(integrated, loudness->integrated_lufs.value_or(silence_lufs));
    put(range, loudness->loudness_range_lu.value_or(0.0));
    if (loudness->true_peak_dbtp)
        put_placed(true_peak, true_peak_position, *loudness->true_peak_dbtp, 0.0);
    put_placed(short_term_maximum, short_term_position,
               loudness->short_term_maximum_lufs.value_or(audio::PlacedReading{silence_lufs, 0.0}),
               start_seconds);
    put_placed(momentary_maximum, momentary_position, *loudness->momentary_maximum_lufs, start_seconds);
    return true;
}

bool analyze_loudness_briefly(Workstation& workstation, const project::Take& take, bool wants_true_peak,
                              double* integrated, double* range, double* true_peak,
                              double* true_peak_position, double* short_term_maximum,
                              double* momentary_maximum) {
    return analyze_take_loudness(workstation, take, wants_true_peak, integrated, range, true_peak,
                                 true_peak_position, short_term_maximum, momentary_maximum, nullptr, nullptr);
}

bool analyze_integrated_loudness(Workstation& workstation, const project::Take& take, double* integrated) {
    return analyze_take_loudness(workstation, take, false, integrated, nullptr, nullptr, nullptr, nullptr,
                                 nullptr, nullptr, nullptr);
}

constexpr double no_level_db = -150.0; // the lowest that the functions for levels return

double decibels(double amplitude) { return 20.0 * std::log10(amplitude); }

double level_db(double amplitude) { return std::max(no_level_db, decibels(amplitude)); }

/// Of the active take before its effects, with item and take volume, envelope and fades. Empty if it has no audio, and if it cannot be
/// read, which is reported.
std::optional<audio::Level> heard_level(Workstation& workstation, const project::Item& item) {
    const project::Take* take = item.active_take();
    if (!take || take->source.root().file.empty())
        return std::nullopt;
    const auto level =
        workstation::audio_of(workstation.audio(), *take).and_then([&](const workstation::TakeAudio& audio) {
            return audio::measure_level(*audio.sound, audio.range, workstation::faded_gain_of(*take));
        });
    if (!level) {
        workstation.report(level.error());
        return std::nullopt;
    }
    if (workstation::has_bent_fade(item))
        workstation.report_once(Failure{"levels of items: how fades are bent is not considered"});
    return *level;
}

double get_max_peak_and_position(Workstation& workstation, const project::Item& item,
                                 double* position_seconds) {
    const auto level = heard_level(workstation, item);
    put(position_seconds, level ? level->peak_position_seconds : 0.0);
    return level ? level_db(level->peak) : no_level_db;
}

double get_max_peak(Workstation& workstation, const project::Item& item) {
    return get_max_peak_and_position(workstation, item, nullptr);
}

double get_average_rms(Workstation& workstation, const project::Item& item) {
    const auto level = heard_level(workstation, item);
    return level ? level_db(std::sqrt(level->mean_square)) : no_level_db;
}

// What a source is normalized to.
enum class Target { integrated, rms, peak, true_peak, momentary_maximum, short_term_maximum };

Result<double> measure(audio::Sound& sound, audio::FrameRange range, Target target) {
    const audio::GainCurve unity;
    if (target == Target::rms || target == Target::peak) {
        return audio::measure_level(sound, range, unity).map([&](const audio::Level& level) {
            return decibels(target == Target::peak ? level.peak : std::sqrt(level.mean_square));
        });
    }
    const audio::LoudnessRequest request{.integrated = target == Target::integrated,
                                         .true_peak = target == Target::true_peak,
                                         .short_term_maximum = target == Target::short_term_maximum,
                                         .momentary_maximum = target == Target::momentary_maximum};
    return audio::measure_loudness(sound, range, unity, request)
        .and_then([&](const audio::Loudness& loudness) -> Result<double> {
            if (target == Target::integrated && loudness.integrated_lufs)
                return *loudness.integrated_lufs;
            for (const auto& reading :
                 {loudness.true_peak_dbtp, loudness.short_term_maximum_lufs, loudness.momentary_maximum_lufs})
                if (reading)
                    return reading->value;
            return tl::unexpected(path_failure(sound.file(), "too short for a loudness reading"));
        });
}

/// From `start` to `end`, in seconds; all of it if both are 0.
audio::FrameRange stretch_of(const audio::AudioFormat& format, double start, double end) {
    if (start == 0.0 && end == 0.0)
        return {0, format.frames};
    const double last = static_cast<double>(format.frames);
    const auto frame_at = [&](double seconds) {
        return static_cast<std::int64_t>(std::clamp(std::round(seconds * format.sample_rate), 0.0, last));
    };
    return {frame_at(start), frame_at(end) - frame_at(start)};
}

/// A factor of 1 for silence, which no factor makes louder, and for what cannot be measured, which is
/// reported.
double calculate_normalization(Workstation& workstation, const project::Source& source, int normalize_to,
                               double target_level, double start, double end) {
    if (normalize_to < 0 || normalize_to > static_cast<int>(Target::short_term_maximum) ||
        std::isnan(start + end)) {
        workstation.report(Failure{"CalculateNormalization: there is no way " + std::to_string(normalize_to) +
                                   " to normalize"});
        return 1.0;
    }
    const auto measured = workstation::sound_of(workstation.audio(), source)
                              .and_then([&](const std::unique_ptr<audio::Sound>& sound) {
                                  return measure(*sound, stretch_of(sound->format(), start, end),
                                                 static_cast<Target>(normalize_to));
                              });
    if (!measured) {
        workstation.report(measured.error());
        return 1.0;
    }
    return std::isinf(*measured) ? 1.0 : std::pow(10.0, (target_level - *measured) / 20.0);
}

} // namespace

std::span<const workstation::HostFunction> audio_functions() {
    static const workstation::HostFunction table[] = {
        {"GetMediaItemTake_Peaks",
         host_function<get_take_peaks, get_take_peaks_into_array>(
             "take,peakrate,starttime,numchannels,numsamplesperchannel,want_extra_type,buf,buf_sz",
             "Fills the array with a block of maxima, then one of minima; how many there are")},
        {"NF_AnalyzeTakeLoudness2",
         host_function<analyze_take_loudness>(
             "take,analyzeTruePeak,lufsIntegratedOut,rangeOut,truePeakOut,truePeakPosOut,"
             "shortTermMaxOut,momentaryMaxOut,shortTermMaxPosOut,momentaryMaxPosOut",
             "Loudness of what is heard of the take, EBU R 128; true peak position from the item's "
             "start, others project time")},
        {"NF_AnalyzeTakeLoudness",
         host_function<analyze_loudness_briefly>(
             "take,analyzeTruePeak,lufsIntegratedOut,rangeOut,truePeakOut,truePeakPosOut,shortTermMaxOut,"
             "momentaryMaxOut",
             "Loudness of what is heard of the take, EBU R 128; true peak position from the item's start")},
        {"NF_AnalyzeTakeLoudness_IntegratedOnly",
         host_function<analyze_integrated_loudness>("take,lufsIntegratedOut",
                                                    "Integrated loudness of what is heard of the take")},
        {"NF_GetMediaItemMaxPeak",
         host_function<get_max_peak>("item", "Highest sample of what is heard of the item, in dB")},
        {"NF_GetMediaItemMaxPeakAndMaxPeakPos",
         host_function<get_max_peak_and_position>(
             "item,maxPeakPosOut",
             "Highest sample of what is heard of the item, in dB, and its place from the item's start")},
        {"NF_GetMediaItemAverageRMS",
         host_function<get_average_rms>("item", "Mean level of what is heard of the item, in dB")},
        {"CalculateNormalization",
         host_function<calculate_normalization>(
             "source,normalizeTo,normalizeTarget,normalizeStart,normalizeEnd",
             "The factor to that level: 0 integrated LUFS, 1 RMS, 2 peak, 3 true peak, 4 highest momentary, "
             "5 highest short-term LUFS")},
    };
    return table;
}

} // namespace headless::functions
