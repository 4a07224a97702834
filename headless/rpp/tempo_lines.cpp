#include "headless/rpp/tempo_lines.hpp"

#include "headless/rpp/fields.hpp"

#include <string>
#include <utility>
#include <vector>

namespace headless::rpp {
namespace {

using chunk::Text;
using project::TempoPoint;

// Bits of a point.
constexpr int sets_meter = 1;
constexpr int sets_no_tempo = 2;

constexpr int denominator_factor = 65536; // a signature is one number

TempoPoint read_point(const Text& line) {
    const int bits = to_int(chunk::number_at(line, 6, 0.0));
    const int meter = to_int(chunk::number_at(line, 4, 0.0));
    TempoPoint point;
    point.position_seconds = chunk::number_at(line, 1, 0.0);
    point.tempo_bpm = chunk::number_at(line, 2, 120.0);
    point.is_gradual = chunk::number_at(line, 3, 0.0) == 0.0;
    if (meter > 0)
        point.meter = project::Meter{meter % denominator_factor, meter / denominator_factor};
    point.selected = chunk::number_at(line, 5, 0.0) != 0.0;
    point.sets_tempo = (bits & sets_no_tempo) == 0;
    point.other_flags = bits & ~(sets_meter | sets_no_tempo);
    point.line = line.content();
    return point;
}

void edit_number(Text& line, std::size_t word, double value) {
    if (chunk::number_at(line, word, 0.0) != value)
        chunk::set_word(line, word, chunk::decimal(value));
}

Text line_of(const TempoPoint& point) {
    Text line = Text::made(point.line.empty() ? "PT 0 120 0" : point.line);
    TempoPoint present = read_point(line);
    present.line = point.line;
    if (present == point)
        return line;
    const int meter =
        point.meter ? point.meter->denominator * denominator_factor + point.meter->numerator : 0;
    const int bits =
        (point.meter ? sets_meter : 0) | (point.sets_tempo ? 0 : sets_no_tempo) | point.other_flags;
    edit_number(line, 1, point.position_seconds);
    edit_number(line, 2, point.tempo_bpm);
    edit_number(line, 3, point.is_gradual ? 0.0 : 1.0);
    if (meter != 0 || bits != 0 || point.selected || chunk::word(line.content(), 4)) {
        edit_number(line, 4, meter);
        edit_number(line, 5, point.selected ? 1.0 : 0.0);
        edit_number(line, 6, bits);
    }
    return line;
}

const chunk::Block& new_block() {
    static const chunk::Block block = [] {
        chunk::Block made{Text::literal("<TEMPOENVEX"), {}};
        for (const std::string_view line :
             {"ACT 1 -1", "VIS 1 0 1", "LANEHEIGHT 0 0", "ARM 0", "DEFSHAPE 1 -1 -1"})
            made.lines.emplace_back(Text::literal(line));
        return made;
    }();
    return block;
}

} // namespace

bool is_tempo_map(std::string_view token) { return token == "TEMPOENVEX" || token == "TEMPOENVNEW"; }

void read_tempo_map(project::TempoMap& tempo_map, const chunk::Block& block) {
    std::vector<TempoPoint> points;
    for (const chunk::Node& node : block.lines)
        if (node.line() && node.token() == "PT")
            points.push_back(read_point(*node.line()));
    tempo_map.read_points(std::move(points));
}

void write_tempo_map(chunk::Output& out, const chunk::Block* block, const project::TempoMap& tempo_map) {
    const chunk::Block& present = block ? *block : new_block();
    out.begin_block(present.head);
    for (const chunk::Node& node : present.lines)
        if (node.token() != "PT")
            out.copy(node);
    for (const TempoPoint& point : tempo_map.points())
        out.line(line_of(point));
    out.end_block(present.end);
}

} // namespace headless::rpp
