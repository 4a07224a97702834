#include "headless/workstation/workstation.hpp"

#include "common/paths.hpp"
#include "headless/audio/audio_cache.hpp"
#include "headless/audio/loudness_cache.hpp"
#include "headless/workstation/envelope_objects.hpp"
#include "headless/workstation/host_function.hpp"
#include "headless/workstation/item_clipboard.hpp"
#include "headless/workstation/sample_reader.hpp"
#include "headless/workstation/source_handles.hpp"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

namespace headless::workstation {
namespace {

Workstation* living_workstation = nullptr;

template <class T>
T* alive(const project::Project& project, void* address) {
    T* object = static_cast<T*>(address);
    return project.live_objects().contains(object) ? object : nullptr;
}

} // namespace

Workstation::Workstation(std::span<const HostFunction> functions)
    : project_(std::make_unique<project::Project>()), audio_(std::make_unique<audio::AudioCache>()),
      loudness_(std::make_unique<audio::LoudnessCache>(*audio_)),
      envelope_objects_(std::make_unique<EnvelopeObjects>()),
      source_handles_(std::make_unique<SourceHandles>(project_->live_objects())),
      sample_readers_(std::make_unique<SampleReaders>()), item_clipboard_(std::make_unique<ItemClipboard>()) {
    if (living_workstation)
        throw std::logic_error("there is a workstation already");
    for (const HostFunction& function : functions)
        host_functions_.emplace(function.name, function.entry_points);
    living_workstation = this;
}

Workstation::~Workstation() { living_workstation = nullptr; }

Workstation* Workstation::current() { return living_workstation; }

void* Workstation::function(const char* name) const {
    if (!name)
        return nullptr;
    if (const auto found = host_functions_.find(name); found != host_functions_.end())
        return found->second.address;
    const auto registered = registered_.find(std::string("API_") + name);
    return registered == registered_.end() ? nullptr : registered->second;
}

std::vector<ScriptFunction> Workstation::script_functions() const {
    std::vector<ScriptFunction> functions;
    for (const auto& [name, function] : host_functions_)
        if (function.script_call)
            functions.push_back({name, function.definition.c_str(), function.script_call});
    constexpr std::string_view mark = "APIdef_";
    for (const auto& [key, definition] : registered_) {
        const std::string name = key.starts_with(mark) ? key.substr(mark.size()) : "";
        const auto call = registered_.find("APIvararg_" + name);
        if (!name.empty() && definition && call != registered_.end() && call->second) {
            functions.push_back({name, static_cast<const char*>(definition),
                                 reinterpret_cast<ScriptCall*>(call->second), true});
        }
    }
    std::ranges::sort(functions, {}, &ScriptFunction::name);
    return functions;
}

std::vector<Failure> Workstation::take_failures() {
    has_failed_call_ = false;
    return std::exchange(failures_, {});
}

std::filesystem::path Workstation::render_folder() const {
    namespace fs = std::filesystem;
    std::error_code error; // without a current folder the path stays relative
    const fs::path base = project_->file.empty() ? fs::current_path(error)
                                                 : paths::absolute(project_->file, error).parent_path();
    return project_->record_path.empty() ? base : paths::join(base, project_->record_path);
}

project::Project* Workstation::live(ReaProject* handle) const {
    return !handle || static_cast<void*>(handle) == project_.get() ? project_.get() : nullptr;
}

project::Track* Workstation::live(MediaTrack* handle) const {
    return alive<project::Track>(*project_, handle);
}
project::Item* Workstation::live(MediaItem* handle) const { return alive<project::Item>(*project_, handle); }
project::Take* Workstation::live(MediaItem_Take* handle) const {
    return alive<project::Take>(*project_, handle);
}
project::Envelope* Workstation::live(TrackEnvelope* handle) const {
    return alive<project::Envelope>(*project_, handle);
}

bool Workstation::register_name(const std::string& name, void* value) {
    constexpr std::array<std::string_view, 3> known{"API_", "APIdef_", "APIvararg_"};
    const bool unregisters = name.starts_with('-');
    const std::string kept = unregisters ? name.substr(1) : name;
    if (std::ranges::none_of(known, [&](std::string_view prefix) { return kept.starts_with(prefix); }))
        return false;
    if (unregisters)
        registered_.erase(kept);
    else
        registered_[kept] = value;
    return true;
}

void Workstation::report(Failure failure) { failures_.push_back(std::move(failure)); }

std::string_view Workstation::name_of(const void* entry_point) const {
    for (const auto& [name, function] : host_functions_)
        if (function.address == entry_point ||
            reinterpret_cast<const void*>(function.script_call) == entry_point)
            return name;
    return "of no name";
}

void Workstation::report_exception(const void* entry_point, const char* reason) noexcept {
    note_failed_call();
    try {
        report(Failure{"the host function " + std::string(name_of(entry_point)) + " failed: " + reason});
    } catch (...) { // no memory even for the report; the caller still gets its failure value
        return;
    }
}

void Workstation::report_once(Failure failure) {
    if (reported_once_.insert(failure.message).second)
        report(std::move(failure));
}

} // namespace headless::workstation
