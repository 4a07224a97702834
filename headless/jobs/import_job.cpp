#include "headless/jobs/import_job.hpp"

#include "headless/base/atomic_file.hpp"
#include "headless/base/interruption.hpp"
#include "headless/jobs/disk_reservation.hpp"
#include "headless/jobs/earlier_project.hpp"
#include "headless/jobs/import_session.hpp"
#include "headless/jobs/output_guard.hpp"
#include "headless/jobs/project_output.hpp"
#include "headless/jobs/render_folder.hpp"
#include "headless/report/printable.hpp"
#include "headless/report/remarks.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace headless::jobs {
namespace {

namespace fs = std::filesystem;

/// Estimated size of the project in bytes: a fixed amount per pair, and a line of an envelope for each 10 ms
/// of a subject line, which takes a quarter of its audio or less.
std::uintmax_t expected_project_size(const ImportPlan& plan) {
    constexpr std::uintmax_t bytes_per_pair = 4096;
    std::uintmax_t bytes = bytes_per_pair * (plan.survey.pairs.size() + 16);
    for (const fs::path& line : plan.subject_lines) {
        std::error_code error;
        const std::uintmax_t size = fs::file_size(line, error);
        bytes += error ? 0 : size / 4;
    }
    return bytes;
}

std::string list_of(const std::vector<fs::path>& files) {
    std::string list;
    for (const fs::path& file : files)
        list += report::printable(file.string()) + '\n';
    return list;
}

/// The steps of one import, from a plan on.
class ImportJob {
public:
    ImportJob(const ImportOptions& options, ImportPlan plan, const BeginPair& begin_pair)
        : options_(options), plan_(std::move(plan)), begin_pair_(begin_pair), guard_(plan_.subject_lines) {
        guard_.protect(plan_.base_lines);
    }

    Result<report::ImportReport> run(Result<fs::path> plugin) {
        return check_outputs()
            .and_then([&] { return std::move(plugin); })
            .and_then([&](const fs::path& file) { return ImportSession::open(file, guard_); })
            .and_then([&](ImportSession&& session) {
                session_.emplace(std::move(session));
                return session_->open_project(options_, plan_);
            })
            .and_then([&] { return options_.is_dry_run ? import_pairs() : import_to_disk(); })
            .map([&](report::ImportReport&& report) {
                report.survey = std::move(plan_.survey);
                return std::move(report);
            });
    }

private:
    Result<void> check_outputs() const {
        return options_.is_dry_run ? Result<void>() : jobs::check_outputs(options_, plan_, guard_);
    }

    Result<report::ImportReport> import_to_disk() {
        return EarlierProject::read(plan_.project).and_then([&](const EarlierProject& earlier) {
            guard_.spare(earlier.audio());
            return make_render_folder().and_then([&](const std::optional<RenderFolder>&) {
                DiskReservation project_space(true_path(plan_.project).parent_path(),
                                              expected_project_size(plan_));
                return import_pairs().map([&](report::ImportReport&& report) {
                    project_space.release();
                    if (is_refused(report))
                        session_->remove_renders();
                    else
                        write(earlier, report);
                    return std::move(report);
                });
            });
        });
    }

    /// None if nothing will be rendered.
    Result<std::optional<RenderFolder>> make_render_folder() const {
        if (!options_.ride)
            return std::nullopt;
        const fs::path folder = session_->render_folder();
        return check_render_folder(plan_, folder)
            .and_then([&] { return RenderFolder::make(folder); })
            .map([](RenderFolder&& made) { return std::optional(std::move(made)); });
    }

    /// The renders of a project that will not be written are not needed.
    Result<report::ImportReport> import_pairs() {
        report::ImportReport report = session_->run(
            options_, plan_, [&](const fs::path& base) { begin_pair_(base, plan_.survey.pairs.size()); });
        if (interruption::signal_number() == 0) {
            for (const Failure& loss : session_->losses(plan_.project))
                report.losses.push_back(loss.message);
            return report;
        }
        session_->remove_renders();
        return tl::unexpected(Failure{.message = "nothing was imported", .kind = FailureKind::interrupted});
    }

    /// Losses that the user has not accepted stop the import before it has written anything but renders.
    bool is_refused(report::ImportReport& report) const {
        if (report.losses.empty() || options_.accepts_losses)
            return false;
        report.failures.push_back(refusal_of(plan_.project, report.losses.size()).message);
        return true;
    }

    void write(const EarlierProject& earlier, report::ImportReport& report) {
        const auto saved = session_->save(plan_.project, earlier, Losses::accept);
        if (saved) {
            report.project = plan_.project;
            report.backup = saved->backup;
            if (!saved->backup.empty())
                report.notices.push_back(report::backup_message(plan_.project, saved->backup));
        }
        for (const Failure& failure : saved ? saved->leftovers : std::vector{saved.error()})
            report.failures.push_back(failure.message);
        write_lists(report);
    }

    void write_lists(report::ImportReport& report) const {
        const auto write = [&](const fs::path& file, const std::string& text) {
            if (file.empty())
                return;
            if (const auto written = write_file(file, text); !written)
                report.failures.push_back(written.error().message);
        };
        write(options_.unmatched, list_of(plan_.survey.unpaired_subjects));
        write(options_.csv, report::csv_table(report.pairs));
    }

    const ImportOptions& options_;
    ImportPlan plan_;
    const BeginPair& begin_pair_;
    OutputGuard guard_;
    std::optional<ImportSession> session_;
};

} // namespace

Result<report::ImportReport> run_import(const ImportOptions& options, Result<fs::path> plugin,
                                        const BeginPair& begin_pair) {
    return plan_import(options).and_then([&](ImportPlan&& plan) {
        return ImportJob(options, std::move(plan), begin_pair).run(std::move(plugin));
    });
}

} // namespace headless::jobs
