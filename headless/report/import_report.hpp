#pragma once
// The figures of an import and their output formats: text for the terminal, JSON, and CSV for a spreadsheet.

#include "headless/matching/line_survey.hpp"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace headless::report {

/// One item of a pair.
struct ImportedLine {
    std::filesystem::path file{};
    bool is_placed = false; ///< false: the file was refused
    double position_seconds = 0.0;
    double length_seconds = 0.0;
    /// Momentary maximum (EBU R 128) in LUFS as heard in the project. Empty if there is none or none was
    /// requested; minus infinity for silence.
    std::optional<double> momentary_max_lufs{};
};

struct ImportedPair {
    std::string group{};
    ImportedLine base{};
    ImportedLine subject{};
    std::optional<double> subject_before_lufs{}; ///< of the recording, before its level was matched
    std::string remark{};                        ///< why it was not matched or placed as asked; mostly empty

    /// Level of the subject line above (+) or below (-) its base line in LU, as recorded and at the end.
    /// Empty without two readings, or if silence makes the distance infinite.
    std::optional<double> distance_before_lu() const;
    std::optional<double> distance_lu() const;

    /// Whether their levels match in the end, within 0.1 LU.
    bool is_matched() const;
};

struct ImportedGroup {
    std::string name;
    std::size_t pairs = 0;
};

struct ImportReport {
    std::filesystem::path subject_folder{};
    std::filesystem::path base_folder{};
    std::filesystem::path project{}; ///< empty: none was written
    bool is_dry_run = false;
    bool has_levels = false;             ///< the levels were to be matched, so there are readings
    std::vector<ImportedGroup> groups{}; ///< in the order of their tracks
    std::vector<ImportedPair> pairs{};   ///< in the order of the timeline
    matching::LineSurvey survey{};
    std::filesystem::path backup{};      ///< of the project as it was; empty: none was needed
    std::vector<std::string> losses{};   ///< what the project file cannot hold; messages
    std::vector<std::string> notices{};  ///< messages that are no failures
    std::vector<std::string> failures{}; ///< messages

    /// From the first item's start to the last one's end.
    double length_seconds() const;

    std::size_t matched_pairs() const;
};

/// The summary for the terminal: all pairs if they fit a few screens or for a dry run, otherwise the ones
/// that were farthest apart; duplicate names, lines without a partner, and near matches; every pair with a
/// remark; groups; totals. Paths are relative to the two folders.
std::string text_summary(const ImportReport& report);

/// The report as one JSON object and a line break. Decibels and strings as in json_line of a ride.
std::string json_summary(const ImportReport& report);

/// The heading line of the table of pairs.
std::string csv_heading();

/// One line per pair, to follow the heading, according to RFC 4180: CRLF, fields in quotes where needed,
/// plain decimals.
std::string csv_table(const std::vector<ImportedPair>& pairs);

} // namespace headless::report
