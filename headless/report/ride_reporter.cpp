#include "headless/report/ride_reporter.hpp"

#include "headless/report/printable.hpp"
#include "headless/report/remarks.hpp"

namespace headless::report {

RideReporter::RideReporter(std::ostream& results, std::ostream& failures, ReportForm form, std::size_t total,
                           int terminal_descriptor)
    : results_(results), failures_(failures), form_(form), total_(total), progress_(terminal_descriptor) {}

void RideReporter::begin(const std::filesystem::path& file) {
    progress_.show(++begun_count_, total_, file.filename().string());
}

void RideReporter::ridden(const RideReport& report) {
    progress_.erase();
    if (form_ == ReportForm::json)
        results_ << json_line(report);
    else
        results_ << (ridden_count_ == 0 ? text_heading() : "") << text_row(report);
    results_.flush();
    ++ridden_count_;
}

void RideReporter::failed(const std::filesystem::path& path, const Failure& failure) {
    progress_.erase();
    if (form_ == ReportForm::json)
        results_ << json_failure_line(path, failure.message) << std::flush;
    failures_ << "felspar: " << printable(failure.message) << std::endl;
    anything_failed_ = true;
}

void RideReporter::kept(const std::filesystem::path& project, const std::filesystem::path& backup) {
    progress_.erase();
    if (form_ == ReportForm::json)
        results_ << json_backup_line(project, backup) << std::flush;
    failures_ << "felspar: " << printable(backup_message(project, backup)) << std::endl;
}

void RideReporter::finish(const std::filesystem::path& folder, const std::filesystem::path& project) {
    progress_.erase();
    if (form_ == ReportForm::json || ridden_count_ == 0)
        return;
    results_ << "\n"
             << ridden_count_ << " of " << total_ << (total_ == 1 ? " file" : " files") << " ridden into "
             << printable(folder.string());
    if (!project.empty())
        results_ << ", project " << printable(project.string());
    results_ << std::endl;
}

} // namespace headless::report
