#include "headless/functions/envelope_lookup.hpp"

#include "headless/project/receives.hpp"
#include "headless/rpp/properties.hpp"
#include "headless/rpp/write_object.hpp"

#include <algorithm>
#include <array>
#include <iterator>

namespace headless::functions {
namespace {

using project::Envelope;
using project::Track;

bool is_of_send(const Envelope& envelope) { return rpp::envelope_token(envelope).starts_with("AUX"); }

struct KindRange {
    std::string_view token; ///< without what names the owner ("MASTER", "AUX", "HW")
    ValueRange range;
};

// Types: 0 volume, 2 pan, 4 width, each + 1 before effects, 6 mute, 7 pitch, 8 play rate, 9 tempo, 10 parameter.
constexpr int parameter_type = 10;
constexpr std::array kind_ranges{
    KindRange{"VOLENV", {0, 2, 1, 1}},         KindRange{"VOLENV2", {0, 2, 1, 0}},
    KindRange{"VOLENV3", {0, 2, 1, 0}},        KindRange{"PANENV", {-1, 1, 0, 3}},
    KindRange{"PANENV2", {-1, 1, 0, 2}},       KindRange{"WIDTHENV", {-1, 1, 1, 5}},
    KindRange{"WIDTHENV2", {-1, 1, 1, 4}},     KindRange{"DUALPANENVL", {-1, 1, -1, 3}},
    KindRange{"DUALPANENVL2", {-1, 1, -1, 2}}, KindRange{"DUALPANENV", {-1, 1, 1, 3}},
    KindRange{"DUALPANENV2", {-1, 1, 1, 2}},   KindRange{"MUTEENV", {0, 1, 1, 6}},
    KindRange{"PITCHENV", {-3, 3, 0, 7}},      KindRange{"PLAYSPEEDENV", {0.1, 4, 1, 8}}};

std::string_view without_owner(std::string_view token) {
    for (const std::string_view owner : {"MASTER", "AUX", "HW"})
        if (token.starts_with(owner))
            return token.substr(owner.size());
    return token;
}

} // namespace

std::vector<Envelope*> envelopes_of(const Track& track) {
    std::vector<Envelope*> found;
    for (const auto& envelope : track.envelopes())
        if (!is_of_send(*envelope))
            found.push_back(envelope.get());
    for (const auto& other : track.project().tracks()) {
        if (other->envelopes().empty())
            continue;
        for (const project::Route& route : receives_of(*other))
            if (route.source == &track)
                std::ranges::copy(envelopes_of(route), std::back_inserter(found));
    }
    return found;
}

Envelope* find_envelope(const Track& track, std::string_view text) {
    const auto id = chunk::guid_of(text);
    const std::string_view token = text.starts_with('<') ? text.substr(1) : text;
    for (Envelope* envelope : envelopes_of(track)) {
        const std::string present = rpp::envelope_token(*envelope);
        const bool is_masters =
            present.starts_with("MASTER") && present.substr(std::string_view("MASTER").size()) == token;
        if (id ? envelope->id == *id : present == token || is_masters)
            return envelope;
    }
    return nullptr;
}

Track* parent_of(const Envelope& envelope) {
    if (!envelope.track || !is_of_send(envelope))
        return envelope.track;
    const auto owner = owner_of(envelope);
    return owner.route ? owner.route->source : nullptr;
}

ValueRange range_of(const Envelope& envelope) {
    const std::string token = rpp::envelope_token(envelope);
    if (token == "PARMENV") {
        const chunk::Text& head = envelope.block->head;
        return {chunk::number_at(head, 2, 0.0), chunk::number_at(head, 3, 1.0),
                chunk::number_at(head, 4, 0.5), parameter_type};
    }
    const auto kind = std::ranges::find(kind_ranges, without_owner(token), &KindRange::token);
    ValueRange range = kind == kind_ranges.end() ? ValueRange{0, 1, 0, parameter_type} : kind->range;
    constexpr int mute_type = 6;
    const bool has_both_kinds = !envelope.take && !token.starts_with("AUX") && !token.starts_with("HW");
    if (!has_both_kinds && range.type < mute_type) // before and after effects
        range.type = range.type / 2 * 2;
    return range;
}

project::Project& project_of(const Envelope& envelope) {
    return envelope.take ? envelope.take->item().track().project() : envelope.track->project();
}

void give_lines(Envelope& envelope) {
    if (envelope.block)
        return;
    rpp::give_lines(envelope, project_of(envelope), rpp::envelope_token(envelope));
    const chunk::Place place{envelope.serial(), chunk::ObjectKind::envelope};
    if (envelope.take)
        rpp::insert(*envelope.take, place);
    else
        rpp::insert(*envelope.track, place);
}

} // namespace headless::functions
