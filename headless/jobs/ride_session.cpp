#include "headless/jobs/ride_session.hpp"

#include "common/path_text.hpp"
#include "common/paths.hpp"
#include "headless/audio/audio_cache.hpp"
#include "headless/audio/loudness.hpp"
#include "headless/base/interruption.hpp"
#include "headless/functions/all_functions.hpp"
#include "headless/report/remarks.hpp"
#include "headless/workstation/text.hpp"

#include <algorithm>
#include <cmath>
#include <new>
#include <system_error>
#include <utility>

namespace headless::jobs {
namespace {

constexpr double gap_seconds = 1.0;

double next_position(const project::Track& track) {
    return track.items().empty() ? 0.0 : track.items().back()->end_seconds() + gap_seconds;
}

/// Empty if the recording is too short, or if loudness is not defined for its format.
Result<std::optional<double>> momentary_maximum(audio::AudioCache& cache, const std::filesystem::path& file) {
    const auto format = cache.format(file);
    if (!format)
        return tl::unexpected(format.error());
    if (!audio::is_loudness_defined(format->sample_rate, format->channels))
        return std::nullopt;
    return audio::measure_loudness(cache, file, {0, format->frames}, audio::GainCurve{},
                                   audio::LoudnessRequest::momentary_only())
        .map([](const audio::Loudness& loudness) -> std::optional<double> {
            const auto& maximum = loudness.momentary_maximum_lufs;
            return maximum ? std::optional(maximum->value) : std::nullopt;
        });
}

tl::unexpected<Failure> out_of_memory(const std::filesystem::path& file) {
    return tl::unexpected(path_failure(file, "there is not enough memory to ride it"));
}

/// Some failures of host functions concern no file.
Failure with_path(const Failure& failure, const std::filesystem::path& file) {
    return failure.path.empty() ? path_failure(file, failure.message) : failure;
}

double to_db(double gain) { return 20.0 * std::log10(gain); }

void add_gains(report::RideReport& report, const project::Take& take) {
    const project::Envelope* volume = take.envelope("Volume");
    if (volume == nullptr)
        return;
    for (const project::EnvelopePoint& point : volume->points()) {
        report.largest_cut_db = std::min(report.largest_cut_db, to_db(point.value));
        report.largest_boost_db = std::max(report.largest_boost_db, to_db(point.value));
    }
}

// "a" of "a.wav" gives the take "a render 001".
std::string name_of_render(const std::string& take) {
    return std::string(workstation::without_audio_extension(take)) + " render 001";
}

} // namespace

std::vector<Failure> losses_of_ride(std::span<const std::filesystem::path> recordings,
                                    const std::filesystem::path& folder,
                                    const std::filesystem::path& project_file) {
    project::Project project;
    project.record_path = folder;
    project::Track& track = project.insert_track(0);
    for (const std::filesystem::path& recording : recordings) {
        project::Item& item = track.add_item(next_position(track), 0.0);
        const std::string name = recording.filename().string();
        item.add_take({paths::absolute(recording)}, name);
        item.add_take({folder / "render.wav"}, name_of_render(name));
    }
    return losses_of(project, project_file, true_path(project_file).parent_path());
}

RideSession::RideSession(std::unique_ptr<workstation::Workstation> workstation,
                         workstation::PluginLibrary plugin, RideFunction* ride_function, OutputGuard& guard)
    : workstation_(std::move(workstation)), plugin_(std::move(plugin)), ride_(ride_function),
      track_(&workstation_->project().insert_track(0)), guard_(&guard) {
    track_->name = "felspar ride";
    workstation_->judge_existing_render = [&guard](const std::filesystem::path& target) {
        return guard.judge_render(target);
    };
    workstation_->audio().is_interrupted = [] { return interruption::signal_number() != 0; };
}

Result<RideSession> RideSession::open(const std::filesystem::path& plugin, OutputGuard& guard) {
    auto workstation = std::make_unique<workstation::Workstation>(functions::all_functions());
    auto library = workstation::PluginLibrary::load(plugin, *workstation);
    auto* ride = workstation->function_as<RideFunction>("MK_SetMediaItemRIDESCRIBER");
    if (library && ride == nullptr)
        return tl::unexpected(path_failure(plugin, "registers no MK_SetMediaItemRIDESCRIBER"));
    return std::move(library).map([&](workstation::PluginLibrary&& loaded) {
        return RideSession(std::move(workstation), std::move(loaded), ride, guard);
    });
}

void RideSession::set_folder(const std::filesystem::path& folder) {
    folder_ = folder;
    workstation_->project().record_path = std::filesystem::canonical(folder);
}

std::filesystem::path RideSession::target_of(const project::Take& take) const {
    return folder_ / path_text::path_of(
                         workstation::file_name_for(workstation::without_audio_extension(take.name), ".wav"));
}

Result<project::Item*> RideSession::insert(const std::filesystem::path& file) {
    try {
        return workstation_->insert_audio(*track_, paths::absolute(file), next_position(*track_));
    } catch (const std::bad_alloc&) {
        return out_of_memory(file);
    }
}

Result<report::RideReport> RideSession::ride(const std::filesystem::path& file, int ratio) {
    const auto item = insert(file);
    if (!item)
        return tl::unexpected(item.error());
    const auto permitted = guard_->permits_audio(target_of(*(*item)->active_take()));
    auto report = permitted ? ride_in_memory(**item, file, ratio) : tl::unexpected(permitted.error());
    if (!report) {
        remove_render(**item);
        track_->erase_item(**item);
    }
    return report;
}

/// If there is not enough memory for one recording, the others are still processed.
Result<report::RideReport> RideSession::ride_in_memory(project::Item& item, const std::filesystem::path& file,
                                                       int ratio) {
    try {
        return ride_item(item, file, ratio);
    } catch (const std::bad_alloc&) {
        workstation_->take_failures();
        return out_of_memory(file);
    }
}

/// The render of a ride that failed halfway is not a result.
void RideSession::remove_render(const project::Item& item) const {
    const std::filesystem::path& file = item.active_take()->source.root().file;
    std::error_code error;
    if (item.takes().size() > 1 && guard_->may_remove(file))
        std::filesystem::remove(file, error);
}

Result<report::RideReport> RideSession::ride_item(project::Item& item, const std::filesystem::path& file,
                                                  int ratio) {
    const project::Take& recorded = *item.active_take();
    const auto before = momentary_maximum(workstation_->audio(), recorded.source.root().file);
    if (!before)
        return tl::unexpected(before.error());
    const bool ridden = ride_(workstation::Workstation::handle(item), ratio);
    const std::vector<Failure> failures = workstation_->take_failures();
    if (!failures.empty())
        return tl::unexpected(with_path(failures.front(), file));
    const project::Take& rendered = *item.active_take();
    if (!ridden || &rendered == &recorded)
        return tl::unexpected(path_failure(file, "the plug-in did not ride it"));
    const auto after = momentary_maximum(workstation_->audio(), rendered.source.root().file);
    if (!after)
        return tl::unexpected(after.error());
    guard_->wrote(rendered.source.root().file);
    guard_->wrote(target_of(recorded)); // one recording per name, even if the render had to get another name

    const workstation::EnvelopeEdit edit = workstation_->last_envelope_edit();
    report::RideReport report{.file = file,
                              .output = folder_ / rendered.source.root().file.filename(),
                              .length_seconds = item.length_seconds(),
                              .windows = edit.points_created,
                              .points_written = edit.points_rewritten,
                              .points_kept = edit.points_kept,
                              .momentary_max_before_lufs = *before,
                              .momentary_max_after_lufs = *after};
    report.remark = report::truncation_remark(workstation_->audio().truncation(recorded.source.root().file));
    add_gains(report, recorded);
    return report;
}

Result<SavedProject> RideSession::save(const std::filesystem::path& project_file,
                                       const EarlierProject& earlier, Losses losses) {
    if (const auto permitted = guard_->permits_project(project_file); !permitted)
        return tl::unexpected(permitted.error());
    return save_project_over(earlier, *workstation_, project_file, losses);
}

} // namespace headless::jobs
