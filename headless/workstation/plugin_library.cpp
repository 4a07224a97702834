#include "headless/workstation/plugin_library.hpp"

#include "common/paths.hpp"
#include "common/plugin_abi.hpp"
#include "headless/system/library.hpp"
#include "headless/workstation/workstation.hpp"

#include <string>
#include <utility>

namespace headless::workstation {
namespace {

/// The version of the plug-in interface, which plug-ins compare with their own.
constexpr int plugin_interface_version = 0x20E;

using PluginEntry = int(void* instance, reaper_plugin_info_t* record);
constexpr const char* plugin_entry_name = "ReaperPluginEntry";

int register_name(const char* name, void* value) {
    Workstation* workstation = Workstation::current();
    auto* function =
        workstation ? workstation->function_as<int(const char*, void*)>("plugin_register") : nullptr;
    return function ? function(name, value) : 0;
}

void* get_function(const char* name) {
    const Workstation* workstation = Workstation::current();
    return workstation ? workstation->function(name) : nullptr;
}

tl::unexpected<Failure> failure_of(const std::filesystem::path& file, const std::string& reason) {
    return tl::unexpected(path_failure(file, reason));
}

} // namespace

Result<PluginLibrary> PluginLibrary::load(const std::filesystem::path& file, Workstation&) {
    std::string reason;
    void* library = system::load_library(paths::absolute(file), reason);
    if (!library)
        return failure_of(file, reason);
    auto* entry = reinterpret_cast<PluginEntry*>(system::symbol_of(library, plugin_entry_name));
    auto record = std::make_unique<reaper_plugin_info_t>(
        reaper_plugin_info_t{plugin_interface_version, nullptr, register_name, get_function});
    if (!entry || entry(library, record.get()) != 1) {
        system::unload_library(library);
        return failure_of(file, entry ? "declined to be loaded" : "has no ReaperPluginEntry");
    }
    return PluginLibrary(library, std::move(record));
}

PluginLibrary::PluginLibrary(void* library, std::unique_ptr<reaper_plugin_info_t> record)
    : library_(library), record_(std::move(record)) {}

PluginLibrary::PluginLibrary(PluginLibrary&& other) noexcept
    : library_(std::exchange(other.library_, nullptr)), record_(std::move(other.record_)) {}

void* PluginLibrary::symbol(const char* name) const {
    return library_ ? system::symbol_of(library_, name) : nullptr;
}

PluginLibrary::~PluginLibrary() {
    if (!library_)
        return;
    if (auto* entry = reinterpret_cast<PluginEntry*>(system::symbol_of(library_, plugin_entry_name)))
        entry(library_, nullptr);
    system::unload_library(library_);
}

} // namespace headless::workstation
