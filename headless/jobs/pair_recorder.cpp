#include "headless/jobs/pair_recorder.hpp"

#include "headless/audio/audio_cache.hpp"
#include "headless/audio/loudness.hpp"
#include "headless/report/remarks.hpp"
#include "headless/workstation/take_loudness.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
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

/// The track that a file is put on is a child of its group's track.
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

/// Why the level was not matched, or how far from the target it ended.
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
    return pair.is_levelled() ? "" : distance_text(*subject - *base);
}

void add(std::string& remarks, const std::string& remark) {
    if (!remark.empty())
        remarks.append(remarks.empty() ? "" : "; ").append(remark);
}

/// The reading of a subject line before it is changed. A failure is reported, unless the line is too short.
std::optional<double> read_before(workstation::Workstation& workstation, const report::ImportedLine& line) {
    const auto level = workstation::recorded_momentary_maximum(workstation, line.file);
    if (level)
        return *level;
    if (!is_short(line))
        workstation.report(level.error());
    return std::nullopt;
}

/// The reading of a placed line. A line that is too short has none, which is not a failure.
std::optional<double> read_level(workstation::Workstation& workstation, const project::Item& item,
                                 std::vector<Failure>& reports) {
    const auto level = workstation::heard_momentary_maximum(workstation, *item.active_take());
    if (level)
        return *level;
    std::erase_if(reports, [&](const Failure& report) { return report.message == level.error().message; });
    if (item.length_seconds() >= audio::momentary_window_seconds)
        reports.push_back(level.error());
    return std::nullopt;
}

} // namespace

PairRecorder::PairRecorder(workstation::Workstation& workstation, OutputGuard& guard, Settings settings)
    : workstation_(workstation), guard_(guard), settings_(std::move(settings)) {
    workstation_.on_insertion = [this](const std::filesystem::path& file, project::Item* item) {
        inserted(file, item);
    };
}

PairRecorder::~PairRecorder() { workstation_.on_insertion = nullptr; }

void PairRecorder::finish() {
    settle(workstation_.take_failures());
    if (awaits_subject_)
        add(pairs_.back().remark, "the import ended before its subject line");
}

void PairRecorder::inserted(const std::filesystem::path& file, project::Item* item) {
    awaits_subject_ ? complete(file, item) : begin(file, item);
    awaits_subject_ = !awaits_subject_;
}

void PairRecorder::begin(const std::filesystem::path& base, project::Item* item) {
    std::vector<Failure> reports = workstation_.take_failures();
    std::vector<Failure> refusal; // the last report is about this file, the rest are about the previous pair
    if (item == nullptr && !reports.empty()) {
        refusal.push_back(std::move(reports.back()));
        reports.pop_back();
    }
    settle(std::move(reports));
    pairs_.push_back({.group = group_of(workstation_.project()), .base = line_of(base, item)});
    base_ = item;
    subject_ = nullptr;
    refuse("base", std::move(refusal));
    if (settings_.begin_pair)
        settings_.begin_pair(base);
}

void PairRecorder::complete(const std::filesystem::path& subject, project::Item* item) {
    report::ImportedPair& pair = pairs_.back();
    pair.subject = line_of(subject, item);
    subject_ = item;
    if (item == nullptr)
        refuse("subject", workstation_.take_failures());
    else if (settings_.match)
        pair.subject_before_lufs = read_before(workstation_, pair.subject);
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
        remark_shortfalls();
    for (Failure& report : reports) {
        if (!pairs_.empty())
            add(pairs_.back().remark, report.message);
        failures_.push_back(std::move(report));
    }
}

void PairRecorder::remark_shortfalls() {
    report::ImportedPair& pair = pairs_.back();
    const auto remark_on = [&](const project::Item* item, const char* line) {
        const std::string remark =
            item ? report::shortfall_remark(workstation_.audio().shortfall(item->take(0)->source.file)) : "";
        add(pair.remark, remark.empty() ? "" : line + remark);
    };
    remark_on(base_, "its base line ");
    remark_on(subject_, "");
}

void PairRecorder::read_levels(report::ImportedPair& pair, std::vector<Failure>& reports) {
    const bool was_ridden = subject_->takes().size() > 1;
    if (was_ridden) {
        const std::filesystem::path& render = subject_->active_take()->source.file;
        if (guard_.may_remove(render))
            renders_.push_back(render);
        guard_.wrote(render);
    }
    pair.base.momentary_max_lufs = read_level(workstation_, *base_, reports);
    pair.subject.momentary_max_lufs = read_level(workstation_, *subject_, reports);
    add(pair.remark, level_remark(pair));
    if (settings_.ride && !was_ridden)
        add(pair.remark, "not ridden");
}

} // namespace headless::jobs
