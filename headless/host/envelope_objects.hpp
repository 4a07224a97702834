#pragma once
// Envelopes taken out for editing: a plug-in changes a copy point by point and writes it back, or drops it.

#include "headless/base/gap_list.hpp"
#include "headless/host/handles.hpp"
#include "headless/host/workstation.hpp"

#include <memory>
#include <unordered_map>

namespace headless {

/// A copy of an envelope under edit. Points are addressed by index and stay where they are until sorted.
struct EnvelopeObject {
    Envelope* target;    ///< may be gone by the time of writing back
    double zero_seconds; ///< what positions count from, seen from the take's start
    EnvelopeProperties properties;
    GapList<EnvelopePoint> points;
    EnvelopeEdit edit;
};

class EnvelopeObjects {
public:
    /// @param zero_seconds position 0 of the points that are read and set, in seconds from the take's start
    BR_Envelope* take_out(Envelope& envelope, double zero_seconds);

    /// Null for a null, released or foreign handle.
    EnvelopeObject* find(BR_Envelope* handle) const;

    void release(BR_Envelope* handle) { objects_.erase(handle); }

private:
    std::unordered_map<BR_Envelope*, std::unique_ptr<EnvelopeObject>> objects_;
};

} // namespace headless
