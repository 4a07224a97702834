#include "headless/project/receives.hpp"

#include "headless/project/project.hpp"

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>
#include <utility>

namespace headless::project {
namespace {

using chunk::Lines;
using chunk::Node;

constexpr std::string_view receive_token = "AUXRECV";
constexpr std::string_view output_token = "HWOUT";
constexpr std::string_view master_output_token = "MASTERHWOUT";

Envelope* envelope_at(const Track& track, const Node& node) {
    const chunk::Place* place = node.place();
    if (!place || place->kind != chunk::ObjectKind::envelope)
        return nullptr;
    const auto found = std::ranges::find(track.envelopes(), place->serial, &Envelope::serial);
    return found == track.envelopes().end() ? nullptr : found->get();
}

bool is_route_token(std::string_view token) {
    return token == receive_token || token == output_token || token == master_output_token;
}

// Whether the node belongs to the send or output before it.
bool is_part_of_route(const Track& track, const Node& node) {
    const Envelope* envelope = envelope_at(track, node);
    const std::string_view token =
        envelope && envelope->block ? chunk::token(envelope->block->head.content()) : node.token();
    return !is_route_token(token) && (token.starts_with("AUX") || token.starts_with("HW"));
}

std::size_t end_of_route(const Track& track, const Lines& lines, std::size_t place) {
    std::size_t end = place + 1;
    while (end < lines.size() && is_part_of_route(track, lines[end]))
        ++end;
    return end;
}

std::optional<std::size_t> source_index(const chunk::Text& line) {
    const double index = chunk::number_at(line, 1, -1.0);
    return index >= 0.0 ? std::optional(static_cast<std::size_t>(index)) : std::nullopt;
}

// A bare line says that there is none.
std::vector<Route> routes(Track& track, std::string_view token) {
    std::vector<Route> found;
    Lines* lines = file_lines_of(track);
    for (std::size_t place = 0; lines && place < lines->size(); ++place) {
        const chunk::Text* line = (*lines)[place].line();
        if (!line || (*lines)[place].token() != token || !chunk::word(line->content(), 1))
            continue;
        const bool is_receive = token == receive_token;
        const auto source = is_receive ? source_index(*line) : std::nullopt;
        found.push_back({&track, is_receive ? source ? track.project().track(*source) : nullptr : &track,
                         is_receive ? &track : nullptr, place, end_of_route(track, *lines, place),
                         found.size()});
    }
    return found;
}

bool is_master(const Track& track) { return &track == &track.project().master(); }

std::string_view output_token_of(const Track& track) {
    return is_master(track) ? master_output_token : output_token;
}

void renumber_receives(Track& track, const NewIndices& new_indices) {
    const auto receives = receives_of(track);
    for (auto route = receives.rbegin(); route != receives.rend(); ++route) { // erasing moves what is behind
        const auto source = source_index(line_of(*route));
        if (!source || *source >= new_indices.size())
            continue;
        const std::optional<std::size_t> index = new_indices[*source];
        if (!index)
            erase(*route);
        else if (*index != *source)
            chunk::set_word(line_of(*route), 1, std::to_string(*index));
    }
}

/// Looks for the place of an envelope among the lines of its track.
class OwnerSearch {
public:
    explicit OwnerSearch(std::uint64_t serial) : serial_(serial) {}

    // The effect in which the envelope stands; the chains of containers count for the container.
    std::optional<std::size_t> effect_in(const Lines& chain) const {
        std::optional<std::size_t> effect;
        for (const Node& node : chain) {
            if (node.line() && node.token() == "BYPASS")
                effect = effect ? *effect + 1 : 0;
            if (is_place(node) || (node.block() && effect_in_any(*node.block())))
                return effect.value_or(0);
        }
        return std::nullopt;
    }

private:
    bool is_place(const Node& node) const {
        return node.place() && node.place()->kind == chunk::ObjectKind::envelope &&
               node.place()->serial == serial_;
    }

    bool effect_in_any(const chunk::Block& block) const {
        return std::ranges::any_of(block.lines, [&](const Node& node) {
            return is_place(node) || (node.block() && effect_in_any(*node.block()));
        });
    }

    std::uint64_t serial_;
};

// "3:wet" is 3.
std::size_t leading_number(std::string_view word) {
    std::size_t number = 0;
    std::from_chars(word.data(), word.data() + word.size(), number);
    return number;
}

} // namespace

chunk::Lines* file_lines_of(Track& track) {
    if (is_master(track))
        return track.project().source ? &track.project().source->document.root.lines : nullptr;
    return track.block ? &track.block->lines : nullptr;
}

void renumber_receives(const Project& project, const NewIndices& new_indices) {
    for (const auto& track : project.tracks())
        if (track->block && chunk::find_line(track->block->lines, receive_token))
            renumber_receives(*track, new_indices);
}

std::vector<Route> receives_of(Track& track) {
    return is_master(track) ? std::vector<Route>() : routes(track, receive_token);
}

std::vector<Route> sends_of(const Track& track) {
    std::vector<Route> sends;
    for (const auto& other : track.project().tracks())
        for (const Route& route : receives_of(*other))
            if (route.source == &track)
                sends.push_back(route);
    return sends;
}

std::vector<Route> hardware_outputs_of(Track& track) { return routes(track, output_token_of(track)); }

chunk::Text& line_of(const Route& route) { return *(*file_lines_of(*route.holder))[route.place].line(); }

std::vector<Envelope*> envelopes_of(const Route& route) {
    std::vector<Envelope*> envelopes;
    const Lines& lines = *file_lines_of(*route.holder);
    for (std::size_t place = route.place + 1; place < route.end; ++place)
        if (Envelope* envelope = envelope_at(*route.holder, lines[place]))
            envelopes.push_back(envelope);
    return envelopes;
}

void erase(const Route& route) {
    for (const Envelope* envelope : envelopes_of(route))
        route.holder->erase_envelope(envelope->serial());
    Lines& lines = *file_lines_of(*route.holder);
    const auto begin = lines.begin() + static_cast<std::ptrdiff_t>(route.place);
    lines.erase(begin, begin + static_cast<std::ptrdiff_t>(route.end - route.place));
}

EnvelopeOwner owner_of(const Envelope& envelope) {
    EnvelopeOwner owner;
    if (!envelope.track || !envelope.block)
        return owner;
    const std::string_view token = chunk::token(envelope.block->head.content());
    if (token.starts_with("AUX") || token.starts_with("HW")) {
        const bool is_send = token.starts_with("AUX");
        for (const Route& route :
             is_send ? receives_of(*envelope.track) : hardware_outputs_of(*envelope.track))
            if (std::ranges::count(envelopes_of(route), &envelope) > 0)
                owner.route = route;
    } else if (token == "PARMENV") {
        const OwnerSearch search(envelope.serial());
        for (const std::string_view chain : {"FXCHAIN", "MASTERFXLIST"})
            if (const Lines* lines = file_lines_of(*envelope.track); lines && !owner.effect)
                if (const chunk::Block* block = chunk::find_block(*lines, chain))
                    owner.effect = search.effect_in(block->lines);
        owner.parameter = leading_number(chunk::text_at(envelope.block->head, 1));
    }
    return owner;
}

} // namespace headless::project
