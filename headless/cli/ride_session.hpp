#pragma once
// One run of rides: a workstation with the plug-in loaded, its project with one track, its folder of renders.

#include "headless/base/failure.hpp"
#include "headless/host/plugin_library.hpp"
#include "headless/host/workstation.hpp"
#include "headless/output/output_guard.hpp"
#include "headless/report/ride_report.hpp"

#include <filesystem>
#include <memory>
#include <vector>

namespace headless {

class RideSession {
public:
    /// @param guard  says which files may be written; outlives the session
    /// @returns a failure when the plug-in cannot be loaded or has no ride to offer
    static Result<RideSession> open(const std::filesystem::path& plugin, OutputGuard& guard);

    /// Renders go to this existing folder from now on.
    void set_folder(const std::filesystem::path& folder);

    /// Lays the recording on the track, 1 s behind the one before, and has the plug-in ride it. What fails is
    /// not in the project afterwards.
    /// @param ratio  0 (lightest) .. 4, as the plug-in takes it
    Result<RideReport> ride(const std::filesystem::path& file, int ratio);

    /// Writes the project of all that was ridden.
    /// @returns as save_project_as
    Result<std::vector<Failure>> save(const std::filesystem::path& project_file);

private:
    using RideFunction = bool(MediaItem*, int);

    RideSession(std::unique_ptr<Workstation> workstation, PluginLibrary plugin, RideFunction* ride_function,
                OutputGuard& guard);

    std::filesystem::path target_of(const Take& take) const;
    Result<RideReport> ride_item(Item& item, const std::filesystem::path& file, int ratio);

    std::unique_ptr<Workstation> workstation_;
    PluginLibrary plugin_; // behind the workstation: leaves before it goes
    RideFunction* ride_;
    Track* track_;
    OutputGuard* guard_;
    std::filesystem::path folder_;
};

} // namespace headless
