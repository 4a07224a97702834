#pragma once
// Watches an import from the host's side: which files were laid out as pairs, and how loud they were and are.

#include "headless/base/failure.hpp"
#include "headless/host/workstation.hpp"
#include "headless/output/output_guard.hpp"
#include "headless/report/import_report.hpp"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace headless {

/// Listens to the workstation's insertions as long as it lives. They come in pairs, base line first, each on
/// the only selected track; what is done to a pair is done before the next one begins.
class PairRecorder {
public:
    struct Settings {
        bool match = false; ///< the subject lines are levelled, so levels are read
        bool ride = false;
        std::function<void(const std::filesystem::path& base)> begin_pair; ///< before anything else is done
    };

    PairRecorder(Workstation& workstation, OutputGuard& guard, Settings settings);
    ~PairRecorder();
    PairRecorder(const PairRecorder&) = delete;
    PairRecorder& operator=(const PairRecorder&) = delete;

    /// Nothing more will be done to the last pair.
    void finish();

    const std::vector<ImportedPair>& pairs() const { return pairs_; }

    /// What went wrong, but for lines that are too short or silent to be levelled.
    const std::vector<Failure>& failures() const { return failures_; }

private:
    void inserted(const std::filesystem::path& file, Item* item);
    void begin(const std::filesystem::path& base, Item* item);
    void complete(const std::filesystem::path& subject, Item* item);
    void refuse(const char* side, std::vector<Failure> reports);
    void settle(std::vector<Failure> reports);
    void read_levels(ImportedPair& pair, std::vector<Failure>& reports);

    Workstation& workstation_;
    OutputGuard& guard_;
    Settings settings_;
    std::vector<ImportedPair> pairs_;
    std::vector<Failure> failures_;
    Item* base_ = nullptr; ///< of the last pair, as the next one
    Item* subject_ = nullptr;
    bool awaits_subject_ = false;
};

} // namespace headless
