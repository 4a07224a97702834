#include "api/media/peaks.hpp"

#include "api/media/lookup.hpp"
#include "api/media/peak_levels.hpp"

namespace mk_api::mediaItem {

bool GetMediaItemPeakList(MediaItem* item, std::vector<mk_object::mk_Peak>& peaks) {
    std::vector<PeakLevel> levels;
    if (!read_peak_levels(item, levels))
        return false;
    const auto block = std::make_shared<mk_object::Cells<mk_object::mk_Peak>[]>(levels.size());
    peaks.reserve(peaks.size() + levels.size());
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const mk_object::mk_Peak& peak = peaks.emplace_back(block, block[static_cast<std::ptrdiff_t>(i)]);
        peak.Time->set(peak_time(i));
        peak.MaxPeak->set(levels[i].max_db);
        peak.MinPeak->set(levels[i].min_db);
    }
    return true;
}

} // namespace mk_api::mediaItem

namespace MK_FELSPAR {

bool GetMediaItemPeakList(MediaItem* item, std::vector<mk_object::mk_Peak>& peaks) {
    return mk_api::mediaItem::GetMediaItemPeakList(item, peaks);
}

bool GetMediaIdPeakList(ReaProject* project, int index, std::vector<mk_object::mk_Peak>& peaks) {
    return GetMediaItemPeakList(mk_api::mediaItem::GetMediaItemSelect(project, index, 0), peaks);
}

bool GetSelectedMediaIdPeakList(ReaProject* project, int index, std::vector<mk_object::mk_Peak>& peaks) {
    return GetMediaItemPeakList(mk_api::mediaItem::GetMediaItemSelect(project, index, 1), peaks);
}

} // namespace MK_FELSPAR
