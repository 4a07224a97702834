#pragma once
// Observes an import from the host's side: what became of each planned pair, and how loud its lines were
// before and after.

#include "headless/base/failure.hpp"
#include "headless/jobs/output_guard.hpp"
#include "headless/matching/line_survey.hpp"
#include "headless/report/import_report.hpp"
#include "headless/workstation/workstation.hpp"

#include <deque>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace headless::jobs {

/// Observes the workstation's insertions as long as it exists. Each inserted file is looked up among the
/// planned pairs. All work on a pair is done before the next one begins; its lines are put on the only
/// selected track.
class PairRecorder {
public:
    struct Settings {
        bool match = false; ///< the levels of subject lines are matched, so levels are read
        bool ride = false;
        std::function<void(const std::filesystem::path& base)> begin_pair; ///< called before all other work
    };

    /// @param planned  in the order in which the import places pairs that have the same base line
    PairRecorder(workstation::Workstation& workstation, OutputGuard& guard,
                 std::span<const matching::LinePair> planned, Settings settings);
    ~PairRecorder();
    PairRecorder(const PairRecorder&) = delete;
    PairRecorder& operator=(const PairRecorder&) = delete;

    /// To be called when nothing more will be done to the last pair.
    void finish();

    /// In the order of the timeline.
    const std::vector<report::ImportedPair>& pairs() const { return pairs_; }

    const std::vector<std::filesystem::path>& renders() const { return renders_; }

    /// All failures, except those for lines that are too short or silent to be matched.
    const std::vector<Failure>& failures() const { return failures_; }

private:
    void inserted(const std::filesystem::path& file, project::Item* item);
    void begin(const matching::LinePair& pair, project::Item* item);
    void complete(const std::filesystem::path& subject, project::Item* item);
    void refuse(const char* side, std::vector<Failure> reports);
    void settle(std::vector<Failure> reports);
    void remark_truncations();
    void read_levels(report::ImportedPair& pair, std::vector<Failure>& reports);

    workstation::Workstation& workstation_;
    OutputGuard& guard_;
    Settings settings_;
    std::unordered_map<std::string, std::deque<std::filesystem::path>>
        planned_; ///< subject lines by base line
    std::vector<report::ImportedPair> pairs_;
    std::vector<Failure> failures_;
    std::vector<std::filesystem::path> renders_;
    project::Item* base_ = nullptr; ///< of the last pair, like subject_
    project::Item* subject_ = nullptr;
    std::filesystem::path awaited_subject_; ///< empty if the last pair has its subject line
};

} // namespace headless::jobs
