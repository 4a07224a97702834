#include "headless/workstation/envelope_objects.hpp"

#include <utility>

namespace headless::workstation {

EnvelopeObject& EnvelopeObjects::take_out(project::Envelope& envelope, double zero_seconds,
                                          double play_rate) {
    auto object = std::make_unique<EnvelopeObject>(EnvelopeObject{
        &envelope, zero_seconds, play_rate, envelope.properties, EnvelopePoints(envelope.points()), {}});
    EnvelopeObject& added = *object;
    objects_.emplace(&added, std::move(object));
    return added;
}

EnvelopeObject* EnvelopeObjects::find(BR_Envelope* handle) const {
    const auto found = objects_.find(handle);
    return found == objects_.end() ? nullptr : found->second.get();
}

} // namespace headless::workstation
