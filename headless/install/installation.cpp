#include "headless/install/installation.hpp"

#include "headless/base/atomic_file.hpp"
#include "headless/base/file_reading.hpp"
#include "headless/install/manifest.hpp"
#include "headless/install/sha256.hpp"

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <system_error>
#include <utility>

namespace headless::install {
namespace {

namespace fs = std::filesystem;

using report::FileAction;
using report::InstalledFile;

constexpr const char* is_changed = "it has been changed since it was installed";
constexpr const char* is_foreign = "it was not installed by this program";
constexpr const char* is_no_file = "it is a link or a folder";

/// What is to be done with one file.
struct Step {
    InstalledFile outcome;
    std::string bytes{}; ///< to write
    std::string sum{};   ///< of these bytes
};

struct Present {
    bool is_there = false;
    std::string sum{}; ///< empty for a link or a folder
};

Result<Present> look_at(const fs::path& file) {
    std::error_code error;
    const fs::file_status status = fs::symlink_status(file, error);
    if (status.type() == fs::file_type::not_found)
        return Present{};
    if (error)
        return tl::unexpected(system_failure(file, error.value()));
    if (!fs::is_regular_file(status))
        return Present{.is_there = true};
    return text_of(file).map([](const std::optional<std::string>& text) {
        return Present{true, sha256(text.value_or(""))};
    });
}

std::string free_name(const fs::path& folder, const std::string& path) {
    std::string name = path + ".saved";
    std::error_code missing;
    for (int number = 2; fs::exists(fs::symlink_status(folder / name, missing)); ++number)
        name = path + ".saved-" + std::to_string(number);
    return name;
}

/// Installation and removal of the files of one resource folder.
class Installation {
public:
    Installation(const fs::path& folder, Manifest installed)
        : folder_(folder), installed_(std::move(installed)) {}

    Result<Step> plan_file(const std::string& path, const fs::path& source, bool replaces) const {
        const auto bytes = text_of(source);
        if (!bytes || !*bytes)
            return tl::unexpected(bytes ? path_failure(source, "is not a file") : bytes.error());
        const auto present = look_at(folder_ / path);
        if (!present)
            return tl::unexpected(present.error());
        Step step{{path}, **bytes, sha256(**bytes)};
        if (!present->is_there)
            return step;
        const std::string reason = reason_to_keep(path, *present);
        step.outcome.action = present->sum == step.sum     ? FileAction::unchanged
                              : reason.empty() || replaces ? FileAction::replaced
                                                           : FileAction::kept;
        if (step.outcome.action == FileAction::kept)
            step.outcome.reason = reason;
        if (step.outcome.action == FileAction::replaced && !reason.empty())
            step.outcome.saved_as = free_name(folder_, path);
        return step;
    }

    /// For a file that is to go. Nothing if it has gone already.
    Result<std::optional<Step>> plan_removal(const std::string& path) const {
        return look_at(folder_ / path).map([&](const Present& present) -> std::optional<Step> {
            if (!present.is_there)
                return std::nullopt;
            const std::string reason = reason_to_keep(path, present);
            return Step{{path, reason.empty() ? FileAction::removed : FileAction::kept, reason}};
        });
    }

    /// The list after these steps.
    Manifest list_after(const std::vector<Step>& steps) const {
        Manifest list{.folders = installed_.folders};
        for (const auto& [outcome, bytes, sum] : steps) {
            const auto listed = installed_.files.find(outcome.path);
            const bool is_listed = listed != installed_.files.end();
            const bool is_wanted = !sum.empty();
            if (outcome.action == FileAction::installed || outcome.action == FileAction::replaced ||
                (outcome.action == FileAction::unchanged && is_listed))
                list.files[outcome.path] = {sum};
            else if (outcome.action == FileAction::kept && is_wanted && is_listed)
                list.files.insert(*listed);
        }
        return list;
    }

    /// Makes the folder of a path; lists what had to be made.
    Result<void> make_folder_of(const std::string& path, Manifest& list) const {
        fs::path made;
        for (const fs::path& part : fs::path(path).parent_path()) {
            made /= part;
            std::error_code error;
            if (fs::create_directory(folder_ / made, error))
                list.folders.insert(made.generic_string());
            if (error)
                return tl::unexpected(system_failure(folder_ / made, error.value()));
        }
        return {};
    }

    Result<void> carry_out(const Step& step) const {
        const fs::path file = folder_ / step.outcome.path;
        std::error_code error;
        if (!step.outcome.saved_as.empty())
            fs::rename(file, folder_ / step.outcome.saved_as, error);
        if (step.outcome.action == FileAction::removed)
            fs::remove(file, error);
        if (error)
            return tl::unexpected(system_failure(file, error.value()));
        if (step.outcome.action == FileAction::installed || step.outcome.action == FileAction::replaced)
            return write_file(file, step.bytes);
        return {};
    }

    Result<void> carry_out(const std::vector<Step>& steps) const {
        for (const Step& step : steps)
            if (auto result = carry_out(step); !result)
                return result;
        return {};
    }

    Result<void> install(const std::vector<Step>& steps) const {
        remove_abandoned();
        Manifest list = list_after(steps);
        for (const auto& [path, sums] : list.files)
            if (auto made = make_folder_of(path, list); !made)
                return made;
        return make_folder_of(manifest_path, list)
            .and_then([&] { return write_manifest(with_earlier(list), folder_); })
            .and_then([&] { return carry_out(steps); })
            .and_then([&] { return write_manifest(list, folder_); });
    }

    /// Whoever begins a file in a folder removes what killed writers left there.
    void remove_abandoned() const {
        std::set<fs::path> folders{fs::path(manifest_path).parent_path()};
        for (const auto& [path, sums] : installed_.files)
            folders.insert(fs::path(path).parent_path());
        for (const fs::path& folder : folders)
            static_cast<void>(AtomicFile::create(folder_ / folder / "any"));
    }

    Result<void> remove_list_and_folders() const {
        std::error_code error;
        fs::remove(folder_ / manifest_path, error);
        if (error)
            return tl::unexpected(system_failure(folder_ / manifest_path, error.value()));
        const std::set<std::string>& folders = installed_.folders;
        for (auto path = folders.rbegin(); path != folders.rend(); ++path) // the inner ones first
            if (std::error_code not_empty; fs::is_directory(fs::symlink_status(folder_ / *path, not_empty)))
                fs::remove(folder_ / *path, not_empty);
        return {};
    }

    const Manifest& installed() const { return installed_; }

private:
    /// Empty if the file is as it was installed.
    std::string reason_to_keep(const std::string& path, const Present& present) const {
        if (present.sum.empty())
            return is_no_file;
        if (!installed_.files.contains(path))
            return is_foreign;
        return installed_.has(path, present.sum) ? "" : is_changed;
    }

    /// What is ours while the steps are carried out: each file as it was or as it will be.
    Manifest with_earlier(Manifest list) const {
        for (const auto& [path, sums] : installed_.files)
            list.files[path].insert(sums.begin(), sums.end());
        return list;
    }

    const fs::path& folder_;
    Manifest installed_;
};

Result<void> plan_removals(const Installation& installation, const Package& kept, std::vector<Step>& steps) {
    for (const auto& [path, sums] : installation.installed().files) {
        if (kept.contains(path))
            continue;
        auto step = installation.plan_removal(path);
        if (!step)
            return tl::unexpected(step.error());
        if (*step)
            steps.push_back(std::move(**step));
    }
    return {};
}

Result<std::vector<Step>> plan(const Installation& installation, const Package& package, bool replaces) {
    std::vector<Step> steps;
    for (const auto& [path, source] : package) {
        auto step = installation.plan_file(path, source, replaces);
        if (!step)
            return tl::unexpected(step.error());
        steps.push_back(std::move(*step));
    }
    return plan_removals(installation, package, steps).map([&] {
        std::ranges::sort(steps, {}, [](const Step& step) { return step.outcome.path; });
        return steps;
    });
}

std::vector<InstalledFile> outcomes_of(std::vector<Step>&& steps) {
    std::vector<InstalledFile> outcomes;
    outcomes.reserve(steps.size());
    for (Step& step : steps)
        outcomes.push_back(std::move(step.outcome));
    return outcomes;
}

} // namespace

Result<std::vector<InstalledFile>> install(const Package& package, const fs::path& resource_folder,
                                           const Options& options) {
    auto listed = read_manifest(resource_folder);
    if (!listed)
        return tl::unexpected(listed.error());
    const Installation installation(resource_folder, std::move(*listed));
    return plan(installation, package, options.replaces).and_then([&](std::vector<Step> steps) {
        const auto done = options.is_dry_run ? Result<void>() : installation.install(steps);
        return done.map([&] { return outcomes_of(std::move(steps)); });
    });
}

Result<std::vector<InstalledFile>> uninstall(const fs::path& resource_folder, const Options& options) {
    auto listed = read_manifest(resource_folder);
    if (!listed)
        return tl::unexpected(listed.error());
    if (!listed->is_there)
        return std::vector<InstalledFile>();
    const Installation installation(resource_folder, std::move(*listed));
    return plan(installation, {}, false).and_then([&](std::vector<Step> steps) {
        const auto done = options.is_dry_run ? Result<void>() : installation.carry_out(steps).and_then([&] {
            installation.remove_abandoned();
            return installation.remove_list_and_folders();
        });
        return done.map([&] { return outcomes_of(std::move(steps)); });
    });
}

} // namespace headless::install
