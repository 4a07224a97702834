#include "headless/cli/ride_session.hpp"

#include "headless/audio/loudness.hpp"
#include "headless/host/text.hpp"
#include "headless/output/project_output.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace headless {
namespace {

constexpr double gap_seconds = 1.0;

double next_position(const Track& track) {
    return track.items().empty() ? 0.0 : track.items().back()->end_seconds() + gap_seconds;
}

/// None where the recording is too short, or of a shape that loudness is not defined for.
std::optional<double> momentary_maximum(AudioStore& store, const std::filesystem::path& file) {
    const auto format = store.format(file);
    if (!format)
        return std::nullopt;
    const auto loudness =
        measure_loudness(store, file, {0, format->frames}, GainCurve{}, LoudnessRequest::momentary_only());
    if (!loudness || !loudness->momentary_maximum_lufs)
        return std::nullopt;
    return loudness->momentary_maximum_lufs->value;
}

double to_db(double gain) { return 20.0 * std::log10(gain); }

void add_gains(RideReport& report, const Take& take) {
    const Envelope* volume = take.envelope("Volume");
    if (volume == nullptr)
        return;
    for (const EnvelopePoint& point : volume->points()) {
        report.largest_cut_db = std::min(report.largest_cut_db, to_db(point.value));
        report.largest_boost_db = std::max(report.largest_boost_db, to_db(point.value));
    }
}

} // namespace

RideSession::RideSession(std::unique_ptr<Workstation> workstation, PluginLibrary plugin,
                         RideFunction* ride_function, OutputGuard& guard)
    : workstation_(std::move(workstation)), plugin_(std::move(plugin)), ride_(ride_function),
      track_(&workstation_->project().insert_track(0)), guard_(&guard) {
    track_->name = "felspar ride";
    workstation_->allow_replacing(
        [&guard](const std::filesystem::path& target) { return guard.permits_audio(target).has_value(); });
}

Result<RideSession> RideSession::open(const std::filesystem::path& plugin, OutputGuard& guard) {
    auto workstation = std::make_unique<Workstation>();
    auto library = PluginLibrary::load(plugin, *workstation);
    if (!library)
        return tl::unexpected(library.error());
    auto* ride = workstation->function_as<RideFunction>("MK_SetMediaItemRIDESCRIBER");
    if (ride == nullptr)
        return tl::unexpected(Failure{plugin.string() + ": registers no MK_SetMediaItemRIDESCRIBER"});
    return RideSession(std::move(workstation), std::move(*library), ride, guard);
}

void RideSession::set_folder(const std::filesystem::path& folder) {
    folder_ = folder;
    workstation_->project().record_path = std::filesystem::canonical(folder);
}

std::filesystem::path RideSession::target_of(const Take& take) const {
    return folder_ / file_name_for(without_audio_extension(take.name), ".wav");
}

Result<RideReport> RideSession::ride(const std::filesystem::path& file, int ratio) {
    const auto item =
        workstation_->insert_audio(*track_, std::filesystem::absolute(file), next_position(*track_));
    if (!item)
        return tl::unexpected(item.error());
    const auto permitted = guard_->permits_audio(target_of(*(*item)->active_take()));
    auto report = permitted ? ride_item(**item, file, ratio) : tl::unexpected(permitted.error());
    if (!report)
        track_->erase_item(**item);
    return report;
}

Result<RideReport> RideSession::ride_item(Item& item, const std::filesystem::path& file, int ratio) {
    const Take& recorded = *item.active_take();
    const auto before = momentary_maximum(workstation_->audio(), recorded.source.file);
    const bool ridden = ride_(Workstation::handle(item), ratio);
    const std::vector<Failure> failures = workstation_->take_failures();
    if (!failures.empty())
        return tl::unexpected(failures.front());
    const Take& rendered = *item.active_take();
    if (!ridden || &rendered == &recorded)
        return tl::unexpected(Failure{file.string() + ": the plug-in did not ride it"});
    guard_->wrote(rendered.source.file);

    const EnvelopeEdit edit = workstation_->last_envelope_edit();
    RideReport report{.file = file,
                      .output = folder_ / rendered.source.file.filename(),
                      .length_seconds = item.length_seconds(),
                      .windows = edit.points_created,
                      .points_written = edit.points_rewritten,
                      .points_kept = edit.points_kept,
                      .momentary_max_before_lufs = before,
                      .momentary_max_after_lufs =
                          momentary_maximum(workstation_->audio(), rendered.source.file)};
    add_gains(report, recorded);
    return report;
}

Result<std::vector<Failure>> RideSession::save(const std::filesystem::path& project_file) {
    if (const auto permitted = guard_->permits_project(project_file); !permitted)
        return tl::unexpected(permitted.error());
    return save_project_as(*workstation_, project_file);
}

} // namespace headless
