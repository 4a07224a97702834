#include "api/media/peak_levels.hpp"

#include "host_api/host_functions.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <new>
#include <optional>

namespace mk_api::mediaItem {
namespace {

constexpr double peaks_per_second = 1000.0;
constexpr int one_channel = 1;
constexpr int spectral_peaks = 115; // the letter "s": requested but not read
constexpr int delivered_mask = 0xFFFFF;

// The host reports the number of peaks delivered in 20 bits, which limits the length of one request.
constexpr int longest_request = delivered_mask;

constexpr double quietest = 0.0001;
constexpr double steps_per_unit = 10000.0;

double four_decimals(double value) { return std::floor(value * 10000.0 + 0.5) / 10000.0; }

double decibels_of_rounded(double linear) {
    return std::floor(std::log10(linear) * 20.0 * 10000.0 + 0.5) / 10000.0;
}

// Linear values are rounded to whole steps before the logarithm, so the logarithms of all steps up to
// slightly above full scale are computed once.
constexpr std::size_t table_steps = 1 << 14;

const std::array<double, table_steps>& decibels_by_step() {
    static const auto table = [] {
        std::array<double, table_steps> decibels{};
        for (std::size_t step = 1; step < table_steps; ++step)
            decibels[step] = decibels_of_rounded(static_cast<double>(step) / steps_per_unit);
        return decibels;
    }();
    return table;
}

double to_db(const std::array<double, table_steps>& table, double peak) {
    const double magnitude = std::fabs(peak);
    if (magnitude < quietest)
        return table[1];
    const double step = magnitude * steps_per_unit + 0.5;
    if (step < static_cast<double>(table_steps))
        return table[static_cast<std::size_t>(step)];
    return decibels_of_rounded(four_decimals(magnitude));
}

/// Converts a length to whole milliseconds, halves up. Returns nothing if the length is not above 0 or does
/// not fit an int.
std::optional<int> milliseconds(double length_seconds) {
    const double count = std::floor(length_seconds / 0.001 + 0.5);
    if (!(length_seconds > 0.0) || count > std::numeric_limits<int>::max())
        return std::nullopt;
    return static_cast<int>(count);
}

/// Sends one request to the host.
/// @returns whether the host delivered any peak
bool read_stretch(MediaItem_Take* take, double start_seconds, int count, std::vector<PeakLevel>& levels) {
    const auto size = static_cast<std::size_t>(count);
    std::vector<double> peaks(3 * size);
    const int result = call(GetMediaItemTake_Peaks, take, peaks_per_second, start_seconds, one_channel, count,
                            spectral_peaks, peaks.data());
    const auto& table = decibels_by_step();
    levels.resize(size);
    for (std::size_t i = 0; i < size; ++i)
        levels[i] = {to_db(table, peaks[i]), to_db(table, peaks[size + i])};
    return (result & delivered_mask) != 0;
}

} // namespace

bool visit_peak_levels(MediaItem* item, const PeakLevelVisitor& visit) {
    MediaItem_Take* take = item ? call(GetActiveTake, item) : nullptr;
    if (!take)
        return false;
    const double position = call(GetMediaItemInfo_Value, item, "D_POSITION");
    const auto total = milliseconds(call(GetMediaItemInfo_Value, item, "D_LENGTH"));
    if (!total)
        return false;
    std::vector<PeakLevel> levels;
    bool delivered = false;
    int done = 0;
    do {
        const int count = std::min(*total - done, longest_request);
        delivered |= read_stretch(take, position + peak_time(static_cast<std::size_t>(done)), count, levels);
        visit(levels, static_cast<std::size_t>(*total));
        done += count;
    } while (done < *total);
    return delivered;
}

bool read_peak_levels(MediaItem* item, std::vector<PeakLevel>& levels) {
    const std::size_t present = levels.size();
    const auto append = [&](std::span<const PeakLevel> next, std::size_t total) {
        levels.reserve(present + total);
        levels.insert(levels.end(), next.begin(), next.end());
    };
    const bool delivered = visit_peak_levels(item, append);
    if (!delivered)
        levels.resize(present);
    return delivered;
}

} // namespace mk_api::mediaItem
