#include "headless/project/grid_lines.hpp"

#include "headless/project/project.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <vector>

namespace headless::project {
namespace {

// Positions closer than this are on one line.
constexpr double hair_seconds = 1e-9;

/// The lines around one place.
class NearLines {
public:
    NearLines(const Project& project, double seconds) : project_(project) {
        const double quarters = project.tempo_map.quarters_at(seconds);
        const MeasureSpan measure = project.tempo_map.measure_at(quarters);
        const double division = division_in(measure);
        constexpr double most_measures = 1e6;
        const double measures = std::clamp(std::round(division / length_of(measure)), 1.0, most_measures);
        const int step = division < length_of(measure) ? 1 : static_cast<int>(measures);
        const int remainder = ((measure.measure % step) + step) % step;
        const int first = measure.measure - remainder;
        for (const int number : {first - step, first, first + step, first + 2 * step})
            add_lines(project.tempo_map.measure(number), quarters);
        std::ranges::sort(lines_);
    }

    double before(double seconds) const {
        const auto at = std::ranges::lower_bound(lines_, seconds - hair_seconds);
        return at == lines_.begin() ? 0.0 : std::max(*std::prev(at), 0.0);
    }

    double after(double seconds) const {
        const auto at = std::ranges::upper_bound(lines_, seconds + hair_seconds);
        return at == lines_.end() ? seconds : std::max(*at, 0.0);
    }

    double closest(double seconds) const {
        const auto distance = [&](double line) { return std::abs(line - seconds); };
        return std::max(*std::ranges::min_element(lines_, {}, distance), 0.0);
    }

private:
    static double length_of(const MeasureSpan& measure) { return measure.meter.quarters_a_measure(); }

    double division_in(const MeasureSpan& measure) const {
        constexpr double shortest = 1.0 / 1024;
        constexpr double longest = 4096.0;
        const Grid& grid = project_.grid;
        return grid.swing == Grid::Swing::measures ? length_of(measure)
                                                   : std::clamp(grid.division_quarters, shortest, longest);
    }

    // Those next to the place: a measure may have thousands.
    void add_lines(const MeasureSpan& measure, double quarters) {
        const double division = division_in(measure);
        const double place = std::clamp(quarters, measure.start_quarters, measure.end_quarters);
        const double nearest = std::floor((place - measure.start_quarters) / division);
        for (double number = std::max(nearest - 2.0, 0.0); number <= nearest + 2.0; ++number)
            add_line(measure, number * division, std::fmod(number, 2.0) != 0.0 ? division : 0.0);
        add_line(measure, 0.0, 0.0);
    }

    // `swung` is the division if the line is one that swing moves, otherwise 0.
    void add_line(const MeasureSpan& measure, double offset, double swung) {
        const Grid& grid = project_.grid;
        const double shift = grid.swing == Grid::Swing::on ? grid.swing_amount * swung / 2.0 : 0.0;
        constexpr double hair_quarters = 1e-9;
        if (measure.start_quarters + offset < measure.end_quarters - hair_quarters)
            lines_.push_back(project_.tempo_map.seconds_at(measure.start_quarters + offset + shift));
    }

    const Project& project_;
    std::vector<double> lines_; ///< in seconds
};

} // namespace

double closest_grid_line(const Project& project, double seconds) {
    return NearLines(project, seconds).closest(seconds);
}

double previous_grid_line(const Project& project, double seconds) {
    return NearLines(project, seconds).before(seconds);
}

double next_grid_line(const Project& project, double seconds) {
    return NearLines(project, seconds).after(seconds);
}

double snapped(const Project& project, double seconds) {
    return project.grid.snaps ? closest_grid_line(project, seconds) : seconds;
}

} // namespace headless::project
