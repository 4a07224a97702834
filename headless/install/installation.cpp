#include "headless/install/installation.hpp"

#include "headless/base/atomic_file.hpp"
#include "headless/base/file_reading.hpp"
#include "headless/base/interruption.hpp"
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

constexpr const char* earlier_suffix = ".felspar-old";

/// What is to be done with one file.
struct Step {
    InstalledFile outcome;
    std::string bytes{}; ///< to write
    std::string sum{};   ///< of these bytes
};

/// A file that is complete but does not have its name yet.
struct Staged {
    const Step& step;
    AtomicFile file;
};

bool writes(const Step& step) {
    return step.outcome.action == FileAction::installed || step.outcome.action == FileAction::replaced;
}

bool is_windows_library(const std::string& path) { return path.ends_with(".dll"); }

/// The name that the present file gets before the new one comes; empty if the new one takes its place in one
/// step. Windows renames a library that is loaded, but does not replace it.
std::string name_aside(const InstalledFile& file) {
    const bool may_be_loaded = file.action == FileAction::replaced && is_windows_library(file.path);
    return file.saved_as.empty() && may_be_loaded ? file.path + earlier_suffix : file.saved_as;
}

/// Says what mostly is the reason when Windows does not give a library away.
Failure about_use(Failure failure) {
    const bool is_library = failure.path.string().find(".dll") != std::string::npos;
    return is_library ? with_remark(std::move(failure), "close the workstation first") : failure;
}

Result<void> remove_file(const fs::path& file) {
    std::error_code error;
    fs::remove(file, error);
    return error ? tl::unexpected(about_use(system_failure(file, error.value()))) : Result<void>();
}

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
        for (const Step& step : steps) {
            const FileAction action = step.outcome.action;
            const auto listed = installed_.files.find(step.outcome.path);
            const bool is_listed = listed != installed_.files.end();
            const bool is_wanted = !step.sum.empty();
            if (writes(step) || (action == FileAction::unchanged && is_listed))
                list.files[step.outcome.path] = {step.sum};
            else if (action == FileAction::kept && is_wanted && is_listed)
                list.files.insert(*listed);
        }
        return list;
    }

    /// The folders that are missing for these steps and the list. Fails if something else is in one's place.
    Result<std::set<std::string>> missing_folders(const std::vector<Step>& steps) const {
        std::set<std::string> missing;
        Manifest list = list_after(steps);
        list.files.try_emplace(manifest_path);
        for (const auto& [path, sums] : list.files) {
            fs::path folder;
            for (const fs::path& part : fs::path(path).parent_path()) {
                folder /= part;
                std::error_code error;
                const fs::path place = folder_ / folder;
                if (fs::is_directory(place, error))
                    continue;
                if (fs::symlink_status(place, error).type() != fs::file_type::not_found)
                    return tl::unexpected(path_failure(place, "is not a folder"));
                missing.insert(folder.generic_string());
            }
        }
        return missing;
    }

    /// Until all new files are written beside the old ones, nothing of what was there is touched.
    Result<void> install(const std::vector<Step>& steps, const std::set<std::string>& missing) const {
        remove_abandoned();
        static_cast<void>(remove_earlier_libraries());
        auto done = make_folders(missing).and_then([&] { return stage(steps); }).and_then([&](auto&& staged) {
            return not_interrupted("nothing was installed").and_then([&] {
                return exchange(steps, staged, missing);
            });
        });
        if (!done)
            remove_empty(missing);
        return done;
    }

    Result<void> uninstall(const std::vector<Step>& steps) const {
        return not_interrupted("nothing was removed")
            .and_then([&] { return remove_files(steps); })
            .and_then([&] { return remove_earlier_libraries(); })
            .and_then([&] {
                remove_abandoned();
                return remove_file(folder_ / manifest_path);
            })
            .map([&] { remove_empty(installed_.folders); });
    }

    const Manifest& installed() const { return installed_; }

private:
    static Result<void> not_interrupted(const char* outcome) {
        if (interruption::signal_number() == 0)
            return {};
        return tl::unexpected(Failure{.message = outcome, .kind = FailureKind::interrupted});
    }

    Result<void> make_folders(const std::set<std::string>& missing) const {
        for (const std::string& path : missing) // the outer ones first
            if (std::error_code error; !fs::create_directory(folder_ / path, error) && error)
                return tl::unexpected(system_failure(folder_ / path, error.value()));
        return {};
    }

    void remove_empty(const std::set<std::string>& folders) const {
        for (auto path = folders.rbegin(); path != folders.rend(); ++path) // the inner ones first
            if (std::error_code not_empty; fs::is_directory(fs::symlink_status(folder_ / *path, not_empty)))
                fs::remove(folder_ / *path, not_empty);
    }

    /// Writes what is to be installed, complete but without its name.
    Result<std::vector<Staged>> stage(const std::vector<Step>& steps) const {
        std::vector<Staged> staged;
        for (const Step& step : steps) {
            if (!writes(step))
                continue;
            // What is moved aside may be a link, which must not be followed. Its new name is still free.
            const bool is_kept = !step.outcome.saved_as.empty();
            auto file = AtomicFile::create(folder_ / (is_kept ? step.outcome.saved_as : step.outcome.path));
            if (!file)
                return tl::unexpected(file.error());
            if (auto written = file->write(step.bytes); !written)
                return tl::unexpected(written.error());
            staged.push_back({step, std::move(*file)});
        }
        return staged;
    }

    /// A file of the user's is moved aside before the list names its path as ours. If that or what follows
    /// fails, files go back to the names that nobody else has got.
    Result<void> exchange(const std::vector<Step>& steps, std::vector<Staged>& staged,
                          const std::set<std::string>& made) const {
        Manifest list = list_after(steps);
        list.folders.insert(made.begin(), made.end());
        Manifest under_way = with_earlier(list);
        bool is_listed = false;
        auto done = move_aside(steps)
                        .and_then([&] { return write_manifest(under_way, folder_); })
                        .and_then([&] {
                            is_listed = true;
                            return remove_files(steps);
                        })
                        .and_then([&] { return publish(staged); });
        if (done) {
            static_cast<void>(remove_earlier_libraries());
            return write_manifest(list, folder_);
        }
        move_back(steps, under_way);
        if (is_listed)
            static_cast<void>(write_manifest(under_way, folder_));
        return done;
    }

    Result<void> move_aside(const std::vector<Step>& steps) const {
        for (const Step& step : steps) {
            const fs::path file = folder_ / step.outcome.path;
            std::error_code error;
            if (const std::string name = name_aside(step.outcome); !name.empty())
                fs::rename(file, folder_ / name, error);
            if (error)
                return tl::unexpected(about_use(system_failure(file, error.value())));
        }
        return {};
    }

    /// What is back is no longer listed with the sum of the file that was to replace it.
    void move_back(const std::vector<Step>& steps, Manifest& under_way) const {
        for (const Step& step : steps) {
            const std::string& path = step.outcome.path;
            const std::string name = name_aside(step.outcome);
            std::error_code error;
            if (name.empty() || fs::symlink_status(folder_ / path, error).type() != fs::file_type::not_found)
                continue;
            fs::rename(folder_ / name, folder_ / path, error);
            under_way.files.erase(path);
            if (const auto listed = installed_.files.find(path); listed != installed_.files.end())
                under_way.files.insert(*listed);
        }
    }

    Result<void> remove_files(const std::vector<Step>& steps) const {
        for (const Step& step : steps)
            if (step.outcome.action == FileAction::removed)
                if (auto removed = remove_file(folder_ / step.outcome.path); !removed)
                    return removed;
        return {};
    }

    Result<void> publish(std::vector<Staged>& staged) const {
        for (auto& [step, file] : staged) {
            const bool is_replaced =
                step.outcome.action == FileAction::replaced && name_aside(step.outcome).empty();
            const auto existing = is_replaced ? ExistingFile::replace : ExistingFile::keep;
            if (auto published = file.publish_as(folder_ / step.outcome.path, existing); !published)
                return published;
        }
        return {};
    }

    /// Fails while the workstation has one loaded.
    Result<void> remove_earlier_libraries() const {
        for (const auto& [path, sums] : installed_.files)
            if (is_windows_library(path))
                if (auto removed = remove_file(folder_ / (path + earlier_suffix)); !removed)
                    return removed;
        return {};
    }

    void remove_abandoned() const {
        std::set<fs::path> folders{fs::path(manifest_path).parent_path()};
        for (const auto& [path, sums] : installed_.files)
            folders.insert(fs::path(path).parent_path());
        for (const fs::path& folder : folders)
            remove_abandoned_in(folder_ / folder);
    }

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
        return installation.missing_folders(steps)
            .and_then([&](const std::set<std::string>& missing) {
                return options.is_dry_run ? Result<void>() : installation.install(steps, missing);
            })
            .map([&] { return outcomes_of(std::move(steps)); });
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
        const auto done = options.is_dry_run ? Result<void>() : installation.uninstall(steps);
        return done.map([&] { return outcomes_of(std::move(steps)); });
    });
}

} // namespace headless::install
