#pragma once
// A plug-in's library. Loading calls its entry function; the destructor unloads it.

#include "headless/base/failure.hpp"

#include <filesystem>
#include <memory>

struct reaper_plugin_info_t;

namespace headless::workstation {

class Workstation;

/// Must be destroyed before the workstation that it was loaded into.
class PluginLibrary {
public:
    /// Opens the library and calls its ReaperPluginEntry with this host's record. The workstation must be the
    /// current one.
    /// @returns a failure that names the path: the file is missing, cannot be loaded or has no entry, or the
    /// entry declined
    static Result<PluginLibrary> load(const std::filesystem::path& file, Workstation& workstation);

    /// Calls the entry function once more with no record, then closes the library.
    ~PluginLibrary();
    PluginLibrary(PluginLibrary&&) noexcept;
    PluginLibrary& operator=(PluginLibrary&&) = delete;

    /// The address of an exported symbol, by its linker name; null if there is none. Must not be used after
    /// this object is destroyed.
    void* symbol(const char* name) const;

private:
    PluginLibrary(void* library, std::unique_ptr<reaper_plugin_info_t> record);

    void* library_ = nullptr;
    std::unique_ptr<reaper_plugin_info_t> record_; // at a fixed address, which the plug-in keeps
};

} // namespace headless::workstation
