// Handles from scripts, distinguished by the type that a definition text names.

#include "headless/workstation/envelope_objects.hpp"
#include "headless/workstation/source_handles.hpp"
#include "headless/workstation/workstation.hpp"

namespace headless::workstation {
namespace {

template <class Handle>
bool is_alive(const Workstation& workstation, void* handle) {
    return workstation.live(static_cast<Handle*>(handle)) != nullptr;
}

struct HandleType {
    std::string_view word;
    bool (*is_live)(const Workstation&, void*);
};

constexpr HandleType handle_types[] = {
    {"ReaProject*", is_alive<ReaProject>},       {"MediaTrack*", is_alive<MediaTrack>},
    {"MediaItem*", is_alive<MediaItem>},         {"MediaItem_Take*", is_alive<MediaItem_Take>},
    {"TrackEnvelope*", is_alive<TrackEnvelope>}, {"BR_Envelope*", is_alive<BR_Envelope>},
    {"PCM_source*", is_alive<PCM_source>},
};

} // namespace

EnvelopeObject* Workstation::live(BR_Envelope* handle) const { return envelope_objects_->find(handle); }

project::Source* Workstation::live(PCM_source* handle) const { return source_handles_->live(handle); }

std::optional<bool> Workstation::is_live(std::string_view type, void* handle) const {
    for (const HandleType& known : handle_types)
        if (known.word == type)
            return known.is_live(*this, handle);
    return std::nullopt;
}

} // namespace headless::workstation
