#include "headless/report/project_report.hpp"

#include "headless/report/figures.hpp"

#include <algorithm>

namespace headless::report {
namespace {

using nlohmann::ordered_json;

template <class T, class ObjectOf>
ordered_json list_of(const std::vector<T>& entries, ObjectOf object_of) {
    ordered_json list = ordered_json::array();
    for (const T& entry : entries)
        list.push_back(object_of(entry));
    return list;
}

ordered_json object_of_envelope(const EnvelopeFigures& envelope) {
    return {{"name", envelope.name}, {"points", envelope.points}};
}

ordered_json object_of_send(const SendEnd& end) {
    return {{"track", end.track}, {"name", end.name ? ordered_json(*end.name) : ordered_json(nullptr)}};
}

ordered_json object_of_media(const MediaFile& media) {
    return {{"file", media.file.string()}, {"takes", media.takes}, {"missing", media.is_missing}};
}

ordered_json object_of_unplayed(const Unplayed& unplayed) {
    return {{"what", unplayed.what}, {"count", unplayed.count}, {"tracks", unplayed.tracks}};
}

ordered_json object_of_marker(const MarkerFigures& marker) {
    return {{"number", marker.number}, {"name", marker.name}, {"position_seconds", marker.position_seconds}};
}

ordered_json object_of_region(const MarkerFigures& region) {
    ordered_json object = object_of_marker(region);
    object["end_seconds"] = region.end_seconds;
    return object;
}

ordered_json object_of_master(const TrackFigures& master) {
    return {{"effects", master.effects},
            {"hardware_outputs", master.hardware_outputs},
            {"envelopes", list_of(master.envelopes, object_of_envelope)}};
}

ordered_json object_of_track(const TrackFigures& track, std::size_t number) {
    return {{"number", number},
            {"name", track.name},
            {"depth", track.depth},
            {"folder", track.folder == 0 ? ordered_json(nullptr) : ordered_json(track.folder)},
            {"is_folder", track.is_folder},
            {"items", track.items},
            {"takes", track.takes},
            {"effects", track.effects},
            {"input_effects", track.input_effects},
            {"take_effects", track.take_effects},
            {"sends", list_of(track.sends, object_of_send)},
            {"receives", list_of(track.receives, object_of_send)},
            {"hardware_outputs", track.hardware_outputs},
            {"envelopes", list_of(track.envelopes, object_of_envelope)},
            {"take_envelopes", list_of(track.take_envelopes, object_of_envelope)}};
}

ordered_json text_or_null(const std::string& text) {
    return text.empty() ? ordered_json(nullptr) : ordered_json(text);
}

} // namespace

std::size_t ProjectReport::missing_media() const {
    return static_cast<std::size_t>(std::ranges::count_if(media, &MediaFile::is_missing));
}

// Tracks are a plain list with the number of the folder around each: folders may nest thousands deep.
std::string json_of(const ProjectReport& report) {
    ordered_json tracks = ordered_json::array();
    for (const TrackFigures& track : report.tracks)
        tracks.push_back(object_of_track(track, tracks.size() + 1));
    return figures::line_of(
        {{"file", report.file.string()},
         {"cut_off", report.is_cut_off},
         {"version", text_or_null(report.version)},
         {"system", text_or_null(report.system)},
         {"saved_at", report.saved_at == 0 ? ordered_json(nullptr) : ordered_json(report.saved_at)},
         {"length_seconds", report.length_seconds},
         {"sample_rate", report.sample_rate},
         {"tempo_bpm", report.tempo_bpm},
         {"meter", {report.meter_numerator, report.meter_denominator}},
         {"tempo_points", report.tempo_points},
         {"master", object_of_master(report.master)},
         {"tracks", tracks},
         {"markers", list_of(report.markers, object_of_marker)},
         {"regions", list_of(report.regions, object_of_region)},
         {"media", list_of(report.media, object_of_media)},
         {"missing_media", report.missing_media()},
         {"not_played", list_of(report.unplayed, object_of_unplayed)}});
}

} // namespace headless::report
