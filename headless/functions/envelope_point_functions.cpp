// The points of envelopes, by index and by time. Scripts see values on the envelope's scale (fader_scale.hpp).

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/envelope_lookup.hpp"
#include "headless/functions/fader_scale.hpp"
#include "headless/functions/tables.hpp"

#include <algorithm>
#include <cmath>

namespace headless::functions {
namespace {

using project::Envelope;
using project::EnvelopePoint;

// The index of automation item that stands for the envelope itself.
constexpr int envelope_itself = -1;

// The points of automation items lie in pools, whose form is not known.
bool is_envelope_itself(Workstation& workstation, int automation_item, const char* function) {
    if (automation_item == envelope_itself)
        return true;
    workstation.report_once({std::string(function) + ": the points of automation items are not supported"});
    return false;
}

int count_points(const Envelope& envelope) { return static_cast<int>(envelope.point_count()); }

int count_points_in(Workstation& workstation, const Envelope& envelope, int automation_item) {
    return is_envelope_itself(workstation, automation_item, "CountEnvelopePointsEx") ? count_points(envelope)
                                                                                     : 0;
}

bool get_point(const Envelope& envelope, int index, double* time, double* value, int* shape, double* tension,
               bool* is_selected) {
    const EnvelopePoint* point = envelope.point(static_cast<std::size_t>(index));
    if (!point)
        return false;
    put(time, point->position_seconds);
    put(value, to_script(envelope, point->value));
    put(shape, static_cast<int>(point->shape));
    put(tension, point->tension);
    put(is_selected, point->selected);
    return true;
}

bool get_point_in(Workstation& workstation, const Envelope& envelope, int automation_item, int index,
                  double* time, double* value, int* shape, double* tension, bool* is_selected) {
    return is_envelope_itself(workstation, automation_item, "GetEnvelopePointEx") &&
           get_point(envelope, index, time, value, shape, tension, is_selected);
}

bool is_sorted_after(const bool* leaves_unsorted) { return !leaves_unsorted || !*leaves_unsorted; }

// Null leaves a property as it is.
bool set_point(Envelope& envelope, int index, const double* time, const double* value, const int* shape,
               const double* tension, const bool* is_selected, const bool* leaves_unsorted) {
    const EnvelopePoint* present = envelope.point(static_cast<std::size_t>(index));
    if (!present)
        return false;
    EnvelopePoint point = *present;
    point.position_seconds = time ? *time : point.position_seconds;
    point.value = value ? from_script(envelope, *value) : point.value;
    point.shape = shape ? project::point_shape(*shape) : point.shape;
    point.tension = tension ? *tension : point.tension;
    point.selected = is_selected ? *is_selected : point.selected;
    return envelope.replace_point(static_cast<std::size_t>(index), point, is_sorted_after(leaves_unsorted));
}

bool set_point_c(Envelope& envelope, int index, double* time, double* value, int* shape, double* tension,
                 bool* is_selected, bool* leaves_unsorted) {
    return set_point(envelope, index, time, value, shape, tension, is_selected, leaves_unsorted);
}

bool set_point_in(Workstation& workstation, Envelope& envelope, int automation_item, int index, double* time,
                  double* value, int* shape, double* tension, bool* is_selected, bool* leaves_unsorted) {
    return is_envelope_itself(workstation, automation_item, "SetEnvelopePointEx") &&
           set_point(envelope, index, time, value, shape, tension, is_selected, leaves_unsorted);
}

bool insert_point(Envelope& envelope, double time, double value, int shape, double tension, bool is_selected,
                  bool* leaves_unsorted) {
    return envelope.insert_point(
        {time, from_script(envelope, value), project::point_shape(shape), is_selected, tension},
        is_sorted_after(leaves_unsorted));
}

bool insert_point_in(Workstation& workstation, Envelope& envelope, int automation_item, double time,
                     double value, int shape, double tension, bool is_selected, bool* leaves_unsorted) {
    return is_envelope_itself(workstation, automation_item, "InsertEnvelopePointEx") &&
           insert_point(envelope, time, value, shape, tension, is_selected, leaves_unsorted);
}

bool sort_points(const Envelope& envelope) {
    envelope.sort_points();
    return true;
}

bool sort_points_in(Workstation& workstation, const Envelope& envelope, int automation_item) {
    return is_envelope_itself(workstation, automation_item, "Envelope_SortPointsEx") && sort_points(envelope);
}

bool delete_points(Envelope& envelope, double from, double to) {
    if (std::isnan(from) || std::isnan(to))
        return false;
    envelope.erase_points(from, to);
    return true;
}

bool delete_points_in(Workstation& workstation, Envelope& envelope, int automation_item, double from,
                      double to) {
    return is_envelope_itself(workstation, automation_item, "DeleteEnvelopePointRangeEx") &&
           delete_points(envelope, from, to);
}

bool delete_point_in(Workstation& workstation, Envelope& envelope, int automation_item, int index) {
    return is_envelope_itself(workstation, automation_item, "DeleteEnvelopePointEx") &&
           envelope.erase_point(static_cast<std::size_t>(index));
}

// The point at or before that time, -1 if there is none.
int point_at(const Envelope& envelope, double time) {
    return static_cast<int>(envelope.points_up_to(std::isnan(time) ? 0.0 : time)) - 1;
}

int point_at_in(Workstation& workstation, const Envelope& envelope, int automation_item, double time) {
    return is_envelope_itself(workstation, automation_item, "GetEnvelopePointByTimeEx")
               ? point_at(envelope, time)
               : -1;
}

// What runs from one point to the next, on the scale that scripts see.
struct Segment {
    EnvelopePoint from;
    EnvelopePoint to;
    bool is_straight; ///< or constant

    double value_at(double time) const {
        return is_straight && from.value == to.value ? from.value : value_between(from, to, time);
    }
};

Segment segment_at(const Envelope& envelope, double time) {
    const auto points = envelope.points();
    const std::size_t next = envelope.points_up_to(time);
    EnvelopePoint from{.position_seconds = time, .value = range_of(envelope).center};
    if (!points.empty())
        from = points[next == 0 ? 0 : next - 1];
    from.value = to_script(envelope, from.value);
    if (next == 0 || next == points.size()) {
        EnvelopePoint to = from;
        to.position_seconds = next < points.size() ? points[next].position_seconds : INFINITY;
        return {from, to, true};
    }
    EnvelopePoint to = points[next];
    to.value = to_script(envelope, to.value);
    if (from.shape == project::PointShape::square)
        to.value = from.value;
    return {from, to, from.shape == project::PointShape::linear || from.shape == project::PointShape::square};
}

// Derivatives are per sample. They hold up to the next point where the curve is straight.
int evaluate(const Envelope& envelope, double time, double sample_rate, int samples, double* value,
             double* first, double* second, double* third) {
    const double seconds = std::isfinite(time) ? time : 0.0;
    const Segment segment = segment_at(envelope, seconds);
    put(value, segment.value_at(seconds));
    const double step = sample_rate > 0.0 ? 1.0 / sample_rate : 0.0;
    const double end = segment.to.position_seconds;
    std::array<double, 4> ahead{}; // values of the next samples
    for (std::size_t i = 0; i < ahead.size(); ++i)
        ahead[i] = segment.value_at(std::min(seconds + static_cast<double>(i) * step, end));
    put(first, ahead[1] - ahead[0]);
    put(second, segment.is_straight ? 0.0 : ahead[2] - 2.0 * ahead[1] + ahead[0]);
    put(third, segment.is_straight ? 0.0 : ahead[3] - 3.0 * ahead[2] + 3.0 * ahead[1] - ahead[0]);
    if (!segment.is_straight || step == 0.0)
        return 1;
    const double up_to_end = std::floor((end - seconds) / step);
    return std::max(1, up_to_end < static_cast<double>(samples) ? static_cast<int>(up_to_end) : samples);
}

int scaling_mode(const Envelope& envelope) { return envelope.properties.fader_scaling ? 1 : 0; }

double scale_to(int mode, double gain) { return mode == 1 ? fader_position(gain) : gain; }

double scale_from(int mode, double value) { return mode == 1 ? gain_at(value) : value; }

} // namespace

std::span<const workstation::HostFunction> envelope_point_functions() {
    static const workstation::HostFunction table[] = {
        {"CountEnvelopePoints", host_function<count_points>("envelope", "Number of points")},
        {"CountEnvelopePointsEx",
         host_function<count_points_in>("envelope,autoitem_idx",
                                        "Number of points; -1 is the envelope itself")},
        {"GetEnvelopePoint",
         host_function<get_point>("envelope,ptidx,timeOut,valueOut,shapeOut,tensionOut,selectedOut",
                                  "The point of that index, counted from 0")},
        {"GetEnvelopePointEx",
         host_function<get_point_in>(
             "envelope,autoitem_idx,ptidx,timeOut,valueOut,shapeOut,tensionOut,selectedOut",
             "The point of that index, counted from 0")},
        {"SetEnvelopePoint",
         host_function<set_point_c>(
             "envelope,ptidx,timeInOptional,valueInOptional,shapeInOptional,tensionInOptional,"
             "selectedInOptional,noSortInOptional",
             "Changes a point; what is left out stays as it is")},
        {"SetEnvelopePointEx",
         host_function<set_point_in>(
             "envelope,autoitem_idx,ptidx,timeInOptional,valueInOptional,shapeInOptional,"
             "tensionInOptional,selectedInOptional,noSortInOptional",
             "Changes a point; what is left out stays as it is")},
        {"InsertEnvelopePoint",
         host_function<insert_point>("envelope,time,value,shape,tension,selected,noSortInOptional",
                                     "Adds a point")},
        {"InsertEnvelopePointEx",
         host_function<insert_point_in>(
             "envelope,autoitem_idx,time,value,shape,tension,selected,noSortInOptional", "Adds a point")},
        {"Envelope_SortPoints", host_function<sort_points>("envelope", "Sorts the points by time")},
        {"Envelope_SortPointsEx",
         host_function<sort_points_in>("envelope,autoitem_idx", "Sorts the points by time")},
        {"DeleteEnvelopePointRange",
         host_function<delete_points>("envelope,time_start,time_end",
                                      "Deletes the points from the start to before the end")},
        {"DeleteEnvelopePointRangeEx",
         host_function<delete_points_in>("envelope,autoitem_idx,time_start,time_end",
                                         "Deletes the points from the start to before the end")},
        {"DeleteEnvelopePointEx",
         host_function<delete_point_in>("envelope,autoitem_idx,ptidx", "Deletes the point")},
        {"GetEnvelopePointByTime",
         host_function<point_at>("envelope,time",
                                 "Index of the last point at or before that time, -1 if there is none")},
        {"GetEnvelopePointByTimeEx",
         host_function<point_at_in>("envelope,autoitem_idx,time",
                                    "Index of the last point at or before that time, -1 if there is none")},
        {"Envelope_Evaluate",
         host_function<evaluate>(
             "envelope,time,samplerate,samplesRequested,valueOut,dVdSOut,ddVdSOut,dddVdSOut",
             "The value at that time and its derivatives per sample; returns for how many samples "
             "they hold")},
        {"GetEnvelopeScalingMode",
         host_function<scaling_mode>("env", "1 if values are positions of a fader, else 0")},
        {"ScaleToEnvelopeMode",
         host_function<scale_to>("scaling_mode,val", "The value that stands for a linear gain")},
        {"ScaleFromEnvelopeMode",
         host_function<scale_from>("scaling_mode,val", "The linear gain that a value stands for")},
    };
    return table;
}

} // namespace headless::functions
