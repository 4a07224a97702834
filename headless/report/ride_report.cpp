#include "headless/report/ride_report.hpp"

#include "headless/report/figures.hpp"
#include "headless/report/printable.hpp"

#include <cmath>

namespace headless::report {
namespace {

using figures::decibels;
using figures::formatted;
using figures::line_of;
using figures::loudness_text;

/// With its sign, except if it would round to 0.0.
std::string gain_text(double gain_db) {
    return std::abs(gain_db) < 0.05 ? "0.0" : formatted("%+.1f", gain_db);
}

} // namespace

std::string text_heading() {
    return "  length  windows  written    kept     cut   boost   before   after  file\n"
           "       s                              dB      dB     LUFS    LUFS\n";
}

std::string text_row(const RideReport& report) {
    return formatted("%8.2f %8zu %8zu %7zu %7s %7s %8s %7s  ", report.length_seconds, report.windows,
                     report.points_written, report.points_kept, gain_text(report.largest_cut_db).c_str(),
                     gain_text(report.largest_boost_db).c_str(),
                     loudness_text(report.momentary_max_before_lufs).c_str(),
                     loudness_text(report.momentary_max_after_lufs).c_str()) +
           printable(report.file.filename().string()) + (report.remark.empty() ? "" : ": " + report.remark) +
           "\n";
}

std::string json_line(const RideReport& report) {
    nlohmann::ordered_json object = {
        {"file", report.file.string()},
        {"output", report.output.string()},
        {"length_seconds", report.length_seconds},
        {"windows", report.windows},
        {"points_written", report.points_written},
        {"points_kept", report.points_kept},
        {"largest_cut_db", decibels(report.largest_cut_db)},
        {"largest_boost_db", decibels(report.largest_boost_db)},
        {"momentary_max_before_lufs", decibels(report.momentary_max_before_lufs)},
        {"momentary_max_after_lufs", decibels(report.momentary_max_after_lufs)}};
    if (!report.remark.empty())
        object["remark"] = report.remark;
    return line_of(object);
}

std::string json_failure_line(const std::filesystem::path& file, std::string_view message) {
    return line_of({{"file", file.string()}, {"error", message}});
}

std::string json_backup_line(const std::filesystem::path& project, const std::filesystem::path& backup) {
    return line_of({{"project", project.string()}, {"backup", backup.string()}});
}

} // namespace headless::report
