#include "api/media/loudness.hpp"

#include "api/media/lookup.hpp"
#include "host/dependency.hpp"
#include "host/host_functions.hpp"
#include "host/sws_functions.hpp"
#include "utility/mk_utility.hpp"

#include <cmath>

namespace mk_api::loudness {

using mediaItem::GetMediaItemSelect;

namespace {

sws::AnalyzeTakeLoudness2* NF_AnalyzeTakeLoudness2 = nullptr;

/// Measures the item's active take. An output that is null is not wanted. @returns false when there is
/// nothing to read
bool measure(const char* api_name, MediaItem* item, double* maximum, double* position) {
    const bool is_bound = dependency_manager::bound(
        api_name, [] { dependency_manager::bind(NF_AnalyzeTakeLoudness2, "NF_AnalyzeTakeLoudness2"); });
    MediaItem_Take* take = is_bound && item ? call(GetActiveTake, item) : nullptr;
    double integrated, range, true_peak, true_peak_position, short_term, short_term_position, other,
        other_position;
    return take && NF_AnalyzeTakeLoudness2(take, false, &integrated, &range, &true_peak, &true_peak_position,
                                           &short_term, maximum ? maximum : &other, &short_term_position,
                                           position ? position : &other_position);
}

} // namespace

int GetMediaItemLoudnessMaxMomentary(MediaItem* item, double* maxMomentaryOut, double* maxMomentaryPosOut) {
    return measure("MK_GetMediaItemLoudnessMaxMomentary", item, maxMomentaryOut, maxMomentaryPosOut) ? 0 : 1;
}

int GetMediaIdLoudnessMaxMomentary(ReaProject* projID, int itemID, double* maxMomentaryOut,
                                   double* maxMomentaryPosOut) {
    MediaItem* item = GetMediaItemSelect(projID, itemID, 0);
    return item ? GetMediaItemLoudnessMaxMomentary(item, maxMomentaryOut, maxMomentaryPosOut) : 1;
}

int GetSelectedMediaIdLoudnessMaxMomentary(ReaProject* projID, int selectItemID, double* maxMomentaryOut,
                                           double* maxMomentaryPosOut) {
    MediaItem* item = GetMediaItemSelect(projID, selectItemID, 1);
    return item ? GetMediaItemLoudnessMaxMomentary(item, maxMomentaryOut, maxMomentaryPosOut) : 1;
}

bool SetMediaItemLoudnessMaxMomentary(MediaItem* item, double setMaxMomentary, double* maxMomentaryOut) {
    double measured = 0.0;
    if (!measure("MK_SetMediaItemLoudnessMaxMomentary", item, &measured, maxMomentaryOut))
        return false;
    const double volume_db =
        mk_utility::to_dB(call(GetMediaItemInfo_Value, item, "D_VOL")) + (setMaxMomentary - measured);
    const double volume = std::exp(volume_db * mk_utility::nepers_per_decibel);
    if (!std::isfinite(volume))
        return false;
    const bool is_set = call(SetMediaItemInfo_Value, item, "D_VOL", volume);
    call(UpdateArrange);
    return is_set;
}

bool SetMediaIdLoudnessMaxMomentary(ReaProject* projID, int itemID, double setMaxMomentary,
                                    double* maxMomentaryOut) {
    MediaItem* item = GetMediaItemSelect(projID, itemID, 0);
    return item && SetMediaItemLoudnessMaxMomentary(item, setMaxMomentary, maxMomentaryOut);
}

bool SetSelectedMediaIdLoudnessMaxMomentary(ReaProject* projID, int selectItemID, double setMaxMomentary,
                                            double* maxMomentaryOut) {
    MediaItem* item = GetMediaItemSelect(projID, selectItemID, 1);
    return item && SetMediaItemLoudnessMaxMomentary(item, setMaxMomentary, maxMomentaryOut);
}

} // namespace mk_api::loudness
