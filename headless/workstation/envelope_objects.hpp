#pragma once
// Copies of envelopes for editing: a plug-in changes a copy point by point and writes it back, or discards
// it.

#include "common/plugin_abi.hpp"
#include "headless/base/gap_buffer.hpp"
#include "headless/workstation/workstation.hpp"

#include <deque>
#include <memory>
#include <unordered_map>

namespace headless::workstation {

/// A volume ride of a day has millions of points.
using EnvelopePoints = GapBuffer<project::EnvelopePoint, std::deque<project::EnvelopePoint>>;

/// A copy of an envelope being edited. Points are addressed by index and keep their places until sorted.
struct EnvelopeObject {
    project::Envelope* target; ///< may no longer exist at write-back
    double zero_seconds;       ///< zero of the positions, relative to the item's start
    double play_rate;          ///< of the take: its envelopes run in the time of the source
    project::EnvelopeProperties properties;
    EnvelopePoints points;
    EnvelopeEdit edit;
};

class EnvelopeObjects {
public:
    /// @param zero_seconds position 0 of the points that are read and set, in seconds from the item's start
    /// @param play_rate    of the envelope's take, otherwise 1
    EnvelopeObject& take_out(project::Envelope& envelope, double zero_seconds, double play_rate);

    /// Null for a null, released or foreign handle.
    EnvelopeObject* find(BR_Envelope* handle) const;

    void release(const EnvelopeObject& object) { objects_.erase(&object); }

private:
    std::unordered_map<const void*, std::unique_ptr<EnvelopeObject>> objects_; // by address
};

} // namespace headless::workstation
