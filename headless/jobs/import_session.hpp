#pragma once
// One import: a workstation with the plug-in loaded, and a project that is new or continued.

#include "headless/base/failure.hpp"
#include "headless/jobs/earlier_project.hpp"
#include "headless/jobs/import_plan.hpp"
#include "headless/jobs/output_guard.hpp"
#include "headless/jobs/project_output.hpp"
#include "headless/report/import_report.hpp"
#include "headless/workstation/plugin_library.hpp"
#include "headless/workstation/workstation.hpp"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace headless::jobs {

class ImportSession {
public:
    /// @param guard  decides which files may be written; must outlive the session
    /// @returns a failure if the plug-in cannot be loaded or offers no import
    static Result<ImportSession> open(const std::filesystem::path& plugin, OutputGuard& guard);

    /// Begins a project that will be saved as `plan.project`, with its renders in "<stem>-takes" beside it,
    /// or continues the project `options.onto`. The guard protects the files that its items play.
    Result<void> open_project(const ImportOptions& options, const ImportPlan& plan);

    /// The folder for renders.
    std::filesystem::path render_folder() const { return workstation_->render_folder(); }

    /// Runs the plug-in's import. What fails is listed in the report's failures; what was done before the
    /// failure stays. The report's survey is left empty.
    /// @param begin_pair  called with the base file of every pair
    report::ImportReport run(const ImportOptions& options, const ImportPlan& plan,
                             std::function<void(const std::filesystem::path&)> begin_pair);

    /// Removes the files that `run` rendered, after an abandoned import.
    void remove_renders() const;

    /// As losses_of, for a project that will be saved as `file`.
    std::vector<Failure> losses(const std::filesystem::path& file) const;

    /// As save_project_over.
    Result<SavedProject> save(const std::filesystem::path& file, const EarlierProject& earlier,
                              Losses losses);

private:
    ImportSession(std::unique_ptr<workstation::Workstation> workstation, workstation::PluginLibrary plugin,
                  OutputGuard& guard);

    std::vector<report::ImportedGroup> groups_of(const std::vector<std::string>& names,
                                                 const std::vector<report::ImportedPair>& pairs) const;

    std::unique_ptr<workstation::Workstation> workstation_;
    workstation::PluginLibrary plugin_; // after the workstation: destroyed before it
    OutputGuard* guard_;
    std::vector<std::filesystem::path> renders_;
};

} // namespace headless::jobs
