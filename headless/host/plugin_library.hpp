#pragma once
// A plug-in's library, loaded and entered; leaving it is the destructor's work.

#include "headless/base/failure.hpp"

#include <filesystem>
#include <memory>

namespace headless {

class Workstation;
struct PluginRecord;

/// Must go before the workstation that it was loaded into.
class PluginLibrary {
public:
    /// Opens the library and calls its ReaperPluginEntry with this host's record. The workstation must be the
    /// living one.
    /// @returns a failure that names the path: not there, not loadable, no entry, or the entry declined
    static Result<PluginLibrary> load(const std::filesystem::path& file, Workstation& workstation);

    /// Enters the library once more with no record, then closes it.
    ~PluginLibrary();
    PluginLibrary(PluginLibrary&&) noexcept;
    PluginLibrary& operator=(PluginLibrary&&) = delete;

    /// A symbol that the library shows, by its linker's name; null when there is none. Not to be used once
    /// this object is gone.
    void* symbol(const char* name) const;

private:
    PluginLibrary(void* library, std::unique_ptr<PluginRecord> record);

    void* library_ = nullptr;
    std::unique_ptr<PluginRecord> record_; // the plug-in keeps its address
};

} // namespace headless
