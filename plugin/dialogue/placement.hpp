#pragma once
// Places pairs of lines on the timeline, one after the other, and adjusts each subject line to the level of
// its base line.

#include "object/records.hpp"

#include <string>

namespace mk_api::LINGOMAT {

struct PlacementOptions {
    double interval_seconds = 0.0; ///< gap after every item
    bool match_volume = false;     ///< sets the subject item to the base item's momentary maximum
    bool ride = false;             ///< rides the subject item first; only with `match_volume`
    int ratio_type = 0;            ///< of the ride
};

/// Places pairs along one running position.
class PairPlacer {
public:
    PairPlacer(double start_seconds, const PlacementOptions& options)
        : position_seconds_(start_seconds), options_(options) {}

    /// Places the group's pairs on its tracks, in the byte order of the subject paths.
    void place(const mk_object::LINGOMAT_Tracks& group);

private:
    /// Returns null if the host rejects the file, which then takes no time on the timeline.
    MediaItem* insert(MediaTrack* track, const std::string& file);
    void match(MediaItem* base, MediaItem* subject);

    double position_seconds_;
    PlacementOptions options_;
    bool can_measure_ = true;
};

} // namespace mk_api::LINGOMAT
