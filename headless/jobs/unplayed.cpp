#include "headless/jobs/unplayed.hpp"

#include "headless/jobs/project_lines.hpp"
#include "headless/workstation/take_audio.hpp"

#include <algorithm>
#include <string>

namespace headless::jobs {
namespace {

/// Whether the envelope changes what is heard.
bool is_heard(const project::Envelope& envelope) {
    return envelope.properties.active && !envelope.points().empty();
}

std::size_t automation_items(const project::Envelope& envelope) {
    std::size_t count = 0;
    if (envelope.block)
        for_each_line(envelope.block->lines, "POOLEDENVINST", [&](const chunk::Text&) { ++count; });
    return count;
}

/// Counts by what it is, in the order in which each was first found.
class Tally {
public:
    /// @param track  its number, 0 for the master
    void add(const std::string& what, std::size_t count, std::size_t track) {
        if (count == 0)
            return;
        auto entry = std::ranges::find(found_, what, &report::Unplayed::what);
        if (entry == found_.end())
            entry = found_.insert(entry, {what, 0, {}});
        entry->count += count;
        if (entry->tracks.empty() || entry->tracks.back() != track)
            entry->tracks.push_back(track);
    }

    std::vector<report::Unplayed> found() && { return std::move(found_); }

private:
    std::vector<report::Unplayed> found_;
};

void add_track(Tally& tally, const project::Track& track, std::size_t number) {
    const chunk::Lines& lines = lines_of(track);
    if (has_active_effects(track))
        tally.add("effects", count_effects(lines, effect_chain_of(track)).active, number);
    std::size_t sends = 0;
    for_each_line(lines, "AUXRECV", [&](const chunk::Text&) { ++sends; });
    tally.add("sends between tracks", sends, number);
    for (const auto& envelope : track.envelopes()) {
        tally.add("envelopes of tracks, sends and effects", is_heard(*envelope) ? 1 : 0, number);
        tally.add("automation items", automation_items(*envelope), number);
    }
    for (const auto& item : track.items())
        for (const auto& take : item->takes())
            if (!take->is_empty)
                for (const std::string& setting : workstation::unplayable(*take))
                    tally.add("takes with " + setting, 1, number);
}

} // namespace

std::vector<report::Unplayed> unplayed_of(const project::Project& project) {
    Tally tally;
    tally.add("project play rate other than 1", project.play_rate == 1.0 ? 0 : 1, 0);
    add_track(tally, project.master(), 0);
    for (const auto& track : project.tracks())
        add_track(tally, *track, track->index() + 1);
    return std::move(tally).found();
}

} // namespace headless::jobs
