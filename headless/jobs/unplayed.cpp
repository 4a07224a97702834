#include "headless/jobs/unplayed.hpp"

#include "headless/jobs/project_lines.hpp"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace headless::jobs {
namespace {

constexpr std::array<std::string_view, 8> types_without_audio_file{
    "MIDI", "MIDIPOOL", "VIDEO", "VIDEOEFFECT", "RPP_PROJECT", "CLICK", "LTC", "EMPTY"};

/// Whether the envelope changes what is heard.
bool is_heard(const project::Envelope& envelope) {
    return envelope.properties.active && !envelope.points().empty();
}

bool has_heard(const project::Take& take, std::string_view envelope_name) {
    const project::Envelope* envelope = take.envelope(envelope_name);
    return envelope && is_heard(*envelope);
}

bool is_offline(const project::Source& source) {
    return source.offline || (source.inner && is_offline(*source.inner));
}

std::vector<std::string> unplayable(const project::Take& take) {
    std::vector<std::string> settings;
    const auto add_if = [&](bool is_set, std::string setting) {
        if (is_set)
            settings.push_back(std::move(setting));
    };
    const std::string& type = take.source.root().type;
    add_if(std::ranges::find(types_without_audio_file, type) != types_without_audio_file.end(),
           "a source of type " + type);
    add_if(is_offline(take.source), "media that is offline");
    add_if(take.play_rate != 1.0, "a play rate other than 1");
    add_if(take.pitch_semitones != 0.0, "a pitch shift");
    add_if(has_heard(take, "Pitch"), "a pitch envelope");
    add_if(has_heard(take, "Mute"), "a mute envelope");
    add_if(chunk::find_line(take.lines, "SM") != nullptr, "stretching by markers");
    add_if(take.channel_mode != 0, "a channel mode");
    add_if(count_effects(take.lines, "TAKEFX").active > 0, "processing by effects");
    return settings;
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
                for (const std::string& setting : unplayable(*take))
                    tally.add("takes with " + setting, 1, number);
}

} // namespace

std::vector<report::Unplayed> unplayed_of(const project::Project& project) {
    Tally tally;
    const chunk::Text* rate = chunk::find_line(lines_of(project.master()), "PLAYRATE");
    tally.add("project play rate other than 1", rate && chunk::number_at(*rate, 1, 1.0) != 1.0 ? 1 : 0, 0);
    add_track(tally, project.master(), 0);
    for (const auto& track : project.tracks())
        add_track(tally, *track, track->index() + 1);
    return std::move(tally).found();
}

} // namespace headless::jobs
