#include "headless/rpp/track_copies.hpp"

#include "headless/chunk/parse.hpp"
#include "headless/project/receives.hpp"
#include "headless/rpp/copies.hpp"
#include "headless/rpp/read_object.hpp"
#include "headless/rpp/state.hpp"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>

namespace headless::rpp {
namespace {

using project::Route;
using project::Track;

using Copies = std::unordered_map<const Track*, Track*>; // by what they were copied from

void renew_ids(Track& track) {
    project::Project& project = track.project();
    track.id = project.guids.next();
    if (chunk::guid_of(chunk::text_at(track.block->head, 1)))
        chunk::set_word(track.block->head, 1, chunk::text_of(track.id));
    renew_effects(track.block->lines, project);
    for (const auto& envelope : track.envelopes())
        envelope->id = project.guids.next();
    for (const auto& item : track.items())
        rpp::renew_ids(*item);
}

// The lines of a receive as text, with those of its envelopes.
chunk::Lines lines_of_copy(const Route& route, const Track& source) {
    chunk::Text line = chunk::Text::made(line_of(route).content());
    chunk::set_word(line, 1, std::to_string(source.index()));
    chunk::Lines lines{std::move(line)};
    for (project::Envelope* envelope : envelopes_of(route)) {
        auto block = chunk::parse_block(state_of(*envelope, source.project()));
        if (!block)
            continue;
        if (chunk::Text* id = chunk::find_line(block->lines, "EGUID"))
            chunk::set_word(*id, 1, chunk::text_of(source.project().guids.next()));
        lines.emplace_back(std::move(*block));
    }
    return lines;
}

// Lets what the original sends to others be sent by the copy, too.
void copy_sends(const Track& original, Track& copy, const Copies& copies) {
    const auto sends = sends_of(original);
    for (auto route = sends.rbegin(); route != sends.rend(); ++route) { // inserting moves what is behind
        const bool is_between_copies = copies.contains(route->holder);
        const bool holder_is_copy =
            std::ranges::any_of(copies, [&](const auto& pair) { return pair.second == route->holder; });
        if (is_between_copies || holder_is_copy)
            continue;
        chunk::Lines added = lines_of_copy(*route, copy);
        Reading in(copy.project(), {}, "");
        read_envelopes(in, *route->holder, added);
        chunk::Lines& lines = *project::file_lines_of(*route->holder);
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(route->end),
                     std::make_move_iterator(added.begin()), std::make_move_iterator(added.end()));
    }
}

// A copy receives from the copies of what its original receives from.
void redirect_receives(Track& copy, const Copies& copies) {
    for (const Route& route : receives_of(copy))
        if (const auto source = copies.find(route.source); source != copies.end())
            chunk::set_word(line_of(route), 1, std::to_string(source->second->index()));
}

// Lets the copies, which lie as deep as the track that follows them, have the depths of their originals.
void nest(const std::vector<Track*>& made, const std::vector<Track*>& originals) {
    const int outermost = (*std::ranges::min_element(originals, {}, &Track::depth))->depth();
    const int missing = std::max(outermost - made.front()->depth(), 0);
    Track* previous = made.front()->project().track(made.front()->index() - 1);
    previous->set_folder_depth_change(previous->folder_depth_change() + missing);
    std::vector<int> depths; // below the outermost
    std::unordered_map<const Track*, int> depth_of;
    for (const Track* original : originals) {
        const auto folder = depth_of.find(original->parent());
        depths.push_back(depth_of[original] = folder == depth_of.end() ? 0 : folder->second + 1);
    }
    depths.push_back(-missing); // what follows
    for (std::size_t i = 0; i < made.size(); ++i)
        made[i]->set_folder_depth_change(depths[i + 1] - depths[i]);
}

} // namespace

std::vector<Track*> copy_tracks(project::Project& project, const std::vector<Track*>& tracks) {
    const std::vector<Track*> originals = project.with_contents(tracks);
    if (originals.empty())
        return {};
    Copies copies;
    std::vector<Track*> made;
    for (const Track* original : originals) {
        made.push_back(&project.insert_track(originals.back()->index() + 1 + made.size()));
        copies.emplace(original, made.back());
    }
    // Receives name tracks by index, so the states are taken once all tracks are in place.
    for (std::size_t i = 0; i < originals.size(); ++i) {
        if (!set_state(*made[i], state_of(*originals[i])))
            continue;
        made[i]->set_folder_depth_change(0);
        made[i]->set_selected(false);
        renew_ids(*made[i]);
        for (std::size_t item = 0; item < originals[i]->items().size(); ++item)
            copy_formats(*originals[i]->items()[item], *made[i]->items()[item]);
    }
    nest(made, originals);
    for (std::size_t i = 0; i < originals.size(); ++i) {
        redirect_receives(*made[i], copies);
        copy_sends(*originals[i], *made[i], copies);
    }
    std::vector<Track*> wanted;
    for (const Track* track : tracks)
        if (const auto copy = copies.find(track); copy != copies.end())
            wanted.push_back(copy->second);
    return wanted;
}

} // namespace headless::rpp
