#include "dialogue/placement.hpp"

#include "api/media/insertion.hpp"
#include "api/media/loudness.hpp"
#include "api/media/metadata.hpp"
#include "ride/requirements.hpp"
#include "ride/ride.hpp"
#include "sws/dependency.hpp"

#include <cmath>

namespace mk_api::LINGOMAT {

void PairPlacer::place(const mk_object::LINGOMAT_Tracks& group) {
    for (const auto& [subject_file, base_file] : group.pairs) {
        MediaItem* base = insert(group.BaseTrack->value, base_file);
        MediaItem* subject = insert(group.UniqueTrack->value, subject_file);
        if (options_.match_volume && base && subject)
            match(base, subject);
    }
}

MediaItem* PairPlacer::insert(MediaTrack* track, const std::string& file) {
    MediaItem* item = mediaItem::InsertMediaTrackItemSecond(track, file.c_str(), 0, position_seconds_);
    double length_seconds = 0.0;
    if (mediaItem::GetMediaItemLength(item, &length_seconds))
        position_seconds_ = position_seconds_ + length_seconds + options_.interval_seconds;
    return item;
}

void PairPlacer::match(MediaItem* base, MediaItem* subject) {
    double target = 0.0;
    double position = 0.0;
    const bool has_target = can_measure_ &&
                            loudness::GetMediaItemLoudnessMaxMomentary(base, &target, &position) == 0 &&
                            std::isfinite(target); // silence is not a usable target
    if (options_.ride)
        RIDESCRIBER::SetMediaItemRIDESCRIBER(subject, options_.ratio_type);
    if (has_target)
        loudness::SetMediaItemLoudnessMaxMomentary(subject, target, &position);
    // One message about a missing extension is enough.
    can_measure_ = can_measure_ && dependency_manager::look_up("NF_AnalyzeTakeLoudness2") != nullptr;
    options_.ride = options_.ride && RIDESCRIBER::can_ride();
}

} // namespace mk_api::LINGOMAT
