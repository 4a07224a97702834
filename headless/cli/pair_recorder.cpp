#include "headless/cli/pair_recorder.hpp"

#include "headless/host/take_loudness.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <utility>

namespace headless {
namespace {

constexpr double momentary_window_seconds = 0.4;

ImportedLine line_of(const std::filesystem::path& file, const Item* item) {
    if (item == nullptr)
        return {.file = file};
    return {.file = file,
            .is_placed = true,
            .position_seconds = item->position_seconds(),
            .length_seconds = item->length_seconds()};
}

/// The track that a file is put on is a child of its group's.
std::string group_of(const Project& project) {
    const Track* track = project.selected_tracks().at(0);
    return track != nullptr && track->parent() != nullptr ? track->parent()->name : "";
}

bool is_short(const ImportedLine& line) { return line.length_seconds < momentary_window_seconds; }

std::string distance_text(double lu) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "stands %+.1f LU from its base line", lu);
    return text.data();
}

/// Why the level step was left out, or how far from the aim it ended.
std::string level_remark(const ImportedPair& pair) {
    if (is_short(pair.base))
        return "not levelled: its base line is shorter than 0.4 s";
    if (is_short(pair.subject))
        return "not levelled: shorter than 0.4 s";
    const auto base = pair.base.momentary_max_lufs;
    const auto subject = pair.subject.momentary_max_lufs;
    if (!base || !subject)
        return {}; // a failure tells why
    if (!std::isfinite(*base))
        return "not levelled: its base line is silent";
    if (!std::isfinite(*subject))
        return "not levelled: silent";
    return pair.is_levelled() ? "" : distance_text(*subject - *base);
}

/// None for a line that is too short.
std::optional<double> value_of(const Result<double>& reading) {
    return reading ? std::optional(*reading) : std::nullopt;
}

void add(std::string& remarks, const std::string& remark) {
    if (!remark.empty())
        remarks.append(remarks.empty() ? "" : "; ").append(remark);
}

/// The reading of a placed line. That there is none for a short line is no failure.
std::optional<double> read_level(Workstation& workstation, const Item& item, std::vector<Failure>& reports) {
    const auto level = heard_momentary_maximum(workstation, *item.active_take());
    if (level)
        return *level;
    std::erase_if(reports, [&](const Failure& report) { return report.message == level.error().message; });
    if (item.length_seconds() >= momentary_window_seconds)
        reports.push_back(level.error());
    return std::nullopt;
}

} // namespace

PairRecorder::PairRecorder(Workstation& workstation, OutputGuard& guard, Settings settings)
    : workstation_(workstation), guard_(guard), settings_(std::move(settings)) {
    workstation_.on_insertion = [this](const std::filesystem::path& file, Item* item) {
        inserted(file, item);
    };
}

PairRecorder::~PairRecorder() { workstation_.on_insertion = nullptr; }

void PairRecorder::finish() {
    settle(workstation_.take_failures());
    if (awaits_subject_)
        add(pairs_.back().remark, "the import ended before its subject line");
}

void PairRecorder::inserted(const std::filesystem::path& file, Item* item) {
    awaits_subject_ ? complete(file, item) : begin(file, item);
    awaits_subject_ = !awaits_subject_;
}

void PairRecorder::begin(const std::filesystem::path& base, Item* item) {
    std::vector<Failure> reports = workstation_.take_failures();
    std::vector<Failure> refusal; // what was reported last is about this file, the rest about the pair before
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

void PairRecorder::complete(const std::filesystem::path& subject, Item* item) {
    ImportedPair& pair = pairs_.back();
    pair.subject = line_of(subject, item);
    subject_ = item;
    if (item == nullptr)
        refuse("subject", workstation_.take_failures());
    else if (settings_.match)
        pair.subject_before_lufs = value_of(recorded_momentary_maximum(workstation_, subject));
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
    for (Failure& report : reports) {
        if (!pairs_.empty())
            add(pairs_.back().remark, report.message);
        failures_.push_back(std::move(report));
    }
}

void PairRecorder::read_levels(ImportedPair& pair, std::vector<Failure>& reports) {
    const bool was_ridden = subject_->takes().size() > 1;
    if (was_ridden)
        guard_.wrote(subject_->active_take()->source.file);
    pair.base.momentary_max_lufs = read_level(workstation_, *base_, reports);
    pair.subject.momentary_max_lufs = read_level(workstation_, *subject_, reports);
    add(pair.remark, level_remark(pair));
    if (settings_.ride && !was_ridden)
        add(pair.remark, "not ridden");
}

} // namespace headless
