#pragma once
// The report on a ridden recording: a row of a table, or a line of JSON.

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace headless::report {

/// The figures of one ridden recording.
struct RideReport {
    std::filesystem::path file{};   ///< as the user named it
    std::filesystem::path output{}; ///< the rendered take
    double length_seconds = 0.0;
    std::size_t windows = 0;        ///< windows of 10 ms that got a point
    std::size_t points_written = 0; ///< times that a point got its gain
    std::size_t points_kept = 0;    ///< points of the finished envelope
    double largest_cut_db = 0.0;    ///< 0 or below
    double largest_boost_db = 0.0;  ///< 0 or above

    /// Loudest 0.4 s, EBU R128 momentary loudness. Empty if the recording is shorter, minus infinity if it is
    /// silent.
    std::optional<double> momentary_max_before_lufs{};
    std::optional<double> momentary_max_after_lufs{};

    std::string remark{}; ///< on the recording; mostly empty
};

/// The heading of the table, two lines, the second one with the units. Ends in a line break, as the rows do.
std::string text_heading();

/// A row of the table. Its last column is the file name without the folder, followed by any remark.
std::string text_row(const RideReport& report);

/// One JSON object and a line break. Decibels have four decimals; a value that is not finite is null; bytes
/// of a path that are not UTF-8 become U+FFFD.
std::string json_line(const RideReport& report);

/// The same for a recording that could not be ridden: `{"file":...,"error":...}`.
std::string json_failure_line(const std::filesystem::path& file, std::string_view message);

/// The same for a project of another program that was saved over: `{"project":...,"backup":...}`.
std::string json_backup_line(const std::filesystem::path& project, const std::filesystem::path& backup);

} // namespace headless::report
