#include "headless/rpp/write_points.hpp"

#include "headless/rpp/edit_fields.hpp"
#include "headless/rpp/fields.hpp"
#include "headless/rpp/forms.hpp"

#include <string>

namespace headless::rpp {
namespace {

using project::EnvelopePoint;

double held_shape(double value) { return static_cast<double>(project::point_shape(to_int(value))); }

std::span<const Field<EnvelopePoint>> point_fields() {
    static const Field<EnvelopePoint> fields[] = {
        field<&EnvelopePoint::value>("PT", 2, 1),
        {"PT", 3, 0, [](const EnvelopePoint& point) { return static_cast<double>(point.shape); },
         [](EnvelopePoint& point, double value) { point.shape = project::point_shape(to_int(value)); },
         held_shape},
        field<&EnvelopePoint::selected>("PT", 5, 0),
        field<&EnvelopePoint::tension>("PT", 7, 0),
    };
    return fields;
}

} // namespace

void PointWriter::write_at(const chunk::Text& line) {
    if (is_as_read()) {
        out_.line(line);
        return;
    }
    const auto points = envelope_.points();
    const double position = chunk::number_at(line, 1, 0.0);
    while (next_ < points.size() && points[next_].position_seconds < position)
        write_new(points[next_++]);
    if (next_ == points.size() || points[next_].position_seconds != position)
        return;
    chunk::Text edited = line;
    edit_fields(edited, points[next_++], point_fields(), envelope_forms);
    out_.line(edited);
}

void PointWriter::write_rest() {
    if (is_as_read())
        return;
    const auto points = envelope_.points();
    while (next_ < points.size())
        write_new(points[next_++]);
}

void PointWriter::write_new(const EnvelopePoint& point) {
    std::string line = "PT ";
    line.append(chunk::decimal(point.position_seconds)).append(" ").append(chunk::decimal(point.value));
    line.append(" ").append(std::to_string(static_cast<int>(point.shape)));
    if (point.selected || point.tension != 0.0)
        line.append(point.selected ? " 0 1 0 " : " 0 0 0 ").append(chunk::decimal(point.tension));
    out_.line(chunk::Text::made(line));
}

} // namespace headless::rpp
