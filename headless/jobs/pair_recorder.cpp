#include "headless/jobs/pair_recorder.hpp"

#include "headless/audio/audio_cache.hpp"
#include "headless/audio/loudness.hpp"
#include "headless/report/remarks.hpp"
#include "headless/workstation/take_loudness.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <utility>

namespace headless::jobs {
namespace {

report::ImportedLine line_of(const std::filesystem::path& file, const project::Item* item) {
    if (item == nullptr)
        return {.file = file};
    return {.file = file,
            .is_placed = true,
            .position_seconds = item->position_seconds(),
            .length_seconds = item->length_seconds()};
}

/// The group whose tracks are filled at the moment: a line is put on a child of the group's track.
std::string group_of(const project::Project& project) {
    const project::Track* track = project.selected_tracks().at(0);
    return track != nullptr && track->parent() != nullptr ? track->parent()->name : "";
}

bool is_short(const report::ImportedLine& line) {
    return line.length_seconds < audio::momentary_window_seconds;
}

std::string distance_text(double lu) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "stands %+.1f LU from its base line", lu);
    return text.data();
}

/// Why the level was not matched, or how far from the base line's it is in the end.
std::string level_remark(const report::ImportedPair& pair) {
    if (is_short(pair.base))
        return "not levelled: its base line is shorter than 0.4 s";
    if (is_short(pair.subject))
        return "not levelled: shorter than 0.4 s";
    const auto base = pair.base.momentary_max_lufs;
    const auto subject = pair.subject.momentary_max_lufs;
    if (!base || !subject)
        return {}; // a failure gives the reason
    if (!std::isfinite(*base))
        return "not levelled: its base line is silent";
    if (!std::isfinite(*subject))
        return "not levelled: silent";
    return pair.is_matched() ? "" : distance_text(*subject - *base);
}

void add(std::string& remarks, const std::string& remark) {
    if (!remark.empty())
        remarks.append(remarks.empty() ? "" : "; ").append(remark);
}

/// The level of a subject line as recorded. A failure is reported, unless the line is too short.
std::optional<double> level_as_recorded(workstation::Workstation& workstation,
                                        const report::ImportedLine& line) {
    const auto level = workstation::recorded_momentary_maximum(workstation, line.file);
    if (level)
        return *level;
    if (!is_short(line))
        workstation.report(level.error());
    return std::nullopt;
}

/// The level of a placed line. A line that is too short has none, which is not a failure. The plug-in has
/// measured the line too, so the same failure may be among the reports already.
std::optional<double> level_as_placed(workstation::Workstation& workstation, const project::Item& item,
                                      std::vector<Failure>& reports) {
    const auto level = workstation::heard_momentary_maximum(workstation, *item.active_take());
    if (level)
        return *level;
    std::erase(reports, level.error());
    if (item.length_seconds() >= audio::momentary_window_seconds)
        reports.push_back(level.error());
    return std::nullopt;
}

/// Removes the failures that concern `file` from `reports` and returns them.
std::vector<Failure> extract(std::vector<Failure>& reports, const std::filesystem::path& file) {
    const auto first = std::stable_partition(reports.begin(), reports.end(),
                                             [&](const Failure& report) { return report.path != file; });
    std::vector<Failure> result(std::make_move_iterator(first), std::make_move_iterator(reports.end()));
    reports.erase(first, reports.end());
    return result;
}

} // namespace

PairRecorder::PairRecorder(workstation::Workstation& workstation, OutputGuard& guard,
                           std::span<const matching::LinePair> planned, Settings settings)
    : workstation_(workstation), guard_(guard), settings_(std::move(settings)) {
    for (const matching::LinePair& pair : planned)
        planned_[pair.base.string()].push_back(pair.subject);
    workstation_.on_insertion = [this](const std::filesystem::path& file, project::Item* item) {
        inserted(file, item);
    };
}

PairRecorder::~PairRecorder() { workstation_.on_insertion = nullptr; }

void PairRecorder::finish() {
    settle(workstation_.take_failures());
    if (!awaited_subject_.empty())
        add(pairs_.back().remark, "the import ended before its subject line");
}

void PairRecorder::inserted(const std::filesystem::path& file, project::Item* item) {
    if (file == awaited_subject_)
        return complete(file, item);
    if (const auto subjects = planned_.find(file.string());
        subjects != planned_.end() && !subjects->second.empty()) {
        const std::filesystem::path subject = subjects->second.front();
        subjects->second.pop_front();
        return begin({subject, file}, item);
    }
    failures_.push_back(path_failure(file, "was inserted out of turn, so no pair of the report has it"));
}

void PairRecorder::begin(const matching::LinePair& pair, project::Item* item) {
    std::vector<Failure> reports = workstation_.take_failures();
    std::vector<Failure> refusal = item == nullptr ? extract(reports, pair.base) : std::vector<Failure>();
    settle(std::move(reports)); // what is left concerns the previous pair
    pairs_.push_back({.group = group_of(workstation_.project()),
                      .base = line_of(pair.base, item),
                      .subject = {.file = pair.subject}});
    base_ = item;
    subject_ = nullptr;
    awaited_subject_ = pair.subject;
    refuse("base", std::move(refusal));
    if (settings_.begin_pair)
        settings_.begin_pair(pair.base);
}

void PairRecorder::complete(const std::filesystem::path& subject, project::Item* item) {
    report::ImportedPair& pair = pairs_.back();
    pair.subject = line_of(subject, item);
    subject_ = item;
    awaited_subject_.clear();
    if (item == nullptr)
        refuse("subject", workstation_.take_failures());
    else if (settings_.match)
        pair.subject_before_lufs = level_as_recorded(workstation_, pair.subject);
}

void PairRecorder::refuse(const char* side, std::vector<Failure> reports) {
    for (Failure& report : reports) {
        add(pairs_.back().remark, std::string(side) + " file refused");
        failures_.push_back(std::move(report));
    }
}

void PairRecorder::settle(std::vector<Failure> reports) {
    const bool is_whole = base_ != nullptr && subject_ != nullptr;
    if (is_whole && settings_.match)
        read_levels(pairs_.back(), reports);
    if (!pairs_.empty())
        remark_truncations();
    for (Failure& report : reports) {
        if (!pairs_.empty())
            add(pairs_.back().remark, report.message);
        failures_.push_back(std::move(report));
    }
}

void PairRecorder::remark_truncations() {
    report::ImportedPair& pair = pairs_.back();
    const auto remark_on = [&](const project::Item* item, const char* line) {
        const std::string remark = item ? report::truncation_remark(workstation_.audio().truncation(
                                              item->take(0)->source.root().file))
                                        : "";
        add(pair.remark, remark.empty() ? "" : line + remark);
    };
    remark_on(base_, "its base line ");
    remark_on(subject_, "");
}

void PairRecorder::read_levels(report::ImportedPair& pair, std::vector<Failure>& reports) {
    const bool was_ridden = subject_->takes().size() > 1;
    if (was_ridden) {
        const std::filesystem::path& render = subject_->active_take()->source.root().file;
        if (guard_.may_remove(render))
            renders_.push_back(render);
        guard_.wrote(render);
    }
    pair.base.momentary_max_lufs = level_as_placed(workstation_, *base_, reports);
    pair.subject.momentary_max_lufs = level_as_placed(workstation_, *subject_, reports);
    add(pair.remark, level_remark(pair));
    if (settings_.ride && !was_ridden)
        add(pair.remark, "not ridden");
}

} // namespace headless::jobs
