// Host functions that convert between seconds, quarter notes, measures and beats.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"

#include <cstddef>

namespace headless::functions {
namespace {

double seconds_at_quarters(const project::Project& project, double quarters) {
    return project.tempo_map.seconds_at(quarters);
}

double quarters_at_seconds(const project::Project& project, double seconds) {
    return project.tempo_map.quarters_at(seconds);
}

double active_seconds_at_quarters(Workstation& workstation, double quarters) {
    return seconds_at_quarters(workstation.project(), quarters);
}

double active_quarters_at_seconds(Workstation& workstation, double seconds) {
    return quarters_at_seconds(workstation.project(), seconds);
}

double time_to_beats(const project::Project& project, double seconds, int* measure, int* measure_length,
                     double* full_beats, int* denominator) {
    const project::MusicalPosition position = project.tempo_map.position_at(seconds);
    put(measure, position.measure);
    put(measure_length, position.meter.numerator);
    put(full_beats, position.full_beats);
    put(denominator, position.meter.denominator);
    return measure ? position.beat : position.full_beats;
}

double beats_to_time(const project::Project& project, double beats, int* measure) {
    return measure ? project.tempo_map.seconds_at_beats(*measure, beats)
                   : project.tempo_map.seconds_at_beats(beats);
}

// Beats a minute, of the signature's beats.
double divided_tempo(const project::Project& project, double seconds) {
    const project::TempoMap& map = project.tempo_map;
    return map.tempo_at(seconds) / map.meter_at(seconds).quarters_a_beat();
}

double active_divided_tempo(Workstation& workstation, double seconds) {
    return divided_tempo(workstation.project(), seconds);
}

void get_signature(const project::Project& project, double seconds, int* numerator, int* denominator,
                   double* tempo) {
    const project::Meter meter = project.tempo_map.meter_at(seconds);
    put(numerator, meter.numerator);
    put(denominator, meter.denominator);
    put(tempo, project.tempo_map.tempo_at(seconds));
}

double next_change(const project::Project& project, double seconds) {
    const auto points = project.tempo_map.points();
    const std::size_t next = project.tempo_map.points_up_to(seconds);
    return next < points.size() ? points[next].position_seconds : -1.0;
}

double measure_info(const project::Project& project, int number, double* start_quarters, double* end_quarters,
                    int* numerator, int* denominator, double* tempo) {
    const project::MeasureSpan measure = project.tempo_map.measure(number);
    const double seconds = project.tempo_map.seconds_at(measure.start_quarters);
    put(start_quarters, measure.start_quarters);
    put(end_quarters, measure.end_quarters);
    put(numerator, measure.meter.numerator);
    put(denominator, measure.meter.denominator);
    put(tempo, project.tempo_map.tempo_at(seconds));
    return seconds;
}

// Counts from 1, as the ruler does.
int quarters_to_measure(const project::Project& project, double quarters, double* start_quarters,
                        double* end_quarters) {
    const project::MeasureSpan measure = project.tempo_map.measure_at(quarters);
    put(start_quarters, measure.start_quarters);
    put(end_quarters, measure.end_quarters);
    return measure.measure + 1;
}

} // namespace

std::span<const workstation::HostFunction> tempo_functions() {
    static const workstation::HostFunction table[] = {
        {"TimeMap_QNToTime", host_function<active_seconds_at_quarters>("qn", "Seconds of quarter notes")},
        {"TimeMap_timeToQN", host_function<active_quarters_at_seconds>("tpos", "Quarter notes of seconds")},
        {"TimeMap2_QNToTime", host_function<seconds_at_quarters>("proj,qn", "Seconds of quarter notes")},
        {"TimeMap2_timeToQN", host_function<quarters_at_seconds>("proj,tpos", "Quarter notes of seconds")},
        {"TimeMap_QNToTime_abs", host_function<seconds_at_quarters>("proj,qn", "Seconds of quarter notes")},
        {"TimeMap_timeToQN_abs", host_function<quarters_at_seconds>("proj,tpos", "Quarter notes of seconds")},
        {"TimeMap2_timeToBeats",
         host_function<time_to_beats>(
             "proj,tpos,measuresOutOptional,cmlOutOptional,fullbeatsOutOptional,cdenomOutOptional",
             "Beats since the measure's start; the measure from 0, its beats, beats since the start, and the "
             "signature's denominator")},
        {"TimeMap2_beatsToTime",
         host_function<beats_to_time>("proj,tpos,measuresInOptional",
                                      "Seconds of beats, since the start or since that measure")},
        {"TimeMap2_GetDividedBpmAtTime",
         host_function<divided_tempo>("proj,time", "Beats a minute, of the signature's beats")},
        {"TimeMap_GetDividedBpmAtTime",
         host_function<active_divided_tempo>("time", "Beats a minute, of the signature's beats")},
        {"TimeMap_GetTimeSigAtTime",
         host_function<get_signature>("proj,time,timesig_numOut,timesig_denomOut,tempoOut",
                                      "The signature in effect, and the tempo in quarter notes a minute")},
        {"TimeMap2_GetNextChangeTime",
         host_function<next_change>("proj,time",
                                    "Where the next point of the tempo map is, in seconds; -1 for none")},
        {"TimeMap_GetMeasureInfo",
         host_function<measure_info>(
             "proj,measure,qn_startOut,qn_endOut,timesig_numOut,timesig_denomOut,tempoOut",
             "Where the measure of that number, counted from 0, begins in seconds; its quarter notes")},
        {"TimeMap_QNToMeasures",
         host_function<quarters_to_measure>("proj,qn,qnMeasureStartOutOptional,qnMeasureEndOutOptional",
                                            "The measure, counted from 1, and its quarter notes")},
    };
    return table;
}

} // namespace headless::functions
