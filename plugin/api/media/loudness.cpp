#include "api/media/loudness.hpp"

#include "api/media/on_item.hpp"
#include "host_api/arguments.hpp"
#include "host_api/host_functions.hpp"
#include "sws/dependency.hpp"
#include "utility/mk_utility.hpp"

#include <cmath>
#include <optional>

namespace mk_api::loudness {

using mediaItem::on_item;

sws::AnalyzeTakeLoudness2* NF_AnalyzeTakeLoudness2 = nullptr;

namespace {

struct MomentaryMaximum {
    double loudness = 0.0;
    double position_seconds = 0.0;
};

/// Measures the item's active take.
/// @returns nothing if there is nothing to measure
std::optional<MomentaryMaximum> measure(const char* api_name, MediaItem* item) {
    const bool is_bound = dependency_manager::bound(
        api_name, [] { dependency_manager::bind(NF_AnalyzeTakeLoudness2, "NF_AnalyzeTakeLoudness2"); });
    MediaItem_Take* take = is_bound && item ? call(GetActiveTake, item) : nullptr;
    double integrated, range, true_peak, true_peak_position, short_term, short_term_position;
    MomentaryMaximum maximum;
    const bool is_measured =
        take && NF_AnalyzeTakeLoudness2(take, false, &integrated, &range, &true_peak, &true_peak_position,
                                        &short_term, &maximum.loudness, &short_term_position,
                                        &maximum.position_seconds);
    return is_measured ? std::optional(maximum) : std::nullopt;
}

} // namespace

int GetMediaItemLoudnessMaxMomentary(MediaItem* item, double* maxMomentaryOut, double* maxMomentaryPosOut) {
    const auto maximum = measure("MK_GetMediaItemLoudnessMaxMomentary", item);
    if (!maximum)
        return 1;
    put(maxMomentaryOut, maximum->loudness);
    put(maxMomentaryPosOut, maximum->position_seconds);
    return 0;
}

int GetMediaIdLoudnessMaxMomentary(ReaProject* projID, int itemID, double* maxMomentaryOut,
                                   double* maxMomentaryPosOut) {
    return on_item(Scope::all, Missing::fails, GetMediaItemLoudnessMaxMomentary, projID, itemID,
                   maxMomentaryOut, maxMomentaryPosOut);
}

int GetSelectedMediaIdLoudnessMaxMomentary(ReaProject* projID, int selectItemID, double* maxMomentaryOut,
                                           double* maxMomentaryPosOut) {
    return on_item(Scope::selected, Missing::fails, GetMediaItemLoudnessMaxMomentary, projID, selectItemID,
                   maxMomentaryOut, maxMomentaryPosOut);
}

bool SetMediaItemLoudnessMaxMomentary(MediaItem* item, double setMaxMomentary, double* maxMomentaryOut) {
    const auto maximum = measure("MK_SetMediaItemLoudnessMaxMomentary", item);
    if (!maximum)
        return false;
    const double volume_db = mk_utility::to_dB(call(GetMediaItemInfo_Value, item, "D_VOL")) +
                             (setMaxMomentary - maximum->loudness);
    const double volume = std::exp(volume_db * mk_utility::nepers_per_decibel);
    if (!std::isfinite(volume))
        return false;
    const bool is_set = call(SetMediaItemInfo_Value, item, "D_VOL", volume);
    call(UpdateArrange);
    if (is_set)
        put(maxMomentaryOut, maximum->position_seconds);
    return is_set;
}

bool SetMediaIdLoudnessMaxMomentary(ReaProject* projID, int itemID, double setMaxMomentary,
                                    double* maxMomentaryOut) {
    return on_item(Scope::all, Missing::fails, SetMediaItemLoudnessMaxMomentary, projID, itemID,
                   setMaxMomentary, maxMomentaryOut);
}

bool SetSelectedMediaIdLoudnessMaxMomentary(ReaProject* projID, int selectItemID, double setMaxMomentary,
                                            double* maxMomentaryOut) {
    return on_item(Scope::selected, Missing::fails, SetMediaItemLoudnessMaxMomentary, projID, selectItemID,
                   setMaxMomentary, maxMomentaryOut);
}

} // namespace mk_api::loudness
