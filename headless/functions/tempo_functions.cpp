// Host functions for the tempo map: quarter notes, measures and beats, and the points that change tempo and
// signature.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"
#include "headless/project/tempo_edit.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

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

// The tempo where the project plays, or where it would start to.
double get_tempo(Workstation& workstation) {
    const project::Project& project = workstation.project();
    return project.tempo_map.tempo_at(project.play_state != 0 ? project.play_position_seconds
                                                              : project.cursor_seconds);
}

void get_project_signature(const project::Project& project, double* tempo, double* numerator) {
    put(tempo, project.tempo_bpm);
    put(numerator, project.meter_numerator);
}

void get_active_project_signature(Workstation& workstation, double* tempo, double* numerator) {
    get_project_signature(workstation.project(), tempo, numerator);
}

bool is_tempo(double bpm) { return std::isfinite(bpm) && bpm > 0.0; }

// Changes the point that decides the tempo at the cursor, or the project's tempo where there is none.
void set_tempo(project::Project& project, double bpm, bool) {
    if (!is_tempo(bpm))
        return;
    project::TempoMap& map = project.tempo_map;
    const auto before = map.points().first(map.points_up_to(project.cursor_seconds));
    const auto deciding =
        std::ranges::find_if(before.rbegin(), before.rend(), &project::TempoPoint::sets_tempo);
    if (deciding == before.rend()) {
        project::set_project_tempo(project, bpm);
        return;
    }
    project::TempoPoint point = *deciding;
    point.tempo_bpm = bpm;
    project::replace_tempo_point(project, static_cast<std::size_t>(before.rend() - deciding) - 1,
                                 std::move(point));
}

int count_points(const project::Project& project) {
    return static_cast<int>(project.tempo_map.points().size());
}

int find_point(const project::Project& project, double seconds) {
    return static_cast<int>(project.tempo_map.points_up_to(seconds)) - 1;
}

bool get_point(const project::Project& project, int index, double* seconds, int* measure, double* beat,
               double* tempo, int* numerator, int* denominator, bool* is_gradual) {
    const auto points = project.tempo_map.points();
    if (index < 0 || static_cast<std::size_t>(index) >= points.size())
        return false;
    const project::TempoPoint& point = points[static_cast<std::size_t>(index)];
    const project::MusicalPosition position = project.tempo_map.position_at(point.position_seconds);
    put(seconds, point.position_seconds);
    put(measure, position.measure);
    put(beat, position.beat);
    put(tempo, point.sets_tempo ? point.tempo_bpm : project.tempo_map.tempo_at(point.position_seconds));
    put(numerator, point.meter ? point.meter->numerator : 0);
    put(denominator, point.meter ? point.meter->denominator : 0);
    put(is_gradual, point.is_gradual);
    return true;
}

// The project's tempo and signature become a point of their own when the first point comes after the start.
bool add_point(project::Project& project, project::TempoPoint point) {
    project::TempoMap& map = project.tempo_map;
    if (map.points().empty() && point.position_seconds > 0.0)
        map.add({.tempo_bpm = project.tempo_bpm,
                 .meter = project::Meter{project.meter_numerator, project.meter_denominator}});
    return project::add_tempo_point(project, std::move(point)).has_value();
}

// Where a point is to be: at a time, or, if that is below 0, at a beat of a measure.
std::optional<double> place_of_point(const project::Project& project, double seconds, int measure,
                                     double beat) {
    if (seconds >= 0.0 && std::isfinite(seconds))
        return seconds;
    if (measure < 0 || !(beat >= 0.0) || !std::isfinite(beat))
        return std::nullopt;
    return project.tempo_map.seconds_at_beats(measure, beat);
}

bool set_point(project::Project& project, int index, double seconds, int measure, double beat, double tempo,
               int numerator, int denominator, bool is_gradual) {
    const auto points = project.tempo_map.points();
    const auto place = place_of_point(project, seconds, measure, beat);
    const bool is_new = index == -1;
    if (!place || !is_tempo(tempo) || (!is_new && static_cast<std::size_t>(index) >= points.size()))
        return false;
    project::TempoPoint point = is_new ? project::TempoPoint() : points[static_cast<std::size_t>(index)];
    point.position_seconds = *place;
    point.tempo_bpm = tempo;
    point.sets_tempo = true;
    point.is_gradual = is_gradual;
    point.meter.reset();
    if (numerator > 0 && denominator > 0)
        point.meter = project::Meter{numerator, denominator};
    return is_new ? add_point(project, std::move(point))
                  : project::replace_tempo_point(project, static_cast<std::size_t>(index), std::move(point))
                        .has_value();
}

bool add_point_at(project::Project& project, double seconds, double tempo, int numerator, int denominator,
                  bool is_gradual) {
    return set_point(project, -1, seconds, -1, -1.0, tempo, numerator, denominator, is_gradual);
}

bool delete_point(project::Project& project, int index) {
    return project::erase_tempo_point(project, static_cast<std::size_t>(index));
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
        {"Master_GetTempo",
         host_function<get_tempo>("", "The tempo at the cursor, in quarter notes a minute")},
        {"GetProjectTimeSignature2",
         host_function<get_project_signature>(
             "proj,bpmOut,bpiOut", "The project's tempo and beats a measure, without the tempo map")},
        {"GetProjectTimeSignature",
         host_function<get_active_project_signature>(
             "bpmOut,bpiOut", "The project's tempo and beats a measure, without the tempo map")},
        {"SetCurrentBPM",
         host_function<set_tempo>("proj,bpm,wantUndo", "Sets the tempo that is in effect at the cursor")},
        {"CountTempoTimeSigMarkers",
         host_function<count_points>("proj", "Number of points of the tempo map")},
        {"FindTempoTimeSigMarker",
         host_function<find_point>("proj,time", "The last point of the tempo map at or before; -1 for none")},
        {"GetTempoTimeSigMarker",
         host_function<get_point>(
             "proj,ptidx,timeposOut,measureposOut,beatposOut,bpmOut,timesig_numOut,timesig_denomOut,"
             "lineartempoOut",
             "A point of the tempo map; 0/0 if it leaves the signature as it is")},
        {"SetTempoTimeSigMarker",
         host_function<set_point>("proj,ptidx,timepos,measurepos,beatpos,bpm,timesig_num,timesig_denom,"
                                  "lineartempo",
                                  "Changes a point of the tempo map, adds one for -1; timepos -1 takes the "
                                  "place from measurepos and beatpos")},
        {"AddTempoTimeSigMarker",
         host_function<add_point_at>("proj,timepos,bpm,timesig_num,timesig_denom,lineartempochange",
                                     "Adds a point to the tempo map; 0/0 leaves the signature as it is")},
        {"DeleteTempoTimeSigMarker",
         host_function<delete_point>("project,markerindex", "Deletes a point of the tempo map")},
    };
    return table;
}

} // namespace headless::functions
