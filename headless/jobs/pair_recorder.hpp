#pragma once
// Observes an import from the host's side: which files were inserted as pairs, and how loud they were before
// and after.

#include "headless/base/failure.hpp"
#include "headless/jobs/output_guard.hpp"
#include "headless/report/import_report.hpp"
#include "headless/workstation/workstation.hpp"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace headless::jobs {

/// Observes the workstation's insertions as long as it exists. They come in pairs, base line first, each on
/// the only selected track. All work on a pair is done before the next one begins.
class PairRecorder {
public:
    struct Settings {
        bool match = false; ///< the subject lines are matched in level, so levels are read
        bool ride = false;
        std::function<void(const std::filesystem::path& base)> begin_pair; ///< called before all other work
    };

    PairRecorder(workstation::Workstation& workstation, OutputGuard& guard, Settings settings);
    ~PairRecorder();
    PairRecorder(const PairRecorder&) = delete;
    PairRecorder& operator=(const PairRecorder&) = delete;

    /// To be called when nothing more will be done to the last pair.
    void finish();

    const std::vector<report::ImportedPair>& pairs() const { return pairs_; }

    const std::vector<std::filesystem::path>& renders() const { return renders_; }

    /// All failures, except those for lines that are too short or silent to be matched in level.
    const std::vector<Failure>& failures() const { return failures_; }

private:
    void inserted(const std::filesystem::path& file, project::Item* item);
    void begin(const std::filesystem::path& base, project::Item* item);
    void complete(const std::filesystem::path& subject, project::Item* item);
    void refuse(const char* side, std::vector<Failure> reports);
    void settle(std::vector<Failure> reports);
    void remark_truncations();
    void read_levels(report::ImportedPair& pair, std::vector<Failure>& reports);

    workstation::Workstation& workstation_;
    OutputGuard& guard_;
    Settings settings_;
    std::vector<report::ImportedPair> pairs_;
    std::vector<Failure> failures_;
    std::vector<std::filesystem::path> renders_;
    project::Item* base_ = nullptr; ///< of the last pair, like subject_
    project::Item* subject_ = nullptr;
    bool awaits_subject_ = false;
};

} // namespace headless::jobs
