// Handles from scripts, distinguished by the type that a definition text names.

#include "headless/workstation/envelope_objects.hpp"
#include "headless/workstation/sample_reader.hpp"
#include "headless/workstation/source_handles.hpp"
#include "headless/workstation/workstation.hpp"

namespace headless::workstation {
namespace {

template <class Handle>
bool is_alive(const Workstation& workstation, void* handle) {
    return workstation.live(static_cast<Handle*>(handle)) != nullptr;
}

struct HandleType {
    std::string_view name;
    bool (*is_live)(const Workstation&, void*);
};

constexpr HandleType handle_types[] = {
#define HANDLE_TYPE(type, python_class) {#type "*", is_alive<type>},
#include "common/handle_types.inc"
#undef HANDLE_TYPE
};

} // namespace

EnvelopeObject* Workstation::live(BR_Envelope* handle) const { return envelope_objects_->find(handle); }

project::Source* Workstation::live(PCM_source* handle) const { return source_handles_->live(handle); }

SampleReader* Workstation::live(AudioAccessor* handle) const { return sample_readers_->find(handle); }

std::optional<bool> Workstation::is_live(std::string_view type, void* handle) const {
    for (const HandleType& handle_type : handle_types)
        if (handle_type.name == type)
            return handle_type.is_live(*this, handle);
    return std::nullopt;
}

} // namespace headless::workstation
