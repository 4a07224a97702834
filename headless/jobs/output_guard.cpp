#include "headless/jobs/output_guard.hpp"

#include "headless/audio/render.hpp"
#include "headless/base/atomic_file.hpp"
#include "headless/base/file_reading.hpp"
#include "headless/report/import_report.hpp"
#include "headless/rpp/rpp.hpp"

#include <sstream>
#include <string>
#include <string_view>
#include <strings.h>
#include <system_error>

namespace headless::jobs {
namespace {

Failure refusal(const std::filesystem::path& target, const std::string& reason) {
    return path_failure(target, "not overwritten, as it " + reason, FailureKind::refused);
}

/// A broken link is a name that is taken, too.
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

bool is_path_of_wav(std::string_view line) {
    constexpr std::string_view ending = ".wav";
    return line.starts_with('/') && line.size() > ending.size() &&
           strncasecmp(line.end() - ending.size(), ending.data(), ending.size()) == 0;
}

/// It has no mark of its own: its form must do, absolute paths of wav files and nothing else.
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

Result<std::optional<Failure>> OutputGuard::objection_to_audio(const std::filesystem::path& target) const {
    if (!is_taken(target))
        return std::nullopt;
    if (const auto place = resolve_links(target); !place)
        return place.error();
    if (inputs_.contains(target))
        return refusal(target, "is one of the recordings");
    if (written_.contains(target))
        return refusal(target, "was written for another recording of that name");
    return audio::is_own_file(target).map([&](bool is_own) -> std::optional<Failure> {
        return is_own ? std::nullopt : std::optional(refusal(target, "was not made by this command"));
    });
}

Result<void> OutputGuard::permits_audio(const std::filesystem::path& target) const {
    return objection_to_audio(target).and_then([](const std::optional<Failure>& objection) {
        return objection ? tl::unexpected(*objection) : Result<void>();
    });
}

Result<workstation::ExistingRender> OutputGuard::judge_render(const std::filesystem::path& target) const {
    return objection_to_audio(target).map([&](const std::optional<Failure>& objection) {
        return objection                  ? workstation::ExistingRender::avoid
               : spared_.contains(target) ? workstation::ExistingRender::use_if_same
                                          : workstation::ExistingRender::replace;
    });
}

Result<void> OutputGuard::permits_in_folder(const std::filesystem::path& target, IsOwn* is_own,
                                            const char* kind) const {
    const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error))
        return tl::unexpected(
            path_failure(target, std::string("the folder for the ") + kind + " does not exist"));
    if (!is_taken(target))
        return {};
    if (const auto place = resolve_links(target); !place)
        return tl::unexpected(place.error());
    if (inputs_.contains(target))
        return tl::unexpected(refusal(target, "is one of the recordings"));
    return is_own(target).and_then([&](bool is_ours) -> Result<void> {
        if (is_ours)
            return {};
        return tl::unexpected(refusal(target, std::string("is no ") + kind + " made by this command"));
    });
}

Result<void> OutputGuard::permits_project(const std::filesystem::path& target) const {
    return permits_in_folder(target, rpp::is_own_project, "project file");
}

Result<void> OutputGuard::permits_table(const std::filesystem::path& target) const {
    return permits_in_folder(target, is_own_table, "table");
}

Result<void> OutputGuard::permits_list(const std::filesystem::path& target) const {
    return permits_in_folder(target, is_own_list, "list");
}

} // namespace headless::jobs
