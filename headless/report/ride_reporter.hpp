#pragma once
// Reports to the user during a run of rides: rows on one stream, failures on the other, and progress on a
// terminal.

#include "headless/base/failure.hpp"
#include "headless/report/progress.hpp"
#include "headless/report/ride_report.hpp"

#include <cstddef>
#include <filesystem>
#include <ostream>

namespace headless::report {

enum class ReportForm { text, json };

class RideReporter {
public:
    /// @param results   rows of the table, or JSON lines for both ridden and failed recordings
    /// @param failures  one line each
    /// @param total     number of recordings that will be begun
    /// @param terminal_descriptor  where progress is shown, if it is a terminal
    RideReporter(std::ostream& results, std::ostream& failures, ReportForm form, std::size_t total,
                 int terminal_descriptor);

    /// Work on the next recording starts.
    void begin(const std::filesystem::path& file);

    void ridden(const RideReport& report);

    /// @param path  of the recording, or of whatever else could not be done
    void failed(const std::filesystem::path& path, const Failure& failure);

    /// The project was saved over another program's, of which there is a backup.
    void kept(const std::filesystem::path& project, const std::filesystem::path& backup);

    /// The closing line of the text form.
    /// @param project  empty if none was written
    void finish(const std::filesystem::path& folder, const std::filesystem::path& project);

    std::size_t ridden_count() const { return ridden_count_; }
    bool anything_failed() const { return anything_failed_; }

private:
    std::ostream& results_;
    std::ostream& failures_;
    ReportForm form_;
    std::size_t total_;
    Progress progress_;
    std::size_t begun_count_ = 0;
    std::size_t ridden_count_ = 0;
    bool anything_failed_ = false;
};

} // namespace headless::report
