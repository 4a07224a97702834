#include "headless/jobs/output_guard.hpp"

#include "common/letter_case.hpp"
#include "headless/audio/render.hpp"
#include "headless/base/atomic_file.hpp"
#include "headless/base/file_reading.hpp"
#include "headless/base/folder.hpp"
#include "headless/jobs/project_backup.hpp"
#include "headless/report/import_report.hpp"
#include "headless/rpp/rpp.hpp"

#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>

namespace headless::jobs {
namespace {

Result<void> refuse_if(bool is_refused, const std::filesystem::path& target, const std::string& reason) {
    if (!is_refused)
        return {};
    return tl::unexpected(path_failure(target, "not overwritten, as it " + reason, FailureKind::refused));
}

/// Also true for a broken link.
bool is_taken(const std::filesystem::path& target) {
    std::error_code error;
    return std::filesystem::exists(std::filesystem::symlink_status(target, error));
}

Result<bool> is_own_table(const std::filesystem::path& file) {
    const std::string heading = report::csv_heading();
    return beginning_of(file, heading.size()).map([&](const std::optional<std::string>& beginning) {
        return beginning == heading;
    });
}

/// By its form on any system: a file of another one is no path here.
bool is_absolute(std::string_view path) {
    const bool has_drive = path.size() > 2 && path[1] == ':' && (path[2] == '\\' || path[2] == '/');
    return path.starts_with('/') || path.starts_with("\\\\") || has_drive;
}

bool is_path_of_wav(std::string_view line) {
    constexpr std::string_view ending = ".wav";
    return is_absolute(line) && line.size() > ending.size() && letter_case::lowered(line).ends_with(ending);
}

/// A list has no heading: it is known by its form, absolute paths of wav files and nothing else.
Result<bool> is_own_list(const std::filesystem::path& file) {
    return text_of(file).map([](const std::optional<std::string>& text) {
        std::istringstream lines(text.value_or(""));
        for (std::string line; std::getline(lines, line);)
            if (!is_path_of_wav(line))
                return false;
        return text.has_value();
    });
}

} // namespace

Result<void> OutputGuard::spares_inputs(const std::filesystem::path& target) const {
    return resolve_links(target)
        .map_error([](Failure failure) {
            failure.kind = FailureKind::refused;
            return failure;
        })
        .and_then([&](const std::filesystem::path&) {
            return refuse_if(inputs_.contains(target), target, "is one of the recordings");
        });
}

Result<void> OutputGuard::permits_audio(const std::filesystem::path& target) const {
    if (!is_taken(target))
        return {};
    return spares_inputs(target)
        .and_then([&] {
            return refuse_if(written_.contains(target), target,
                             "was written for another recording of that name");
        })
        .and_then([&] { return audio::is_own_file(target); })
        .and_then([&](bool is_own) { return refuse_if(!is_own, target, "was not made by this command"); });
}

Result<workstation::ExistingRender> OutputGuard::judge_render(const std::filesystem::path& target) const {
    const auto permitted = permits_audio(target);
    if (permitted)
        return spared_.contains(target) ? workstation::ExistingRender::use_if_same
                                        : workstation::ExistingRender::replace;
    if (permitted.error().kind == FailureKind::refused)
        return workstation::ExistingRender::avoid;
    return tl::unexpected(permitted.error());
}

Result<void> OutputGuard::permits_in_folder(const std::filesystem::path& target, const IsOwn& is_own,
                                            const std::string& kind) const {
    std::error_code error;
    if (!std::filesystem::is_directory(folder_of(target), error))
        return tl::unexpected(path_failure(target, "the folder for the " + kind + " does not exist"));
    if (!is_taken(target))
        return {};
    return spares_inputs(target).and_then([&] { return is_own(target); }).and_then([&](bool is_ours) {
        return refuse_if(!is_ours, target, "is no " + kind + " made by this command");
    });
}

Result<void> OutputGuard::permits_project(const std::filesystem::path& target,
                                          const std::filesystem::path& continued) const {
    const auto is_own = [&](const std::filesystem::path& file) {
        return rpp::is_own_project(file).and_then([&](bool is_ours) -> Result<bool> {
            return is_ours || continued.empty() ? is_ours : share_time_of_saving(file, continued);
        });
    };
    return permits_in_folder(target, is_own, "project file");
}

Result<void> OutputGuard::permits_table(const std::filesystem::path& target) const {
    return permits_in_folder(target, is_own_table, "table");
}

Result<void> OutputGuard::permits_list(const std::filesystem::path& target) const {
    return permits_in_folder(target, is_own_list, "list");
}

} // namespace headless::jobs
