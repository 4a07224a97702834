#pragma once
// One run of rides: a workstation with the plug-in loaded, a project with one track, and a folder for
// renders.

#include "headless/base/failure.hpp"
#include "headless/jobs/earlier_project.hpp"
#include "headless/jobs/output_guard.hpp"
#include "headless/jobs/project_output.hpp"
#include "headless/report/ride_report.hpp"
#include "headless/workstation/plugin_library.hpp"
#include "headless/workstation/workstation.hpp"

#include <filesystem>
#include <memory>
#include <span>
#include <vector>

namespace headless::jobs {

/// As losses_of, for the project of a ride that has not begun.
/// @param folder  for the renders
std::vector<Failure> losses_of_ride(std::span<const std::filesystem::path> recordings,
                                    const std::filesystem::path& folder,
                                    const std::filesystem::path& project_file);

class RideSession {
public:
    /// @param guard  decides which files may be written; must outlive the session
    /// @returns a failure if the plug-in cannot be loaded or offers no ride
    static Result<RideSession> open(const std::filesystem::path& plugin, OutputGuard& guard);

    /// Renders go to this existing folder from now on.
    void set_folder(const std::filesystem::path& folder);

    /// Inserts the recording on the track, 1 s after the previous one, and has the plug-in ride it. A
    /// recording that fails is not in the project afterwards.
    /// @param ratio  0 (lightest) .. 4, as the plug-in takes it
    Result<report::RideReport> ride(const std::filesystem::path& file, int ratio);

    /// Saves the project with everything that was ridden, as save_project_over does.
    Result<SavedProject> save(const std::filesystem::path& project_file, const EarlierProject& earlier,
                              Losses losses);

private:
    using RideFunction = bool(MediaItem*, int);

    RideSession(std::unique_ptr<workstation::Workstation> workstation, workstation::PluginLibrary plugin,
                RideFunction* ride_function, OutputGuard& guard);

    std::filesystem::path target_of(const project::Take& take) const;
    Result<project::Item*> insert(const std::filesystem::path& file);
    Result<report::RideReport> ride_in_memory(project::Item& item, const std::filesystem::path& file,
                                              int ratio);
    void remove_render(const project::Item& item) const;
    Result<report::RideReport> ride_item(project::Item& item, const std::filesystem::path& file, int ratio);

    std::unique_ptr<workstation::Workstation> workstation_;
    workstation::PluginLibrary plugin_; // after the workstation: destroyed before it
    RideFunction* ride_;
    project::Track* track_;
    OutputGuard* guard_;
    std::filesystem::path folder_;
};

} // namespace headless::jobs
