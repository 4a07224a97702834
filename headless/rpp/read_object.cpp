#include "headless/rpp/read_object.hpp"

#include "headless/rpp/envelope_kinds.hpp"
#include "headless/rpp/folder_line.hpp"
#include "headless/rpp/forms.hpp"
#include "headless/rpp/media_source.hpp"
#include "headless/rpp/names.hpp"
#include "headless/rpp/read_fields.hpp"

#include <algorithm>
#include <string>
#include <utility>

namespace headless::rpp {
namespace {

using chunk::Block;
using chunk::Lines;
using chunk::Node;
using chunk::Text;

chunk::Guid read_guid(Reading& in, const Lines& lines, std::string_view token) {
    const Text* line = chunk::find_line(lines, token);
    const auto guid = line ? chunk::guid_of(chunk::text_at(*line, 1)) : std::nullopt;
    if (guid)
        in.project().guids.pass_over(*guid);
    return guid.value_or(chunk::Guid());
}

project::EnvelopePoint read_point(Reading& in, const Text& line) {
    constexpr double defaults[] = {0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 0.0}; // of the words from 1 on
    double values[std::size(defaults)];
    std::ranges::copy(defaults, values);
    chunk::Words words(line.content());
    words.next();
    for (double& value : values) {
        const auto word = words.next();
        if (!word)
            break;
        const auto number = chunk::number(word->text);
        if (!number && !word->text.empty())
            in.fail(line, "'" + std::string(word->text) + "' is no number");
        value = number.value_or(value);
    }
    return {values[0], values[1], project::point_shape(to_int(values[2])), values[4] != 0.0, values[6]};
}

bool is_take_token(std::string_view token) {
    return token != "VOLPAN" && token != "EXT" && !default_line(take_forms, token).empty();
}

// The number of nodes before those of the first take. A volume line belongs to the take that follows.
std::size_t end_of_item_lines(const Lines& lines) {
    const auto first =
        std::ranges::find_if(lines, [](const Node& node) { return is_take_token(node.token()); });
    const auto end = static_cast<std::size_t>(first - lines.begin());
    return end > 0 && first != lines.end() && lines[end - 1].token() == "VOLPAN" ? end - 1 : end;
}

const EnvelopeKind* find_kind(std::span<const EnvelopeKind> kinds, std::string_view token) {
    const auto kind = std::ranges::find(kinds, token, &EnvelopeKind::token);
    return kind == kinds.end() ? nullptr : &*kind;
}

chunk::Node place_of(const project::Envelope& envelope) {
    return chunk::Place{envelope.serial(), chunk::ObjectKind::envelope};
}

void read_take(Reading& in, project::Take& take, bool is_first, const Lines& item_lines, Lines lines) {
    take.lines = std::move(lines);
    take.lines.shrink_to_fit();
    take.name = read_name(take.lines);
    take.id = read_guid(in, take.lines, "GUID");
    const Text* volume = chunk::find_line(take.lines, is_first ? "VOLPAN" : "TAKEVOLPAN");
    if (!volume && is_first)
        volume = chunk::find_line(item_lines, "VOLPAN");
    if (volume)
        read_fields(in, take, volume_fields(is_first), *volume);
    read_fields(in, take, take_fields(), take.lines);
    if (const Block* source = chunk::find_block(take.lines, "SOURCE"))
        take.source = read_source(*source, in.folder());
    for (Node& node : take.lines) {
        const EnvelopeKind* kind = node.block() ? find_kind(take_envelope_kinds, node.token()) : nullptr;
        if (!kind || take.envelope(kind->name))
            continue; // a second one of a kind stays as it is
        project::Envelope& envelope = take.add_envelope(std::string(kind->name));
        read_envelope(in, envelope, std::move(*node.block()));
        node = place_of(envelope);
    }
}

bool is_empty_take(const Lines& lines) {
    return lines.front().line() && lines.front().token() == "TAKE" &&
           chunk::text_at(*lines.front().line(), 1) == "NULL";
}

bool is_active(const Text& take_line) {
    return chunk::text_at(take_line, 1) == "SEL" || chunk::text_at(take_line, 2) == "SEL";
}

void add_take(Reading& in, project::Item& item, const Lines& item_lines, Lines lines) {
    const bool is_first = item.takes().empty();
    project::Take& take = item.add_take(project::Source{.file = {}, .type = project::Source::empty_type}, "");
    if (lines.empty()) { // an empty take before the first one has no lines
        take.is_empty = true;
        return;
    }
    if (lines.front().line() && lines.front().token() == "TAKE" && is_active(*lines.front().line()))
        item.set_active_take(take);
    if (is_empty_take(lines)) {
        take.is_empty = true;
        take.lines = std::move(lines);
    } else {
        read_take(in, take, is_first, item_lines, std::move(lines));
    }
}

void read_takes(Reading& in, project::Item& item, Lines lines) {
    Lines take;
    for (Node& node : lines) {
        if (node.line() && node.token() == "TAKE" && (!take.empty() || item.takes().empty()))
            add_take(in, item, item.block->lines, std::exchange(take, {}));
        take.push_back(std::move(node));
    }
    if (!take.empty())
        add_take(in, item, item.block->lines, std::move(take));
}

double first_number(const Lines& lines, std::string_view token) {
    const Text* line = chunk::find_line(lines, token);
    return line ? chunk::number_at(*line, 1, 0.0) : 0.0;
}

std::string envelope_name(const Block& block, std::string_view token) {
    if (token == parameter_envelope_token) {
        const auto name = chunk::text_at(block.head, 5);
        return std::string(name.empty() ? chunk::text_at(block.head, 1) : name);
    }
    const EnvelopeKind* kind = find_kind(track_envelope_kinds, token);
    return std::string(kind ? kind->name : "");
}

} // namespace

void Reading::fail(const Text& line, std::string_view reason) {
    if (failure_)
        return;
    std::string message(reason);
    if (const char* bytes = line.bytes().data(); !text_.empty()) {
        const auto number = 1 + std::count(text_.data(), bytes, '\n');
        message = "line " + std::to_string(number) + ": " + message;
    }
    failure_ = Failure{std::move(message)};
}

void read_envelope(Reading& in, project::Envelope& envelope, Block block) {
    read_fields(in, envelope.properties, envelope_fields(), block.lines);
    std::vector<project::EnvelopePoint> points;
    for (const Node& node : block.lines)
        if (node.line() && node.token() == "PT")
            points.push_back(read_point(in, *node.line()));
    points.shrink_to_fit();
    envelope.id = read_guid(in, block.lines, "EGUID");
    envelope.read_points(std::move(points));
    envelope.block = std::make_unique<Block>(std::move(block));
}

void read_envelopes(Reading& in, project::Track& track, Lines& lines) {
    for (Node& node : lines) {
        Block* block = node.block();
        if (!block)
            continue;
        const std::string token(node.token());
        if (token == "FXCHAIN" || token == "MASTERFXLIST" || token == "CONTAINER") {
            read_envelopes(in, track, block->lines);
        } else if (token == parameter_envelope_token || find_kind(track_envelope_kinds, token)) {
            project::Envelope& envelope = track.add_envelope(envelope_name(*block, token));
            read_envelope(in, envelope, std::move(*block));
            node = place_of(envelope);
        }
    }
}

void read_item(Reading& in, project::Item& item, Block block) {
    read_fields(in, item, item_fields(), block.lines);
    item.id = read_guid(in, block.lines, "IGUID");
    const auto end = block.lines.begin() + static_cast<std::ptrdiff_t>(end_of_item_lines(block.lines));
    Lines takes(std::make_move_iterator(end), std::make_move_iterator(block.lines.end()));
    block.lines.erase(end, block.lines.end());
    block.lines.shrink_to_fit();
    item.block = std::make_unique<Block>(std::move(block));
    read_takes(in, item, std::move(takes));
}

void read_track(Reading& in, project::Track& track, Block block) {
    read_fields(in, track, track_fields(), block.lines);
    if (const Text* line = chunk::find_line(block.lines, "ISBUS"))
        track.set_folder_depth_change(read_depth_change(*line));
    track.name = read_name(block.lines);
    track.id = read_guid(in, block.lines, "TRACKID");
    if (const auto guid = chunk::guid_of(chunk::text_at(block.head, 1)); guid && !track.id)
        track.id = *guid;
    read_envelopes(in, track, block.lines);
    for (Node& node : block.lines) {
        if (node.block() && node.token() == "ITEM") {
            Block& block_of_item = *node.block();
            project::Item& item = track.add_item(first_number(block_of_item.lines, "POSITION"), 0.0);
            read_item(in, item, std::move(block_of_item));
            node = chunk::Place{item.serial(), chunk::ObjectKind::item};
        }
    }
    track.block = std::make_unique<Block>(std::move(block));
}

} // namespace headless::rpp
