#pragma once
// One import: a workstation with the plug-in loaded, and a project that is new or continued.

#include "headless/base/failure.hpp"
#include "headless/cli/import_plan.hpp"
#include "headless/host/plugin_library.hpp"
#include "headless/host/workstation.hpp"
#include "headless/output/output_guard.hpp"
#include "headless/report/import_report.hpp"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace headless {

class ImportSession {
public:
    /// @param guard  says which files may be written; outlives the session
    /// @returns a failure when the plug-in cannot be loaded or has no import to offer
    static Result<ImportSession> open(const std::filesystem::path& plugin, OutputGuard& guard);

    /// Begins a project that will lie at `file`; its renders go to "<stem>-takes" beside it.
    void begin_project(const std::filesystem::path& file);

    /// Goes on with the project in `file`. The guard protects what its items play.
    Result<void> continue_project(const std::filesystem::path& file);

    /// Where renders will go.
    std::filesystem::path render_folder() const { return workstation_->render_folder(); }

    /// Runs the plug-in's import. What cannot be done is among the failures of the report, and what was done
    /// before stays.
    /// @param begin_pair  called with the base file of every pair
    ImportReport run(const ImportOptions& options, const ImportPlan& plan,
                     std::function<void(const std::filesystem::path&)> begin_pair);

    /// @returns as save_project_as
    Result<std::vector<Failure>> save(const std::filesystem::path& file);

private:
    /// The plug-in's own operation, as it is compiled: lists and texts are the C++ library's.
    using ImportFunction = int(std::string, std::string, double, double, int, bool, bool, int,
                               const std::vector<std::string>&, std::vector<std::string>&);

    ImportSession(std::unique_ptr<Workstation> workstation, PluginLibrary plugin, ImportFunction* import,
                  OutputGuard& guard);

    std::string call_import(const ImportOptions& options, const ImportPlan& plan,
                            std::vector<std::string>& unmatched) const;
    std::vector<ImportedGroup> groups_of(const std::vector<std::string>& names,
                                         const std::vector<ImportedPair>& pairs) const;

    std::unique_ptr<Workstation> workstation_;
    PluginLibrary plugin_; // behind the workstation: leaves before it goes
    ImportFunction* import_;
    OutputGuard* guard_;
};

} // namespace headless
