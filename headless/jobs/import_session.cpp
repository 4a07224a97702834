#include "headless/jobs/import_session.hpp"

#include "headless/audio/audio_cache.hpp"
#include "headless/base/interruption.hpp"
#include "headless/functions/all_functions.hpp"
#include "headless/jobs/pair_recorder.hpp"
#include "headless/jobs/project_output.hpp"
#include "headless/rpp/rpp.hpp"

#include <algorithm>
#include <exception>
#include <map>
#include <set>
#include <system_error>
#include <utility>

namespace headless::jobs {
namespace {

namespace fs = std::filesystem;

/// mk_api::LINGOMAT::LINGOMAT_InsertMediaItems. The row of that name is for reading only.
constexpr const char* import_symbol = "_ZN6mk_api8LINGOMAT25LINGOMAT_InsertMediaItemsENSt7__cxx1112basic_"
                                      "stringIcSt11char_traitsIcESaIcEEES6_ddibbiRKSt6"
                                      "vectorIS6_SaIS6_EERS9_";

constexpr int coarse_hop_milliseconds = 400;

bool has_child(const project::Project& project, const project::Track& parent, std::string_view name) {
    return std::ranges::any_of(project.tracks(), [&](const auto& track) {
        return track->parent() == &parent && track->name == name;
    });
}

} // namespace

ImportSession::ImportSession(std::unique_ptr<workstation::Workstation> workstation,
                             workstation::PluginLibrary plugin, ImportFunction* import, OutputGuard& guard)
    : workstation_(std::move(workstation)), plugin_(std::move(plugin)), import_(import), guard_(&guard) {
    workstation_->judge_existing_render = [&guard](const fs::path& target) {
        return guard.judge_render(target);
    };
    workstation_->audio().is_interrupted = [] { return interruption::signal_number() != 0; };
}

Result<ImportSession> ImportSession::open(const fs::path& plugin, OutputGuard& guard) {
    auto workstation = std::make_unique<workstation::Workstation>(functions::all_functions());
    auto library = workstation::PluginLibrary::load(plugin, *workstation);
    if (!library)
        return tl::unexpected(library.error());
    auto* import = reinterpret_cast<ImportFunction*>(library->symbol(import_symbol));
    if (import == nullptr)
        return tl::unexpected(Failure{plugin.string() + ": offers no dialogue import"});
    return ImportSession(std::move(workstation), std::move(*library), import, guard);
}

void ImportSession::begin_project(const fs::path& file) {
    project::Project& project = workstation_->project();
    project.file = true_path(file);
    project.record_path = project.file.stem().concat("-takes");
}

Result<void> ImportSession::continue_project(const fs::path& file) {
    return rpp::load_project(workstation_->project(), file).map([&] {
        workstation_->project().file = true_path(file);
        guard_->protect(audio_of(workstation_->project()));
    });
}

report::ImportReport ImportSession::run(const ImportOptions& options, const ImportPlan& plan,
                                        std::function<void(const fs::path&)> begin_pair) {
    workstation_->loudness_hop_milliseconds =
        options.reads_coarsely ? coarse_hop_milliseconds : workstation_->loudness_hop_milliseconds;
    const bool match = options.match && !options.is_dry_run;
    PairRecorder recorder(*workstation_, *guard_, {match, match && options.ride, std::move(begin_pair)});
    std::vector<std::string> unmatched;
    const std::string trouble = call_import(options, plan, unmatched);
    recorder.finish();
    renders_ = recorder.renders();
    std::ranges::sort(unmatched);

    report::ImportReport report{.subject_folder = plan.subject,
                                .base_folder = plan.base,
                                .is_dry_run = options.is_dry_run,
                                .is_matched = match,
                                .groups = groups_of(options.groups, recorder.pairs()),
                                .pairs = recorder.pairs(),
                                .unmatched = {unmatched.begin(), unmatched.end()},
                                .survey = plan.survey};
    for (const Failure& failure : recorder.failures())
        report.failures.push_back(failure.message);
    if (!trouble.empty())
        report.failures.push_back(plan.subject.string() + ": the import ended early: " + trouble);
    return report;
}

void ImportSession::remove_renders() const {
    for (const fs::path& render : renders_) {
        std::error_code gone;
        fs::remove(render, gone);
    }
}

/// @returns why it ended early; usually empty
std::string ImportSession::call_import(const ImportOptions& options, const ImportPlan& plan,
                                       std::vector<std::string>& unmatched) const {
    const bool match = options.match && !options.is_dry_run;
    try {
        const int code = import_(plan.subject.string(), plan.base.string(), options.start_seconds,
                                 options.interval_seconds, options.counts_from_end ? 1 : 0, match,
                                 match && options.ride, options.ratio, options.groups, unmatched);
        return code == 0 ? "" : "code " + std::to_string(code);
    } catch (const std::exception& error) {
        return error.what();
    }
}

/// The groups that are in the project now, with or without pairs.
std::vector<report::ImportedGroup>
ImportSession::groups_of(const std::vector<std::string>& names,
                         const std::vector<report::ImportedPair>& pairs) const {
    std::map<std::string, std::size_t> counts;
    for (const report::ImportedPair& pair : pairs)
        ++counts[pair.group];
    std::set<std::string> wanted(names.begin(), names.end());
    wanted.insert("None");
    std::vector<report::ImportedGroup> groups;
    const project::Project& project = workstation_->project();
    for (const auto& track : project.tracks()) {
        const bool is_group = track->depth() == 0 && has_child(project, *track, "unique");
        if (is_group && wanted.erase(track->name) != 0)
            groups.push_back({track->name, counts[track->name]});
    }
    return groups;
}

Result<std::vector<Failure>> ImportSession::save(const fs::path& file, const EarlierProject& earlier) {
    return save_project_over(earlier, *workstation_, file);
}

} // namespace headless::jobs
