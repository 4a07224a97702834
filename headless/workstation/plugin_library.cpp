#include "headless/workstation/plugin_library.hpp"

#include "common/plugin_abi.hpp"
#include "headless/workstation/workstation.hpp"

#include <dlfcn.h>
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

// The loader's message, without the path that it usually begins with.
std::string loader_error(const std::filesystem::path& file) {
    const char* reason = dlerror();
    const std::string text = reason ? reason : "cannot be loaded";
    const std::string prefix = file.string() + ": ";
    return text.starts_with(prefix) ? text.substr(prefix.size()) : text;
}

} // namespace

Result<PluginLibrary> PluginLibrary::load(const std::filesystem::path& file, Workstation&) {
    // A name without a slash would be searched for in the system's library folders.
    const std::filesystem::path absolute = std::filesystem::absolute(file);
    void* library = dlopen(absolute.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library)
        return failure_of(file, loader_error(absolute));
    auto* entry = reinterpret_cast<PluginEntry*>(dlsym(library, plugin_entry_name));
    auto record = std::make_unique<reaper_plugin_info_t>(
        reaper_plugin_info_t{plugin_interface_version, nullptr, register_name, get_function});
    if (!entry || entry(library, record.get()) != 1) {
        dlclose(library);
        return failure_of(file, entry ? "declined to be loaded" : "has no ReaperPluginEntry");
    }
    return PluginLibrary(library, std::move(record));
}

PluginLibrary::PluginLibrary(void* library, std::unique_ptr<reaper_plugin_info_t> record)
    : library_(library), record_(std::move(record)) {}

PluginLibrary::PluginLibrary(PluginLibrary&& other) noexcept
    : library_(std::exchange(other.library_, nullptr)), record_(std::move(other.record_)) {}

void* PluginLibrary::symbol(const char* name) const { return library_ ? dlsym(library_, name) : nullptr; }

PluginLibrary::~PluginLibrary() {
    if (!library_)
        return;
    if (auto* entry = reinterpret_cast<PluginEntry*>(dlsym(library_, plugin_entry_name)))
        entry(library_, nullptr);
    dlclose(library_);
}

} // namespace headless::workstation
