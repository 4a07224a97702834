#include "headless/project/tempo_map.hpp"

#include "headless/project/project.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace headless::project {
namespace {

// Positions in files are rounded, and so are sums of beats. What lies closer than this to the start of a
// measure is meant to be there.
constexpr double hair_quarters = 1e-4;

bool is_meter(const Meter& meter) { return meter.numerator > 0 && meter.denominator > 0; }

bool sets_meter(const TempoPoint& point) { return point.meter && is_meter(*point.meter); }

// Music begins at 0, so that points before it count as at 0.
double start_of(const TempoPoint& point) { return std::max(point.position_seconds, 0.0); }

int to_measure(double number) {
    constexpr double limit = 1e9; // two of them still make an int
    return std::isnan(number) ? 0 : static_cast<int>(std::clamp(number, -limit, limit));
}

// The last section that begins at or before `value`; the first also covers what lies before it.
template <class Section>
const Section& section_at(const std::vector<Section>& sections, double Section::*start, double value) {
    const auto next = std::ranges::upper_bound(sections, value, {}, start);
    return next == sections.begin() ? sections.front() : *(next - 1);
}

} // namespace

bool is_tempo(double bpm) { return bpm >= 1e-3 && bpm <= 1e6; }

bool TempoPoint::decides_tempo() const { return sets_tempo && is_tempo(tempo_bpm); }

double TempoMap::TempoSection::quarters_after(double seconds) const {
    return (tempo_bpm + slope * seconds / 2.0) * seconds / 60.0;
}

// Solves quarters_after for the seconds, in the form that has no cancellation.
double TempoMap::TempoSection::seconds_after(double quarters) const {
    const double beats = 60.0 * quarters;
    const double root = std::sqrt(std::max(tempo_bpm * tempo_bpm + 2.0 * slope * beats, 0.0));
    return 2.0 * beats / (tempo_bpm + root);
}

int TempoMap::MeterSection::measures_after(double quarters) const {
    return to_measure(std::floor((quarters - start_quarters + hair_quarters) / meter.quarters_a_measure()));
}

void TempoMap::set_points(std::vector<TempoPoint> points) {
    std::erase_if(points, [](const TempoPoint& point) { return !std::isfinite(point.position_seconds); });
    std::ranges::stable_sort(points, {}, &TempoPoint::position_seconds);
    points_ = std::move(points);
    note_change();
}

void TempoMap::read_points(std::vector<TempoPoint> points) {
    set_points(std::move(points));
    has_new_points_ = false;
}

void TempoMap::note_change() {
    sections_.reset();
    has_new_points_ = true;
}

std::optional<std::size_t> TempoMap::add(TempoPoint point) {
    if (!std::isfinite(point.position_seconds))
        return std::nullopt;
    const std::size_t place = points_up_to(point.position_seconds);
    points_.insert(points_.begin() + static_cast<std::ptrdiff_t>(place), std::move(point));
    note_change();
    return place;
}

std::optional<std::size_t> TempoMap::replace(std::size_t index, TempoPoint point) {
    if (index >= points_.size() || !std::isfinite(point.position_seconds))
        return std::nullopt;
    if (points_[index].position_seconds == point.position_seconds) {
        points_[index] = std::move(point);
        note_change();
        return index;
    }
    erase(index);
    return add(std::move(point));
}

bool TempoMap::erase(std::size_t index) {
    if (index >= points_.size())
        return false;
    points_.erase(points_.begin() + static_cast<std::ptrdiff_t>(index));
    note_change();
    return true;
}

std::size_t TempoMap::points_up_to(double seconds) const {
    const auto next = std::ranges::upper_bound(points_, seconds, {}, &TempoPoint::position_seconds);
    return static_cast<std::size_t>(next - points_.begin());
}

void TempoMap::add_tempos(Sections& sections) const {
    const TempoPoint* from = nullptr;
    const auto begin_section = [&](double start_seconds, double tempo_bpm) {
        double quarters = 0.0;
        if (!sections.tempos.empty()) {
            TempoSection& last = sections.tempos.back();
            const double length = start_seconds - last.start_seconds;
            if (from && from->is_gradual && length > 0.0)
                last.slope = (tempo_bpm - last.tempo_bpm) / length;
            quarters = last.start_quarters + last.quarters_after(length);
        }
        sections.tempos.push_back({start_seconds, quarters, tempo_bpm, 0.0});
    };
    const auto first = std::ranges::find_if(points_, &TempoPoint::decides_tempo);
    if (first == points_.end() || start_of(*first) > 0.0)
        begin_section(0.0, sections.project_tempo_bpm);
    for (const TempoPoint& point : points_) {
        if (point.decides_tempo()) {
            begin_section(start_of(point), point.tempo_bpm);
            from = &point;
        }
    }
}

void TempoMap::add_meters(Sections& sections) const {
    sections.meters.push_back({0.0, 0.0, 0, sections.project_meter});
    for (const TempoPoint& point : points_) {
        if (!sets_meter(point))
            continue;
        const double seconds = start_of(point);
        const TempoSection& tempo = section_at(sections.tempos, &TempoSection::start_seconds, seconds);
        const double quarters = tempo.start_quarters + tempo.quarters_after(seconds - tempo.start_seconds);
        const MeterSection& last = sections.meters.back();
        const double passed = quarters - last.start_quarters;
        const double measures = std::ceil((passed - hair_quarters) / last.meter.quarters_a_measure());
        const MeterSection next{quarters, last.start_beats + passed / last.meter.quarters_a_beat(),
                                to_measure(last.first_measure + std::max(measures, 0.0)), *point.meter};
        sections.meters.push_back(next);
    }
}

const TempoMap::Sections& TempoMap::sections() const {
    const double tempo_bpm = is_tempo(project_.tempo_bpm) ? project_.tempo_bpm : 120.0;
    Meter meter{project_.meter_numerator, project_.meter_denominator};
    if (!is_meter(meter))
        meter = {};
    if (!sections_ || sections_->project_tempo_bpm != tempo_bpm || sections_->project_meter != meter) {
        Sections sections{{}, {}, tempo_bpm, meter};
        add_tempos(sections);
        add_meters(sections);
        sections_ = std::move(sections);
    }
    return *sections_;
}

double TempoMap::quarters_at(double seconds) const {
    const TempoSection& section = section_at(sections().tempos, &TempoSection::start_seconds, seconds);
    // Before music begins its first tempo holds, whether or not it changes from there.
    if (seconds < section.start_seconds)
        return (seconds - section.start_seconds) * section.tempo_bpm / 60.0;
    return section.start_quarters + section.quarters_after(seconds - section.start_seconds);
}

double TempoMap::seconds_at(double quarters) const {
    const TempoSection& section = section_at(sections().tempos, &TempoSection::start_quarters, quarters);
    if (quarters < section.start_quarters)
        return section.start_seconds + (quarters - section.start_quarters) * 60.0 / section.tempo_bpm;
    return section.start_seconds + section.seconds_after(quarters - section.start_quarters);
}

double TempoMap::tempo_at(double seconds) const {
    const TempoSection& section = section_at(sections().tempos, &TempoSection::start_seconds, seconds);
    return section.tempo_after(std::max(seconds - section.start_seconds, 0.0));
}

Meter TempoMap::meter_at(double seconds) const { return measure_at(quarters_at(seconds)).meter; }

MusicalPosition TempoMap::position_at(double seconds) const {
    const double quarters = quarters_at(seconds);
    const MeterSection& section =
        section_at(sections().meters, &MeterSection::start_quarters, quarters + hair_quarters);
    const int measures = section.measures_after(quarters);
    const double start = section.start_quarters + measures * section.meter.quarters_a_measure();
    const double beat = section.meter.quarters_a_beat();
    return {section.first_measure + measures, std::max(quarters - start, 0.0) / beat,
            section.start_beats + (quarters - section.start_quarters) / beat, section.meter};
}

MeasureSpan TempoMap::measure_of(const MeterSection& section, int number) const {
    const double length = section.meter.quarters_a_measure();
    const double start =
        section.start_quarters + (static_cast<double>(number) - section.first_measure) * length;
    double end = start + length;
    const auto next =
        std::ranges::upper_bound(sections().meters, start + hair_quarters, {}, &MeterSection::start_quarters);
    if (next != sections().meters.end())
        end = std::min(end, next->start_quarters);
    return {number, start, end, section.meter};
}

MeasureSpan TempoMap::measure_at(double quarters) const {
    const MeterSection& section =
        section_at(sections().meters, &MeterSection::start_quarters, quarters + hair_quarters);
    return measure_of(section, section.first_measure + section.measures_after(quarters));
}

MeasureSpan TempoMap::measure(int number) const {
    const auto next = std::ranges::upper_bound(sections().meters, number, {}, &MeterSection::first_measure);
    return measure_of(next == sections().meters.begin() ? *next : *(next - 1), number);
}

double TempoMap::seconds_at_beats(double full_beats) const {
    const MeterSection& section = section_at(sections().meters, &MeterSection::start_beats, full_beats);
    return seconds_at(section.start_quarters +
                      (full_beats - section.start_beats) * section.meter.quarters_a_beat());
}

double TempoMap::seconds_at_beats(int measure_number, double beats) const {
    const MeasureSpan span = measure(measure_number);
    return seconds_at(span.start_quarters + beats * span.meter.quarters_a_beat());
}

} // namespace headless::project
