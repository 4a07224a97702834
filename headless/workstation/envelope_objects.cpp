#include "headless/workstation/envelope_objects.hpp"

#include <utility>

namespace headless::workstation {

BR_Envelope* EnvelopeObjects::take_out(project::Envelope& envelope, double zero_seconds) {
    auto object = std::make_unique<EnvelopeObject>(
        EnvelopeObject{&envelope, zero_seconds, envelope.properties, EnvelopePoints(envelope.points()), {}});
    auto* handle = reinterpret_cast<BR_Envelope*>(object.get());
    objects_.emplace(handle, std::move(object));
    return handle;
}

EnvelopeObject* EnvelopeObjects::find(BR_Envelope* handle) const {
    const auto found = objects_.find(handle);
    return found == objects_.end() ? nullptr : found->second.get();
}

} // namespace headless::workstation
