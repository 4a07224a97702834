#pragma once
// A project with something of everything that the project file holds, and names that are hard to write.

#include "headless/project/project.hpp"

#include <string>

namespace headless::test {

inline project::Take& add_take(project::Item& item, const std::filesystem::path& file,
                               const std::string& name) {
    return item.add_take(project::Source{.file = file, .type = "WAVE"}, name);
}

inline void add_line(project::Track& track, const std::filesystem::path& folder) {
    project::Item& item = track.add_item(1.0 / 3.0, 2.25);
    item.volume = 0.75;
    item.snap_offset_seconds = 0.125;
    item.loop = item.mute = item.plays_all_takes = true;
    item.color = 0x1FF8001;
    item.set_selected(true);
    project::Take& recorded = add_take(item, folder / "audio" / "line's \"one\".wav", "line_001.wav");
    recorded.pan = -0.5;
    recorded.volume = -1.5;
    recorded.start_offset_seconds = 0.01;
    recorded.play_rate = 1.25;
    recorded.preserve_pitch = false;
    recorded.pitch_semitones = -2.5;
    recorded.channel_mode = 3;
    project::Envelope& envelope = recorded.add_envelope("Volume");
    envelope.properties = {true, true, true, false, 40, project::PointShape::square, true, 2};
    envelope.set_points({{0.0, 1.0},
                         {0.1, 0.5011872336272722},
                         {1e-7, 5e-5},
                         {0.5, 2.0, project::PointShape::bezier, true, -0.25},
                         {0.5, 0.0, project::PointShape::fast_end}});
    project::Take& rendered = add_take(item, "/elsewhere/line_001 render.wav", "台詞 `one` 'two' \"three\"");
    rendered.volume = 0.5;
    rendered.start_offset_seconds = -1e22;
    rendered.pitch_semitones = 5e-324;
    rendered.add_envelope("Pan").properties.active = false;
    item.set_active_take(rendered);
}

/// @param folder where the project file will lie
inline void fill_sample(project::Project& project, const std::filesystem::path& folder) {
    project.cursor_seconds = 12.5;
    project.record_path = "takes";
    project.frame_rate = 29.97;
    project.drop_frame = true;
    project.sample_rate = 44100;
    project.tempo_bpm = 97.3;
    project.meter_numerator = 3;
    project.meter_denominator = 8;
    project.markers.add({false, 2.5, 0.0, "first 'cue'", 1, 0});
    project.markers.add({true, 4.0, 9.25, "scene \"one\"", 7, 0x1010203});
    project.markers.add({true, 9.25, 9.25, "", 8, 0});
    project.master().volume = 0.9;
    project.master().mute = true;
    project::Track& group = project.insert_track(0);
    group.name = "group";
    group.color = 0x1000000; // black
    group.volume = 0.5;
    group.pan = 0.25;
    group.set_folder_depth_change(1);
    project::Track& child = project.insert_track(1);
    child.name = " > \"quoted\" <";
    child.mute = true;
    child.solo = 2;
    child.set_selected(true);
    child.set_folder_depth_change(-1);
    add_line(child, folder);
    child.add_item(10.0, 1.0); // without a take
    add_take(child.add_item(20.0, 0.5), folder / "b.wav", std::string("a\r\nb\t\x7F\0c", 8));
    project.insert_track(2);
}

} // namespace headless::test
