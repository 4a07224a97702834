#pragma once
// What an import did, in figures, and how it is told: on the terminal, as JSON, and line by line for a
// spreadsheet.

#include "headless/report/line_survey.hpp"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace headless {

/// One item of a pair.
struct ImportedLine {
    std::filesystem::path file{};
    bool is_placed = false; ///< false: the file was refused
    double position_seconds = 0.0;
    double length_seconds = 0.0;
    /// Momentary maximum (EBU R 128) in LUFS as it is heard in the project; none where there is none, or none
    /// was asked for; minus infinity for silence.
    std::optional<double> momentary_max_lufs{};
};

struct ImportedPair {
    std::string group{};
    ImportedLine base{};
    ImportedLine subject{};
    std::optional<double> subject_before_lufs{}; ///< of the recording, before it was levelled
    std::string remark{};                        ///< why it was not levelled or placed as asked; mostly empty

    /// How far the subject line stood above (+) or below (-) its base line in LU, as recorded and in the end;
    /// none without two readings, or when silence makes it endless.
    std::optional<double> distance_before_lu() const;
    std::optional<double> distance_lu() const;

    /// Whether they end within 0.1 LU.
    bool is_levelled() const;
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
    bool is_matched = false;             ///< levels were asked for, so there are readings
    std::vector<ImportedGroup> groups{}; ///< in the order of their tracks
    std::vector<ImportedPair> pairs{};   ///< in the order of the timeline
    std::vector<std::filesystem::path> unmatched{};
    LineSurvey survey{};
    std::vector<std::string> failures{}; ///< messages

    /// From the first item's start to the last one's end.
    double length_seconds() const;

    std::size_t levelled_pairs() const;
};

/// The summary for the terminal: the pairs in full while they fit a few screens and for a dry run, else the
/// ones that were farthest apart; names that stand twice, what found no partner and what nearly did; every
/// pair with a remark; groups; figures over all. Paths are those below the two folders.
std::string text_summary(const ImportReport& report);

/// The report as one JSON object and a line break; decibels and texts as in json_line of a ride.
std::string json_summary(const ImportReport& report);

/// The first line of a table of pairs.
std::string csv_heading();

/// One line a pair under the heading, after RFC 4180: CRLF, fields in quotes where needed, plain decimals.
std::string csv_table(const std::vector<ImportedPair>& pairs);

} // namespace headless
