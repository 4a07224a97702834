#include "headless/report/ride_report.hpp"

#include "headless/report/printable.hpp"

#include <nlohmann/json.hpp>

#include <array>
#include <cmath>
#include <cstdio>

namespace headless {
namespace {

using nlohmann::ordered_json;

template <class... Values>
std::string formatted(const char* format, Values... values) {
    std::array<char, 160> text{};
    std::snprintf(text.data(), text.size(), format, values...);
    return text.data();
}

/// With its sign; none where it would round to 0.0.
std::string gain_text(double gain_db) {
    return std::abs(gain_db) < 0.05 ? "0.0" : formatted("%+.1f", gain_db);
}

std::string loudness_text(std::optional<double> lufs) { return lufs ? formatted("%.1f", *lufs) : "-"; }

/// Decibels at four decimals: more would show where a curve was reckoned, not how it sounds.
ordered_json decibels(std::optional<double> value) {
    return value && std::isfinite(*value) ? ordered_json(std::round(*value * 1e4) / 1e4)
                                          : ordered_json(nullptr);
}

std::string line_of(const ordered_json& object) {
    return object.dump(-1, ' ', false, ordered_json::error_handler_t::replace) + "\n";
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
           printable(report.file.filename().string()) + "\n";
}

std::string json_line(const RideReport& report) {
    return line_of({{"file", report.file.string()},
                    {"output", report.output.string()},
                    {"length_seconds", report.length_seconds},
                    {"windows", report.windows},
                    {"points_written", report.points_written},
                    {"points_kept", report.points_kept},
                    {"largest_cut_db", decibels(report.largest_cut_db)},
                    {"largest_boost_db", decibels(report.largest_boost_db)},
                    {"momentary_max_before_lufs", decibels(report.momentary_max_before_lufs)},
                    {"momentary_max_after_lufs", decibels(report.momentary_max_after_lufs)}});
}

std::string json_failure_line(const std::filesystem::path& file, std::string_view message) {
    return line_of({{"file", file.string()}, {"error", message}});
}

} // namespace headless
