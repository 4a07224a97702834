#include "headless/jobs/import_session.hpp"

#include "headless/audio/audio_cache.hpp"
#include "headless/base/interruption.hpp"
#include "headless/functions/all_functions.hpp"
#include "headless/jobs/dialogue_import.hpp"
#include "headless/jobs/pair_recorder.hpp"
#include "headless/rpp/rpp.hpp"

#include <algorithm>
#include <map>
#include <set>
#include <system_error>
#include <utility>

namespace headless::jobs {
namespace {

namespace fs = std::filesystem;

constexpr int coarse_hop_milliseconds = 400;
constexpr const char* early_end =
    "the import ended early: there is not enough memory, or a folder can no longer be read";

bool has_child(const project::Project& project, const project::Track& parent, std::string_view name) {
    return std::ranges::any_of(project.tracks(), [&](const auto& track) {
        return track->parent() == &parent && track->name == name;
    });
}

} // namespace

ImportSession::ImportSession(std::unique_ptr<workstation::Workstation> workstation,
                             workstation::PluginLibrary plugin, OutputGuard& guard)
    : workstation_(std::move(workstation)), plugin_(std::move(plugin)), guard_(&guard) {
    workstation_->judge_existing_render = [&guard](const fs::path& target) {
        return guard.judge_render(target);
    };
    workstation_->audio().is_interrupted = [] { return interruption::signal_number() != 0; };
}

Result<ImportSession> ImportSession::open(const fs::path& plugin, OutputGuard& guard) {
    auto workstation = std::make_unique<workstation::Workstation>(functions::all_functions());
    auto library = workstation::PluginLibrary::load(plugin, *workstation);
    if (library && !offers_dialogue_import(*library))
        return tl::unexpected(path_failure(plugin, "offers no dialogue import"));
    return std::move(library).map([&](workstation::PluginLibrary&& loaded) {
        return ImportSession(std::move(workstation), std::move(loaded), guard);
    });
}

Result<void> ImportSession::open_project(const ImportOptions& options, const ImportPlan& plan) {
    project::Project& project = workstation_->project();
    if (options.onto.empty()) {
        project.file = true_path(plan.project);
        project.record_path = project.file.stem().concat("-takes");
        return {};
    }
    return rpp::load_project(project, options.onto).map([&] {
        project.file = true_path(options.onto);
        guard_->protect(audio_of(project));
    });
}

report::ImportReport ImportSession::run(const ImportOptions& options, const ImportPlan& plan,
                                        std::function<void(const fs::path&)> begin_pair) {
    workstation_->loudness_hop_milliseconds =
        options.reads_coarsely ? coarse_hop_milliseconds : workstation_->loudness_hop_milliseconds;
    const bool match = options.match && !options.is_dry_run;
    const bool ride = match && options.ride;
    PairRecorder recorder(*workstation_, *guard_, plan.survey.pairs, {match, ride, std::move(begin_pair)});
    const bool is_whole = run_dialogue_import(plugin_, {.subject = plan.subject,
                                                        .base = plan.base,
                                                        .start_seconds = options.start_seconds,
                                                        .interval_seconds = options.interval_seconds,
                                                        .counts_from_end = options.counts_from_end,
                                                        .match = match,
                                                        .ride = ride,
                                                        .ratio = options.ratio,
                                                        .groups = options.groups});
    recorder.finish();
    renders_ = recorder.renders();

    report::ImportReport report{.subject_folder = plan.subject,
                                .base_folder = plan.base,
                                .is_dry_run = options.is_dry_run,
                                .has_levels = match,
                                .groups = groups_of(options.groups, recorder.pairs()),
                                .pairs = recorder.pairs()};
    for (const Failure& failure : recorder.failures())
        report.failures.push_back(failure.message);
    if (!is_whole)
        report.failures.push_back(path_failure(plan.subject, early_end).message);
    return report;
}

void ImportSession::remove_renders() const {
    for (const fs::path& render : renders_) {
        std::error_code gone;
        fs::remove(render, gone);
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

std::vector<Failure> ImportSession::losses(const fs::path& file) const {
    return losses_of(workstation_->project(), file, true_path(file).parent_path());
}

Result<SavedProject> ImportSession::save(const fs::path& file, const EarlierProject& earlier, Losses losses) {
    return save_project_over(earlier, *workstation_, file, losses);
}

} // namespace headless::jobs
