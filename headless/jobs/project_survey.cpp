#include "headless/jobs/project_survey.hpp"

#include "headless/jobs/project_lines.hpp"
#include "headless/jobs/unplayed.hpp"
#include "headless/rpp/rpp.hpp"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace headless::jobs {
namespace {

namespace fs = std::filesystem;

int whole_number(const chunk::Text& line, std::size_t word) {
    return static_cast<int>(std::clamp(chunk::number_at(line, word, 0.0), -1e9, 1e9));
}

/// `<REAPER_PROJECT 0.1 "6.19/linux-x86_64" 1700000000`
void read_head(report::ProjectReport& report, const chunk::Document& document) {
    const chunk::Text& head = document.root.head;
    const std::string_view saved_with = chunk::text_at(head, 2);
    const std::size_t slash = std::min(saved_with.find('/'), saved_with.size());
    report.version = saved_with.substr(0, slash);
    report.system = saved_with.substr(std::min(slash + 1, saved_with.size()));
    report.saved_at = static_cast<std::int64_t>(std::clamp(chunk::number_at(head, 3, 0.0), 0.0, 1e11));
    report.is_cut_off = document.is_cut_off;
}

std::vector<report::EnvelopeFigures>
figures_of(const std::vector<std::unique_ptr<project::Envelope>>& envelopes) {
    std::vector<report::EnvelopeFigures> figures;
    figures.reserve(envelopes.size());
    for (const auto& envelope : envelopes)
        figures.push_back({envelope->name(), envelope->points().size()});
    return figures;
}

void add_take(report::TrackFigures& figures, const project::Take& take) {
    if (take.is_empty)
        return;
    ++figures.takes;
    figures.take_effects += count_effects(take.lines, "TAKEFX").all;
    for (report::EnvelopeFigures& envelope : figures_of(take.envelopes()))
        figures.take_envelopes.push_back(std::move(envelope));
}

report::TrackFigures figures_of(const project::Track& track, std::string_view output_token) {
    const chunk::Lines& lines = lines_of(track);
    report::TrackFigures figures{.name = track.name,
                                 .depth = track.depth(),
                                 .folder = track.parent() ? track.parent()->index() + 1 : 0,
                                 .is_folder = track.folder_depth_change() > 0,
                                 .items = track.items().size(),
                                 .effects = count_effects(lines, effect_chain_of(track)).all,
                                 .input_effects = count_effects(lines, "FXCHAIN_REC").all,
                                 .envelopes = figures_of(track.envelopes())};
    for_each_line(lines, output_token, [&](const chunk::Text& line) {
        if (chunk::number_at(line, 1, -1.0) >= 0.0)
            figures.hardware_outputs.push_back(whole_number(line, 1));
    });
    for (const auto& item : track.items())
        for (const auto& take : item->takes())
            add_take(figures, *take);
    return figures;
}

/// Enters each send at both of its tracks. The receiving track has its line, with the sender's index.
void add_sends(report::ProjectReport& report, const project::Project& project) {
    for (const auto& track : project.tracks()) {
        for_each_line(lines_of(*track), "AUXRECV", [&](const chunk::Text& line) {
            const int sender = whole_number(line, 1);
            const std::size_t number = static_cast<std::size_t>(std::max(sender, -1) + 1);
            report::TrackFigures& receiver = report.tracks[track->index()];
            if (number == 0 || number > report.tracks.size()) {
                receiver.receives.push_back({number, std::nullopt});
                return;
            }
            receiver.receives.push_back({number, report.tracks[number - 1].name});
            report.tracks[number - 1].sends.push_back({track->index() + 1, track->name});
        });
    }
}

void add_markers(report::ProjectReport& report, const project::Project& project) {
    for (const project::Marker& marker : project.markers.all())
        (marker.is_region ? report.regions : report.markers)
            .push_back({marker.number, marker.name, marker.position_seconds, marker.end_seconds});
}

/// Also true for what only another system could find.
bool is_missing(const fs::path& file) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    return !fs::exists(status) || fs::is_directory(status);
}

void add_media(report::ProjectReport& report, const project::Project& project) {
    std::map<fs::path, std::size_t> places;
    for (const auto& track : project.tracks()) {
        for (const auto& item : track->items()) {
            for (const auto& take : item->takes()) {
                const fs::path& file = take->source.root().file;
                if (file.empty())
                    continue;
                const auto [place, is_new] = places.emplace(file, report.media.size());
                if (is_new)
                    report.media.push_back({file, 0, is_missing(file)});
                ++report.media[place->second].takes;
            }
        }
    }
}

} // namespace

Result<report::ProjectReport> survey_project(const fs::path& file) {
    project::Project project;
    return rpp::load_project(project, file).map([&] {
        const project::Meter meter = project.tempo_map.meter_at(0.0);
        report::ProjectReport report{.file = file,
                                     .length_seconds = project.end_seconds(),
                                     .sample_rate = project.sample_rate,
                                     .tempo_bpm = project.tempo_map.tempo_at(0.0),
                                     .meter_numerator = meter.numerator,
                                     .meter_denominator = meter.denominator,
                                     .tempo_points = project.tempo_map.points().size(),
                                     .master = figures_of(project.master(), "MASTERHWOUT")};
        read_head(report, project.source->document);
        for (const auto& track : project.tracks())
            report.tracks.push_back(figures_of(*track, "HWOUT"));
        add_sends(report, project);
        add_markers(report, project);
        add_media(report, project);
        report.unplayed = unplayed_of(project);
        return report;
    });
}

} // namespace headless::jobs
