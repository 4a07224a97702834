// The import's summary for the terminal.

#include "headless/report/figures.hpp"
#include "headless/report/import_report.hpp"
#include "headless/report/printable.hpp"

#include <algorithm>
#include <cmath>

namespace headless::report {
namespace {

using figures::formatted;
using figures::loudness_text;
namespace fs = std::filesystem;

constexpr std::size_t max_pairs_in_full = 40;
constexpr std::size_t farthest_pairs = 12; ///< shown instead if there are more
constexpr std::size_t max_names = 20;      ///< shown of a list

std::string below(const fs::path& folder, const fs::path& file) {
    const fs::path relative = file.lexically_relative(folder);
    return printable(relative.empty() || *relative.begin() == ".." ? file.string() : relative.string());
}

std::string counted(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string clock_time(double seconds) {
    const auto whole = std::llround(seconds);
    return formatted("%lld:%02lld:%02lld", whole / 3600, whole / 60 % 60, whole % 60);
}

std::string padded(std::string text, std::size_t columns) {
    const std::size_t used = display_columns(text);
    return text.append(used < columns ? columns - used : 0, ' ');
}

/// Writes a report piece by piece.
class Summary {
public:
    explicit Summary(const ImportReport& report) : report_(report) {
        for (const ImportedGroup& group : report.groups)
            group_columns_ = std::max(group_columns_, display_columns(printable(group.name)));
    }

    /// The most important part comes last, where a terminal shows it.
    std::string text() && {
        add_pairs();
        add_same_names("subject", report_.survey.same_subject_names, report_.subject_folder);
        add_same_names("base", report_.survey.same_base_names, report_.base_folder);
        add_list("Base lines that no subject line asked for", report_.survey.unpaired_bases,
                 report_.base_folder);
        add_near_matches();
        add_list("Subject lines without a partner", report_.survey.unpaired_subjects, report_.subject_folder);
        add_remarks();
        add_groups();
        add_closing_line();
        add_levels();
        return std::move(text_);
    }

private:
    void add_pairs() {
        std::vector<const ImportedPair*> shown;
        for (const ImportedPair& pair : report_.pairs)
            shown.push_back(&pair);
        if (shown.size() > max_pairs_in_full && !report_.is_dry_run) {
            if (!report_.has_levels)
                return;
            keep_farthest(shown);
            text_ += formatted("The %zu pairs of %zu that were farthest apart:\n", shown.size(),
                               report_.pairs.size());
        }
        if (shown.empty())
            return;
        text_ += report_.has_levels ? "    base  before   after  " : "   start     base  subject  ";
        text_ += padded("group", group_columns_) + "  line\n";
        text_ += report_.has_levels ? "    LUFS    LUFS    LUFS\n" : "       s        s        s\n";
        for (const ImportedPair* pair : shown)
            add_pair(*pair);
        text_ += '\n';
    }

    static void keep_farthest(std::vector<const ImportedPair*>& pairs) {
        std::ranges::stable_sort(pairs, std::greater{}, [](const ImportedPair* pair) {
            return std::abs(pair->distance_before_lu().value_or(0.0));
        });
        pairs.resize(farthest_pairs);
    }

    void add_pair(const ImportedPair& pair) {
        const auto seconds = [](const ImportedLine& line, double value) {
            return line.is_placed ? formatted("%.2f", value) : std::string("-");
        };
        text_ += report_.has_levels
                     ? formatted("%8s%8s%8s  ", loudness_text(pair.base.momentary_max_lufs).c_str(),
                                 loudness_text(pair.subject_before_lufs).c_str(),
                                 loudness_text(pair.subject.momentary_max_lufs).c_str())
                     : formatted("%8s%9s%9s  ", seconds(pair.base, pair.base.position_seconds).c_str(),
                                 seconds(pair.base, pair.base.length_seconds).c_str(),
                                 seconds(pair.subject, pair.subject.length_seconds).c_str());
        const std::string subject = below(report_.subject_folder, pair.subject.file);
        const std::string base = below(report_.base_folder, pair.base.file);
        text_ += padded(printable(pair.group), group_columns_) + "  " + subject +
                 (base == subject ? "" : "  with " + base) + '\n';
    }

    void add_groups() {
        if (report_.groups.empty())
            return;
        text_ += "   pairs  group\n";
        for (const ImportedGroup& group : report_.groups)
            text_ += formatted("%8zu  ", group.pairs) + printable(group.name) + '\n';
        text_ += '\n';
    }

    void add_closing_line() {
        text_ += counted(report_.pairs.size(), "pair", "pairs") + " in " +
                 counted(report_.groups.size(), "group", "groups") + ", " +
                 clock_time(report_.length_seconds()) + " long, " +
                 counted(report_.survey.unpaired_subjects.size(), "subject line", "subject lines") +
                 " without a partner";
        if (report_.is_dry_run)
            text_ += "; nothing was written";
        else if (!report_.project.empty())
            text_ += ", project " + printable(report_.project.string());
        text_ += '\n';
    }

    /// Distances of the subject lines below (-) or above their base lines.
    void add_levels() {
        if (!report_.has_levels || report_.pairs.empty())
            return;
        std::vector<double> distances;
        for (const ImportedPair& pair : report_.pairs)
            if (const auto distance = pair.distance_before_lu())
                distances.push_back(*distance);
        if (!distances.empty()) {
            std::ranges::sort(distances);
            text_ += formatted("Before, subject lines stood %+.1f to %+.1f LU from their base lines, half of "
                               "them below %+.1f LU.\n",
                               distances.front(), distances.back(), distances[distances.size() / 2]);
        }
        text_ +=
            formatted("Now %zu of %zu stand within 0.1 LU.\n", report_.matched_pairs(), report_.pairs.size());
    }

    void add_remarks() {
        const auto has_remark = [](const ImportedPair& pair) { return !pair.remark.empty(); };
        const auto count = static_cast<std::size_t>(std::ranges::count_if(report_.pairs, has_remark));
        if (count == 0)
            return;
        add_title("Not as asked", count);
        for (const ImportedPair& pair : report_.pairs) {
            if (has_remark(pair))
                text_ += "  " + below(report_.subject_folder, pair.subject.file) + ": " +
                         printable(pair.remark) + '\n';
        }
        text_ += '\n';
    }

    void add_title(const std::string& title, std::size_t count) {
        text_ += formatted("%s (%zu):\n", title.c_str(), count);
    }

    void end_list(std::size_t count) {
        if (count > max_names)
            text_ += formatted("  and %zu more; --json lists all\n", count - max_names);
        text_ += '\n';
    }

    void add_list(const char* title, const std::vector<fs::path>& files, const fs::path& folder) {
        if (files.empty())
            return;
        add_title(title, files.size());
        for (std::size_t i = 0; i < std::min(files.size(), max_names); ++i)
            text_ += "  " + below(folder, files[i]) + '\n';
        end_list(files.size());
    }

    void add_near_matches() {
        const auto& lines = report_.survey.near_lines;
        if (lines.empty())
            return;
        add_title("Without a partner, but nearly named as a base line", lines.size());
        for (std::size_t i = 0; i < std::min(lines.size(), max_names); ++i) {
            std::string differences;
            for (const std::string_view difference : lines[i].differences)
                differences.append(differences.empty() ? "" : ", ").append(difference);
            text_ += "  " + below(report_.subject_folder, lines[i].subject) + "  " +
                     below(report_.base_folder, lines[i].base) + "  (" + differences + ")\n";
        }
        end_list(lines.size());
    }

    void add_same_names(const char* side, const std::vector<matching::SameName>& names,
                        const fs::path& folder) {
        if (names.empty())
            return;
        add_title(std::string("Names that stand more than once on the ") + side + " side", names.size());
        for (std::size_t i = 0; i < std::min(names.size(), max_names); ++i) {
            text_ += " ";
            for (const fs::path& file : names[i].files)
                text_ += " " + below(folder, file);
            text_ += '\n';
        }
        end_list(names.size());
    }

    const ImportReport& report_;
    std::size_t group_columns_ = 5;
    std::string text_;
};

} // namespace

std::string text_summary(const ImportReport& report) { return Summary(report).text(); }

} // namespace headless::report
