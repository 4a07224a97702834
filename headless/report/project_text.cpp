// The report on a project for the terminal.

#include "common/paths.hpp"
#include "headless/report/figures.hpp"
#include "headless/report/printable.hpp"
#include "headless/report/project_report.hpp"

#include <algorithm>
#include <cmath>
#include <ctime>

namespace headless::report {
namespace {

using figures::formatted;
namespace fs = std::filesystem;

constexpr std::size_t line_columns = 80;
constexpr std::size_t max_listed = 20; ///< of a list that is no track or missing file
constexpr int max_indented_depth = 12; ///< deeper tracks show their depth as a number
constexpr std::size_t max_margin = 36; ///< of the details of a track

std::string clock_time(double seconds) {
    const auto milliseconds = std::llround(std::min(seconds, 1e12) * 1000.0);
    const auto whole = milliseconds / 1000;
    return formatted("%lld:%02lld:%02lld.%03lld", whole / 3600, whole / 60 % 60, whole % 60,
                     std::llabs(milliseconds % 1000));
}

std::string date_of(std::int64_t seconds) {
    const std::time_t time = seconds;
    const std::tm* parts = std::gmtime(&time);
    if (!parts)
        return "";
    return formatted("%04d-%02d-%02d %02d:%02d UTC", parts->tm_year + 1900, parts->tm_mon + 1, parts->tm_mday,
                     parts->tm_hour, parts->tm_min);
}

/// The text in that many columns, cut with dots if it is longer.
std::string cut(const std::string& text, std::size_t columns) {
    if (display_columns(text) <= columns)
        return text;
    return std::string(fitting(text, std::max<std::size_t>(columns, 3) - 3)) + "...";
}

std::string counted(std::size_t count, const std::string& one, const std::string& many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

/// Relative to the project's folder if it lies below it.
std::string shown(const fs::path& file, const fs::path& project) {
    std::error_code error;
    const fs::path folder = paths::weakly_canonical(project, error).parent_path();
    const fs::path relative = error ? fs::path() : file.lexically_relative(folder);
    const bool is_below = !relative.empty() && *relative.begin() != "..";
    return printable(is_below ? relative.string() : file.string());
}

/// "Reverb", "(no name)".
std::string shown_name(const std::string& name) { return name.empty() ? "(no name)" : printable(name); }

std::string text_of_send(const SendEnd& end) {
    return end.name ? std::to_string(end.track) + " " + shown_name(*end.name)
                    : std::to_string(end.track) + " (no such track)";
}

std::string text_of_envelope(const EnvelopeFigures& envelope) {
    return shown_name(envelope.name) + " (" + counted(envelope.points, "point", "points") + ")";
}

// The file numbers the first of two channels; from 1024 on it is one channel alone, from 512 on a loopback.
std::string text_of_output(int number) {
    constexpr int loopback = 512;
    constexpr int mono = 1024;
    const int channel = number % loopback + 1;
    const char* kind = number % mono >= loopback ? "loopback " : "";
    return kind + std::to_string(channel) + (number >= mono ? "" : "/" + std::to_string(channel + 1));
}

/// Those that have points: a project has some without.
std::vector<std::string> texts_of_used(const std::vector<EnvelopeFigures>& envelopes) {
    std::vector<std::string> texts;
    for (const EnvelopeFigures& envelope : envelopes)
        if (envelope.points > 0)
            texts.push_back(text_of_envelope(envelope));
    return texts;
}

template <class T>
std::vector<std::string> texts_of(const std::vector<T>& entries, std::string (*text_of)(const T&)) {
    std::vector<std::string> texts;
    texts.reserve(entries.size());
    for (const T& entry : entries)
        texts.push_back(text_of(entry));
    return texts;
}

/// Writes a report piece by piece.
class ProjectText {
public:
    explicit ProjectText(const ProjectReport& report) : report_(report) {}

    std::string text() && {
        add_head();
        add_tracks();
        add_markers();
        add_regions();
        add_media();
        add_unplayed();
        return std::move(text_);
    }

private:
    void add_head() {
        text_ += printable(report_.file.string()) + '\n';
        if (report_.is_cut_off)
            text_ += "  the file is cut off: this is what is left of it\n";
        const std::string version = printable(report_.version);
        const std::string on = report_.system.empty() ? "" : " on " + printable(report_.system);
        const std::string at = report_.saved_at == 0 ? "" : ", " + date_of(report_.saved_at);
        text_ +=
            "  " +
            cut((version.empty() ? "saved by an unknown version" : "saved by version " + version) + on + at,
                line_columns - 2) +
            '\n';
        text_ +=
            "  length " + clock_time(report_.length_seconds) + ", " + std::to_string(report_.sample_rate) +
            " Hz, " + formatted("%.10g", report_.tempo_bpm) +
            formatted(" bpm in %d/%d", report_.meter_numerator, report_.meter_denominator) +
            (report_.tempo_points > 0 ? ", " + counted(report_.tempo_points, "tempo point", "tempo points")
                                      : "") +
            '\n';
    }

    void add_tracks() {
        text_ += formatted("\nTracks (%zu):\n", report_.tracks.size());
        text_ += "   items   takes effects  track\n";
        for (std::size_t i = 0; i < report_.tracks.size(); ++i)
            add_track(report_.tracks[i], std::to_string(i + 1) + " " + shown_name(report_.tracks[i].name));
        const TrackFigures& master = report_.master;
        if (master.effects > 0 || !texts_of_used(master.envelopes).empty())
            add_track(master, "master");
    }

    void add_track(const TrackFigures& track, const std::string& name) {
        const bool is_deep = track.depth > max_indented_depth;
        const auto indent = static_cast<std::size_t>(2 * std::clamp(track.depth, 0, max_indented_depth));
        const std::string depth = is_deep ? "[in " + std::to_string(track.depth) + " folders] " : "";
        const std::string figures =
            formatted("%8zu%8zu%8zu  ", track.items, track.takes, track.effects) + std::string(indent, ' ');
        text_ += figures + cut(depth + name, line_columns - figures.size()) + '\n';
        const std::string margin(std::min(figures.size() + 2, max_margin), ' ');
        add_detail(margin, "sends to", texts_of(track.sends, text_of_send));
        add_detail(margin, "receives from", texts_of(track.receives, text_of_send));
        std::vector<std::string> outputs;
        std::ranges::transform(track.hardware_outputs, std::back_inserter(outputs), text_of_output);
        add_detail(margin, "hardware", outputs);
        add_detail(margin, "envelopes", texts_of_used(track.envelopes));
        add_detail(margin, "take envelopes", texts_of_used(track.take_envelopes));
        if (track.input_effects > 0)
            text_ += margin + counted(track.input_effects, "input effect", "input effects") + '\n';
        if (track.take_effects > 0)
            text_ += margin + counted(track.take_effects, "take effect", "take effects") + '\n';
    }

    /// As many of the texts as the line holds, at least one.
    void add_detail(const std::string& margin, const char* title, const std::vector<std::string>& texts) {
        if (texts.empty())
            return;
        constexpr std::size_t columns_of_rest = 17; // " and 999,999 more"
        std::string line = margin + title + ": ";
        for (std::size_t i = 0; i < texts.size(); ++i) {
            const std::size_t end = line_columns - (i + 1 == texts.size() ? 0 : columns_of_rest);
            const std::size_t used = display_columns(line);
            if (i == 0) {
                line += cut(texts[i], end - std::min(used, end));
            } else if (used + 2 + display_columns(texts[i]) <= end) {
                line += ", " + texts[i];
            } else {
                line += formatted(" and %zu more", texts.size() - i);
                break;
            }
        }
        text_ += line + '\n';
    }

    void end_list(std::size_t count) {
        if (count > max_listed)
            text_ += formatted("  and %zu more; --json lists all\n", count - max_listed);
    }

    void add_markers() {
        if (report_.markers.empty())
            return;
        text_ += formatted("\nMarkers (%zu):\n", report_.markers.size());
        for (std::size_t i = 0; i < std::min(report_.markers.size(), max_listed); ++i) {
            const MarkerFigures& marker = report_.markers[i];
            add_named(formatted("%15s %5d", clock_time(marker.position_seconds).c_str(), marker.number),
                      marker.name);
        }
        end_list(report_.markers.size());
    }

    void add_regions() {
        if (report_.regions.empty())
            return;
        text_ += formatted("\nRegions (%zu):\n", report_.regions.size());
        for (std::size_t i = 0; i < std::min(report_.regions.size(), max_listed); ++i) {
            const MarkerFigures& region = report_.regions[i];
            add_named(formatted("%15s - %s %5d", clock_time(region.position_seconds).c_str(),
                                clock_time(region.end_seconds).c_str(), region.number),
                      region.name);
        }
        end_list(report_.regions.size());
    }

    void add_named(const std::string& place, const std::string& name) {
        text_ +=
            place + (name.empty() ? "" : "  " + cut(printable(name), line_columns - place.size() - 2)) + '\n';
    }

    void add_media() {
        if (report_.media.empty())
            return;
        const std::size_t missing = report_.missing_media();
        text_ += formatted("\nMedia files (%zu, %zu missing):\n", report_.media.size(), missing);
        text_ += "   takes\n";
        for (const MediaFile& media : report_.media)
            if (media.is_missing)
                text_ += formatted("%8zu  missing: ", media.takes) + shown(media.file, report_.file) + '\n';
        std::size_t listed = 0;
        for (const MediaFile& media : report_.media)
            if (!media.is_missing && ++listed <= max_listed)
                text_ += formatted("%8zu  ", media.takes) + shown(media.file, report_.file) + '\n';
        end_list(listed);
    }

    void add_unplayed() {
        if (report_.unplayed.empty())
            return;
        text_ += "\nNot played here as in the workstation:\n";
        for (const Unplayed& unplayed : report_.unplayed)
            text_ +=
                formatted("%8zu  ", unplayed.count) + cut(printable(unplayed.what), line_columns - 10) + '\n';
    }

    const ProjectReport& report_;
    std::string text_;
};

} // namespace

std::string text_of(const ProjectReport& report) { return ProjectText(report).text(); }

std::string text_of_check(const ProjectReport& report) {
    const std::string name = printable(report.file.string()) + ": ";
    std::string text = report.is_cut_off ? name + "the file is cut off\n" : "";
    for (const MediaFile& media : report.media)
        if (media.is_missing)
            text += name + shown(media.file, report.file) + " is missing (" +
                    counted(media.takes, "take", "takes") + ")\n";
    if (report.missing_media() == 0)
        text += name +
                (report.media.empty() ? "plays no media files"
                                      : "finds " + counted(report.media.size(), "media file", "media files") +
                                            ", none is missing") +
                '\n';
    return text;
}

} // namespace headless::report
