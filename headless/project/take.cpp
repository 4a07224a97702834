#include "headless/project/take.hpp"

#include "headless/project/project.hpp"

#include <utility>

namespace headless::project {

double Source::length_seconds() const {
    return sample_rate > 0 ? static_cast<double>(frames) / sample_rate : 0.0;
}

const Source& Source::root() const {
    const Source* source = this;
    while (source->inner)
        source = source->inner.get();
    return *source;
}

bool Source::operator==(const Source& other) const {
    const bool plays_the_same = inner && other.inner ? *inner == *other.inner : inner == other.inner;
    return plays_the_same && file == other.file && type == other.type && sample_rate == other.sample_rate &&
           channels == other.channels && frames == other.frames && offline == other.offline &&
           section == other.section;
}

Take::Take(Item& item, Source take_source, std::string take_name)
    : source(std::move(take_source)), name(std::move(take_name)), item_(item) {
    item.track().project().live_objects_.add(this);
}

Take::~Take() {
    LiveObjects& live_objects = item_.track().project().live_objects_;
    for (const auto& envelope : envelopes_)
        live_objects.remove(envelope.get());
    live_objects.remove(this);
}

Envelope* Take::envelope(std::string_view wanted) const {
    for (const auto& envelope : envelopes_)
        if (envelope->name() == wanted)
            return envelope.get();
    return nullptr;
}

Envelope& Take::add_envelope(std::string envelope_name) {
    envelopes_.push_back(
        std::make_unique<Envelope>(std::move(envelope_name), item_.track().project().next_serial()));
    item_.track().project().live_objects_.add(envelopes_.back().get());
    return *envelopes_.back();
}

} // namespace headless::project
