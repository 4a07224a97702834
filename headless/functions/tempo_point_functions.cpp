// Host functions for the points that change tempo and signature, and for the project's own.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"
#include "headless/project/tempo_edit.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

namespace headless::functions {
namespace {

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

// Changes the point that decides the tempo at the cursor, or the project's tempo where there is none.
void set_tempo(project::Project& project, double bpm, bool) {
    if (!project::is_tempo(bpm))
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
    if (!place || !project::is_tempo(tempo) || (!is_new && static_cast<std::size_t>(index) >= points.size()))
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

std::span<const workstation::HostFunction> tempo_point_functions() {
    static const workstation::HostFunction table[] = {
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
