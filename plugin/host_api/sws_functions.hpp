#pragma once
// The functions of the SWS extension that this library looks up, with the prototypes that the extension
// publishes.

#include "host_api/host_types.hpp"

namespace sws {

using EnvAlloc = BR_Envelope*(TrackEnvelope* envelope, bool takeEnvelopesUseProjectTime);
using EnvFree = bool(BR_Envelope* envelope, bool commit);
using EnvSortPoints = void(BR_Envelope* envelope);
using EnvCountPoints = int(BR_Envelope* envelope);
using EnvDeletePoint = bool(BR_Envelope* envelope, int id);
using EnvGetPoint = bool(BR_Envelope* envelope, int id, double* position, double* value, int* shape,
                         bool* selected, double* bezier);
using EnvSetPoint = bool(BR_Envelope* envelope, int id, double position, double value, int shape,
                         bool selected, double bezier);
using EnvGetProperties = void(BR_Envelope* envelope, bool* active, bool* visible, bool* armed, bool* inLane,
                              int* laneHeight, int* defaultShape, double* minValue, double* maxValue,
                              double* centerValue, int* type, bool* faderScaling,
                              int* automationItemsOptions);
using EnvSetProperties = void(BR_Envelope* envelope, bool active, bool visible, bool armed, bool inLane,
                              int laneHeight, int defaultShape, bool faderScaling,
                              int* automationItemsOptions);
using AnalyzeTakeLoudness2 = bool(MediaItem_Take* take, bool analyzeTruePeak, double* lufsIntegrated,
                                  double* range, double* truePeak, double* truePeakPos, double* shortTermMax,
                                  double* momentaryMax, double* shortTermMaxPos, double* momentaryMaxPos);

/// Makes an envelope active and visible, or inactive and hidden. All other properties stay as they are.
inline void set_in_use(EnvGetProperties* get_properties, EnvSetProperties* set_properties,
                       BR_Envelope* envelope, bool in_use) {
    bool active = false;
    bool visible = false;
    bool armed = false;
    bool in_lane = false;
    int lane_height = 0;
    int default_shape = 0;
    bool fader_scaling = false;
    int automation_items_options = 0;
    get_properties(envelope, &active, &visible, &armed, &in_lane, &lane_height, &default_shape, nullptr,
                   nullptr, nullptr, nullptr, &fader_scaling, &automation_items_options);
    set_properties(envelope, in_use, in_use, armed, in_lane, lane_height, default_shape, fader_scaling,
                   &automation_items_options);
}

} // namespace sws
