// Host functions for markers and regions, and for native colours.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"

#include <cmath>
#include <utility>

namespace headless::functions {
namespace {

// The counts of a project that is not there are 0.
int count_markers(const project::Project* project, int* marker_count, int* region_count) {
    const int all = project ? static_cast<int>(project->markers.all().size()) : 0;
    const int regions = project ? static_cast<int>(project->markers.region_count()) : 0;
    put(marker_count, all - regions);
    put(region_count, regions);
    return all;
}

int enumerate_markers_3(const project::Project& project, int index, bool* is_region, double* position,
                        double* region_end, const char** name, int* number, int* color) {
    if (index < 0 || static_cast<std::size_t>(index) >= project.markers.all().size())
        return 0;
    const project::Marker& marker = project.markers.all()[static_cast<std::size_t>(index)];
    put(is_region, marker.is_region);
    put(position, marker.position_seconds);
    put(region_end, marker.end_seconds);
    put(name, marker.name.c_str());
    put(number, marker.number);
    put(color, marker.color);
    return index + 1;
}

int enumerate_markers_2(const project::Project& project, int index, bool* is_region, double* position,
                        double* region_end, const char** name, int* number) {
    return enumerate_markers_3(project, index, is_region, position, region_end, name, number, nullptr);
}

int enumerate_markers(Workstation& workstation, int index, bool* is_region, double* position,
                      double* region_end, const char** name, int* number) {
    return enumerate_markers_2(workstation.project(), index, is_region, position, region_end, name, number);
}

project::Marker make_marker(bool is_region, double position, double region_end, const char* name, int number,
                            int color) {
    return {is_region, position, is_region ? region_end : 0.0, workstation::to_string(name), number, color};
}

bool is_on_timeline(double position, double region_end) {
    return std::isfinite(position) && std::isfinite(region_end);
}

// A failure is -1, since 0 is a marker's number.
int add_marker(project::Project* project, bool is_region, double position, double region_end,
               const char* name, int wanted_number, int color) {
    if (!project || !is_on_timeline(position, region_end))
        return -1;
    return project->markers.add(make_marker(is_region, position, region_end, name, wanted_number, color));
}

int add_plain_marker(project::Project* project, bool is_region, double position, double region_end,
                     const char* name, int wanted_number) {
    return add_marker(project, is_region, position, region_end, name, wanted_number, 0);
}

bool set_marker(project::Project& project, int number, bool is_region, double position, double region_end,
                const char* name, int color) {
    const project::Marker* present = project.markers.find(is_region, number);
    if (!present || !is_on_timeline(position, region_end))
        return false;
    const int new_color = color == 0 ? present->color : color;
    return project.markers.replace(make_marker(is_region, position, region_end, name, number, new_color));
}

bool set_marker_keeping_color(Workstation& workstation, int number, bool is_region, double position,
                              double region_end, const char* name) {
    return set_marker(workstation.project(), number, is_region, position, region_end, name, 0);
}

bool delete_numbered_marker(project::Project& project, int number, bool is_region) {
    const project::Marker* present = project.markers.find(is_region, number);
    return present && project.markers.erase(static_cast<std::size_t>(present - project.markers.all().data()));
}

bool delete_marker(project::Project& project, int index) {
    return project.markers.erase(static_cast<std::size_t>(index));
}

// Native colours have red in the lowest byte, as in project files.
void color_from_native(int color, int* red, int* green, int* blue) {
    put(red, color & 0xFF);
    put(green, (color >> 8) & 0xFF);
    put(blue, (color >> 16) & 0xFF);
}

int color_to_native(int red, int green, int blue) {
    return (red & 0xFF) | (green & 0xFF) << 8 | (blue & 0xFF) << 16;
}

} // namespace

std::span<const workstation::HostFunction> marker_functions() {
    static const workstation::HostFunction table[] = {
        {"CountProjectMarkers",
         host_function<count_markers>("proj,num_markersOut,num_regionsOut",
                                      "Number of markers and regions, of markers, of regions")},
        {"EnumProjectMarkers",
         host_function<enumerate_markers>(
             "idx,isrgnOut,posOut,rgnendOut,nameOut,markrgnindexnumberOut",
             "The marker or region of that index; the result is the next index, 0 past the end")},
        {"EnumProjectMarkers2",
         host_function<enumerate_markers_2>(
             "proj,idx,isrgnOut,posOut,rgnendOut,nameOut,markrgnindexnumberOut",
             "The marker or region of that index; the result is the next index, 0 past the end")},
        {"EnumProjectMarkers3",
         host_function<enumerate_markers_3>(
             "proj,idx,isrgnOut,posOut,rgnendOut,nameOut,markrgnindexnumberOut,colorOut",
             "The marker or region of that index; the result is the next index, 0 past the end")},
        {"AddProjectMarker", host_function<add_plain_marker>(
                                 "proj,isrgn,pos,rgnend,name,wantidx",
                                 "Adds a marker or region without a colour; the result is its number")},
        {"AddProjectMarker2", host_function<add_marker>("proj,isrgn,pos,rgnend,name,wantidx,color",
                                                        "Adds a marker or region; the result is its number")},
        {"SetProjectMarker3",
         host_function<set_marker>("proj,markrgnindexnumber,isrgn,pos,rgnend,name,color",
                                   "Changes the marker or region of that number; colour 0 keeps the colour")},
        {"SetProjectMarker",
         host_function<set_marker_keeping_color>("markrgnindexnumber,isrgn,pos,rgnend,name",
                                                 "Changes the marker or region of that number")},
        {"DeleteProjectMarker",
         host_function<delete_numbered_marker>("proj,markrgnindexnumber,isrgn",
                                               "Deletes the marker or region of that number")},
        {"DeleteProjectMarkerByIndex",
         host_function<delete_marker>("proj,markrgnidx", "Deletes the marker or region of that index")},
        {"ColorFromNative", host_function<color_from_native>(
                                "col,rOut,gOut,bOut", "Red, green and blue of a native colour, 0 to 255")},
        {"ColorToNative",
         host_function<color_to_native>("r,g,b", "A native colour, without the flag 0x1000000")},
    };
    return table;
}

} // namespace headless::functions
