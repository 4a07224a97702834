// The envelope functions of the SWS extension, on copies that are written back when they are freed.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"
#include "headless/workstation/envelope_objects.hpp"

#include <algorithm>
#include <cmath>

namespace headless::functions {
namespace {

using workstation::EnvelopeObject;

// The host's limits of a volume envelope: silence to +6 dB, around unity.
constexpr double lowest_value = 0.0;
constexpr double highest_value = 2.0;
constexpr double middle_value = 1.0;
constexpr int volume_type = 0;

bool has_envelope(const project::Item& item, const project::Envelope& envelope) {
    return std::ranges::any_of(item.takes(), [&](const auto& take) {
        return std::ranges::find(take->envelopes(), &envelope, &std::unique_ptr<project::Envelope>::get) !=
               take->envelopes().end();
    });
}

const project::Item* item_of(const project::Project& project, const project::Envelope& envelope) {
    for (const auto& track : project.tracks()) {
        for (const auto& item : track->items())
            if (has_envelope(*item, envelope))
                return item.get();
    }
    return nullptr;
}

EnvelopeObject* allocate(Workstation& workstation, project::Envelope& envelope, bool takes_use_project_time) {
    const project::Item* item = takes_use_project_time ? item_of(workstation.project(), envelope) : nullptr;
    return &workstation.envelope_objects().take_out(envelope, item ? -item->position_seconds() : 0.0);
}

bool write_back(Workstation& workstation, EnvelopeObject& object) {
    if (!workstation.project().live_objects().contains(object.target))
        return false;
    project::Envelope& target = *object.target;
    project::Envelope edited(target.name());
    edited.set_points(object.points.elements());
    if (target.properties == object.properties && std::ranges::equal(target.points(), edited.points()))
        return false;
    target.properties = object.properties;
    target.set_points(std::move(edited).take_points());
    workstation::EnvelopeEdit edit = object.edit;
    edit.points_kept = target.points().size();
    workstation.set_last_envelope_edit(edit);
    return true;
}

bool free_object(Workstation& workstation, EnvelopeObject& object, bool commit) {
    const bool written = commit && write_back(workstation, object);
    workstation.envelope_objects().release(object);
    return written;
}

void get_properties(const EnvelopeObject& object, bool* active, bool* visible, bool* armed, bool* in_lane,
                    int* lane_height, int* default_shape, double* minimum, double* maximum, double* center,
                    int* type, bool* fader_scaling, int* automation_item_options) {
    const project::EnvelopeProperties& properties = object.properties;
    put(active, properties.active);
    put(visible, properties.visible);
    put(armed, properties.armed);
    put(in_lane, properties.in_lane);
    put(lane_height, properties.lane_height);
    put(default_shape, static_cast<int>(properties.default_shape));
    put(minimum, lowest_value);
    put(maximum, highest_value);
    put(center, middle_value);
    put(type, volume_type);
    put(fader_scaling, properties.fader_scaling);
    put(automation_item_options, properties.automation_item_options);
}

void set_properties(EnvelopeObject& object, bool active, bool visible, bool armed, bool in_lane,
                    int lane_height, int default_shape, bool fader_scaling, int* automation_item_options) {
    const int options =
        automation_item_options ? *automation_item_options : object.properties.automation_item_options;
    object.properties = {active,        visible,     armed,
                         in_lane,       lane_height, project::point_shape(default_shape),
                         fader_scaling, options};
}

void sort_points(EnvelopeObject& object) {
    auto points = object.points.elements();
    std::ranges::stable_sort(points, {}, &project::EnvelopePoint::position_seconds);
    object.points = workstation::EnvelopePoints(std::span<const project::EnvelopePoint>(points));
}

int count_points(const EnvelopeObject& object) { return static_cast<int>(object.points.size()); }

bool has_point(const EnvelopeObject& object, int id) {
    return id >= 0 && static_cast<std::size_t>(id) < object.points.size();
}

bool delete_point(EnvelopeObject& object, int id) {
    if (!has_point(object, id))
        return false;
    object.points.erase(static_cast<std::size_t>(id));
    ++object.edit.points_deleted;
    return true;
}

bool get_point(const EnvelopeObject& object, int id, double* position, double* value, int* shape,
               bool* selected, double* bezier) {
    if (!has_point(object, id))
        return false;
    const project::EnvelopePoint& point = object.points[static_cast<std::size_t>(id)];
    put(position, point.position_seconds - object.zero_seconds);
    put(value, point.value);
    put(shape, static_cast<int>(point.shape));
    put(selected, point.selected);
    put(bezier, point.tension);
    return true;
}

bool set_point(EnvelopeObject& object, int id, double position, double value, int shape, bool selected,
               double bezier) {
    const bool is_new = id == -1;
    if (!std::isfinite(position) || !std::isfinite(value) || !(is_new || has_point(object, id)))
        return false;
    const project::EnvelopePoint point{position + object.zero_seconds, value, project::point_shape(shape),
                                       selected, bezier};
    if (is_new) {
        object.points.push_back(point);
        ++object.edit.points_created;
        object.edit.points_rewritten = 0;
    } else {
        object.points[static_cast<std::size_t>(id)] = point;
        ++object.edit.points_rewritten;
    }
    return true;
}

} // namespace

std::span<const workstation::HostFunction> envelope_functions() {
    static const workstation::HostFunction table[] = {
        {"BR_EnvAlloc", host_function<allocate>("envelope,takeEnvelopesUseProjectTime",
                                                "Takes a copy of the envelope for editing")},
        {"BR_EnvFree", host_function<free_object>(
                           "envelope,commit",
                           "Gives the copy up, written back or not; true when that changed the envelope")},
        {"BR_EnvGetProperties",
         host_function<get_properties>(
             "envelope,activeOut,visibleOut,armedOut,inLaneOut,laneHeightOut,defaultShapeOut,minValueOut,"
             "maxValueOut,centerValueOut,typeOut,faderScalingOut,automationItemsOptionsOutOptional",
             "The envelope's settings; type 0 is volume")},
        {"BR_EnvSetProperties",
         host_function<set_properties>(
             "envelope,active,visible,armed,inLane,laneHeight,defaultShape,faderScaling,"
             "automationItemsOptionsInOptional",
             "Sets the envelope's settings")},
        {"BR_EnvSortPoints", host_function<sort_points>("envelope", "Sorts the points by position")},
        {"BR_EnvCountPoints", host_function<count_points>("envelope", "Number of points")},
        {"BR_EnvDeletePoint",
         host_function<delete_point>("envelope,id", "Deletes the point of that index, counted from 0")},
        {"BR_EnvGetPoint",
         host_function<get_point>("envelope,id,positionOut,valueOut,shapeOut,selectedOut,bezierOut",
                                  "The point of that index, counted from 0")},
        {"BR_EnvSetPoint", host_function<set_point>("envelope,id,position,value,shape,selected,bezier",
                                                    "Changes a point; id -1 makes a new one")},
    };
    return table;
}

} // namespace headless::functions
