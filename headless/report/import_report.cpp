#include "headless/report/import_report.hpp"

#include "headless/report/figures.hpp"
#include "headless/report/printable.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace headless::report {
namespace {

using figures::decibels;
using nlohmann::ordered_json;

constexpr double match_tolerance_lu = 0.1;

std::optional<double> distance(std::optional<double> from_lufs, std::optional<double> to_lufs) {
    const bool is_finite = from_lufs && to_lufs && std::isfinite(*to_lufs - *from_lufs);
    return is_finite ? std::optional(*to_lufs - *from_lufs) : std::nullopt;
}

ordered_json texts(const std::vector<std::filesystem::path>& paths) {
    ordered_json list = ordered_json::array();
    for (const std::filesystem::path& path : paths)
        list.push_back(path.string());
    return list;
}

ordered_json object_of(const ImportedLine& line) {
    ordered_json object{{"file", line.file.string()}, {"placed", line.is_placed}};
    if (line.is_placed) {
        object["position_seconds"] = line.position_seconds;
        object["length_seconds"] = line.length_seconds;
    }
    return object;
}

ordered_json object_of(const ImportedPair& pair, bool with_levels) {
    ordered_json object{
        {"group", pair.group}, {"base", object_of(pair.base)}, {"subject", object_of(pair.subject)}};
    if (with_levels) {
        object["base"]["momentary_max_lufs"] = decibels(pair.base.momentary_max_lufs);
        object["subject"]["momentary_max_before_lufs"] = decibels(pair.subject_before_lufs);
        object["subject"]["momentary_max_after_lufs"] = decibels(pair.subject.momentary_max_lufs);
    }
    if (!pair.remark.empty())
        object["remark"] = pair.remark;
    return object;
}

ordered_json list_of(const std::vector<matching::SameName>& names) {
    ordered_json list = ordered_json::array();
    for (const matching::SameName& same : names)
        list.push_back({{"name", same.name}, {"files", texts(same.files)}});
    return list;
}

ordered_json list_of(const std::vector<matching::NearLine>& lines) {
    ordered_json list = ordered_json::array();
    for (const matching::NearLine& near : lines)
        list.push_back({{"subject", near.subject.string()},
                        {"base", near.base.string()},
                        {"differences", near.differences}});
    return list;
}

std::string csv_field(std::string_view text) {
    std::string shown = printable(text);
    if (shown.find_first_of(",\"") == std::string::npos)
        return shown;
    std::string quoted = "\"";
    for (const char letter : shown)
        quoted.append(letter == '"' ? 2 : 1, letter);
    return quoted + '"';
}

/// Six decimals are microseconds; digits for an exact round trip would not help in a spreadsheet.
std::string csv_number(std::optional<double> value, int decimals) {
    return value && std::isfinite(*value) ? figures::formatted("%.*f", decimals, *value) : "";
}

std::string csv_place(const ImportedLine& line) {
    return line.is_placed ? csv_number(line.position_seconds, 6) + "," + csv_number(line.length_seconds, 6)
                          : ",";
}

} // namespace

std::optional<double> ImportedPair::distance_before_lu() const {
    return distance(base.momentary_max_lufs, subject_before_lufs);
}

std::optional<double> ImportedPair::distance_lu() const {
    return distance(base.momentary_max_lufs, subject.momentary_max_lufs);
}

bool ImportedPair::is_matched() const {
    const auto lu = distance_lu();
    return lu && std::abs(*lu) <= match_tolerance_lu;
}

double ImportReport::length_seconds() const {
    double start = std::numeric_limits<double>::infinity();
    double end = 0.0;
    for (const ImportedPair& pair : pairs) {
        for (const ImportedLine& line : {std::cref(pair.base), std::cref(pair.subject)}) {
            if (line.is_placed) {
                start = std::min(start, line.position_seconds);
                end = std::max(end, line.position_seconds + line.length_seconds);
            }
        }
    }
    return std::max(end - start, 0.0);
}

std::size_t ImportReport::matched_pairs() const {
    return static_cast<std::size_t>(std::ranges::count_if(pairs, &ImportedPair::is_matched));
}

std::string json_summary(const ImportReport& report) {
    ordered_json groups = ordered_json::array();
    for (const ImportedGroup& group : report.groups)
        groups.push_back({{"name", group.name}, {"pairs", group.pairs}});
    ordered_json pairs = ordered_json::array();
    for (const ImportedPair& pair : report.pairs)
        pairs.push_back(object_of(pair, report.has_levels));
    return figures::line_of(
        {{"subject_folder", report.subject_folder.string()},
         {"base_folder", report.base_folder.string()},
         {"project", report.project.empty() ? ordered_json(nullptr) : ordered_json(report.project.string())},
         {"backup", report.backup.empty() ? ordered_json(nullptr) : ordered_json(report.backup.string())},
         {"dry_run", report.is_dry_run},
         {"length_seconds", report.length_seconds()},
         {"groups", groups},
         {"pairs", pairs},
         {"unmatched_subjects", texts(report.survey.unpaired_subjects)},
         {"unused_bases", texts(report.survey.unpaired_bases)},
         {"near_names", list_of(report.survey.near_lines)},
         {"same_subject_names", list_of(report.survey.same_subject_names)},
         {"same_base_names", list_of(report.survey.same_base_names)},
         {"losses", report.losses},
         {"errors", report.failures}});
}

std::string csv_heading() {
    return "group,subject,base,base_position_seconds,base_length_seconds,subject_position_seconds,"
           "subject_length_seconds,base_momentary_max_lufs,subject_momentary_max_before_lufs,"
           "subject_momentary_max_after_lufs,remark\r\n";
}

std::string csv_table(const std::vector<ImportedPair>& pairs) {
    std::string table = csv_heading();
    for (const ImportedPair& pair : pairs) {
        table += csv_field(pair.group) + ',' + csv_field(pair.subject.file.string()) + ',' +
                 csv_field(pair.base.file.string()) + ',' + csv_place(pair.base) + ',' +
                 csv_place(pair.subject) + ',' + csv_number(pair.base.momentary_max_lufs, 2) + ',' +
                 csv_number(pair.subject_before_lufs, 2) + ',' +
                 csv_number(pair.subject.momentary_max_lufs, 2) + ',' + csv_field(pair.remark) + "\r\n";
    }
    return table;
}

} // namespace headless::report
