#include "headless/jobs/project_backup.hpp"

#include "headless/base/file_reading.hpp"
#include "headless/chunk/lines.hpp"
#include "headless/rpp/rpp.hpp"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace headless::jobs {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t max_line_bytes = 4096;

// Of the project's block. Before it there may be a byte order mark or blank lines.
std::string_view first_line(std::string_view text) {
    text.remove_prefix(std::min(text.find('<'), text.size()));
    return text.substr(0, std::min({text.find('\n'), text.size(), max_line_bytes}));
}

Result<std::string> first_line_of(const fs::path& file) {
    return beginning_of(file, max_line_bytes).map([](const std::optional<std::string>& text) {
        return std::string(first_line(text.value_or("")));
    });
}

bool has_time(std::string_view line) { return chunk::number_at(chunk::Text::made(line), 3, 0.0) > 0.0; }

/// The names of backups, in the order in which they are given.
fs::path backup_of(const fs::path& file, int number) {
    fs::path backup = file;
    return backup += "-bak" + (number == 1 ? "" : std::to_string(number));
}

/// The number of the first backup that does not exist.
int next_backup(const fs::path& file) {
    int number = 1;
    std::error_code error;
    while (fs::exists(fs::symlink_status(backup_of(file, number), error)))
        ++number;
    return number;
}

Result<bool> is_kept_already(const fs::path& file, std::string_view line) {
    const int next = next_backup(file);
    if (next == 1)
        return false;
    return first_line_of(backup_of(file, next - 1)).map([&](const std::string& kept) {
        return kept == line;
    });
}

/// Whether this program saved the file, having read it from the one of which the project was read.
Result<bool> was_made_from(const project::Project& project, const fs::path& file, std::string_view line) {
    if (!project.source || !has_time(line) || first_line(*project.source->text) != line)
        return false;
    return text_of(file).map(
        [&](const std::optional<std::string>& text) { return text != *project.source->text; });
}

/// @param line  the file's first; empty if there is no project
Result<bool> is_to_be_kept(const project::Project& project, const fs::path& file, const std::string& line,
                           const AtomicFile& replacement) {
    if (line.empty() || line.starts_with(rpp::beginning_of_own_projects()))
        return false;
    return is_kept_already(file, line)
        .and_then(
            [&](bool is_kept) { return is_kept ? Result<bool>(true) : was_made_from(project, file, line); })
        .and_then([&](bool is_safe) { return is_safe ? Result<bool>(true) : replacement.has_bytes_of(file); })
        .map([](bool is_safe) { return !is_safe; });
}

} // namespace

Result<bool> share_time_of_saving(const fs::path& left, const fs::path& right) {
    return first_line_of(left).and_then([&](const std::string& line) -> Result<bool> {
        if (!has_time(line))
            return false;
        return first_line_of(right).map([&](const std::string& other) { return other == line; });
    });
}

Result<fs::path> back_up_original(const project::Project& project, const fs::path& file,
                                  const AtomicFile& replacement) {
    return first_line_of(file)
        .and_then([&](const std::string& line) { return is_to_be_kept(project, file, line, replacement); })
        .and_then([&](bool is_kept) -> Result<fs::path> {
            if (!is_kept)
                return fs::path();
            fs::path copy = backup_of(file, next_backup(file));
            return copy_atomically(file, copy).map([&] { return copy; });
        })
        .map_error([](const Failure& failure) {
            return with_remark(failure, "the project cannot be kept as it was");
        });
}

} // namespace headless::jobs
