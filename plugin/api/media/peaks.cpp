#include "api/media/peaks.hpp"

#include "api/media/on_item.hpp"
#include "api/media/peak_levels.hpp"

namespace mk_api::mediaItem {

bool GetMediaItemPeakList(MediaItem* item, std::vector<mk_object::mk_Peak>& peaks) {
    std::vector<PeakLevel> levels;
    if (!read_peak_levels(item, levels))
        return false;
    constexpr std::size_t fields = std::tuple_size_v<decltype(mk_object::mk_Peak::fields)>;
    const auto block = std::make_shared<mk_object::mk_LitsItem_inner<double>[]>(fields * levels.size());
    const std::shared_ptr<void> owner = block;
    peaks.reserve(peaks.size() + levels.size());
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const mk_object::mk_Peak& peak = peaks.emplace_back(owner, block.get() + fields * i);
        peak.Time->set(peak_time(i));
        peak.MaxPeak->set(levels[i].max_db);
        peak.MinPeak->set(levels[i].min_db);
    }
    return true;
}

} // namespace mk_api::mediaItem

namespace MK_FELSPAR {

using mk_api::Missing;
using mk_api::Scope;
using mk_api::mediaItem::on_item;

bool GetMediaItemPeakList(MediaItem* item, std::vector<mk_object::mk_Peak>& peaks) {
    return mk_api::mediaItem::GetMediaItemPeakList(item, peaks);
}

bool GetMediaIdPeakList(ReaProject* project, int index, std::vector<mk_object::mk_Peak>& peaks) {
    return on_item(Scope::all, Missing::fails, GetMediaItemPeakList, project, index, peaks);
}

bool GetSelectedMediaIdPeakList(ReaProject* project, int index, std::vector<mk_object::mk_Peak>& peaks) {
    return on_item(Scope::selected, Missing::fails, GetMediaItemPeakList, project, index, peaks);
}

} // namespace MK_FELSPAR
