#include "headless/functions/fader_scale.hpp"

#include <cmath>

namespace headless::functions {
namespace {

constexpr double unity_position = 716.21785031261;
constexpr double doubled_position = 852.774454406994;

double exponent() {
    static const double value = std::log2(doubled_position / unity_position);
    return value;
}

} // namespace

double fader_position(double gain) { return gain > 0.0 ? unity_position * std::pow(gain, exponent()) : 0.0; }

double gain_at(double position) {
    return position > 0.0 ? std::pow(position / unity_position, 1.0 / exponent()) : 0.0;
}

double to_script(const project::Envelope& envelope, double value) {
    return envelope.properties.fader_scaling ? fader_position(value) : value;
}

double from_script(const project::Envelope& envelope, double value) {
    return envelope.properties.fader_scaling ? gain_at(value) : value;
}

} // namespace headless::functions
