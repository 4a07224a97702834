// Host functions that measure takes: peaks and loudness.

#include "headless/audio/peaks.hpp"
#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"
#include "headless/workstation/take_audio.hpp"
#include "headless/workstation/take_loudness.hpp"

#include <algorithm>
#include <limits>
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
    };
    return table;
}

} // namespace headless::functions
