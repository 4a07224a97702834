#include "headless/workstation/named_commands.hpp"

#include "headless/workstation/workstation.hpp"

#include <algorithm>
#include <array>

namespace headless::workstation {
namespace {

void focus_arrangement(Workstation& workstation) { workstation.session.cursor_context = 1; }

void save_track_selection(Workstation& workstation) {
    auto& kept = workstation.session.kept_selection;
    kept.clear();
    for (project::Track* track : workstation.project().selected_tracks().all())
        kept.push_back(Workstation::handle(*track));
}

void restore_track_selection(Workstation& workstation) {
    for (const auto& track : workstation.project().tracks())
        track->set_selected(false);
    for (MediaTrack* handle : workstation.session.kept_selection)
        if (project::Track* track = workstation.live(handle))
            track->set_selected(true);
}

/// Through the function that scripts use, which knows where tracks keep it.
template <int Value>
void set_parent_send(Workstation& workstation) {
    auto* set = workstation.function_as<bool(MediaTrack*, const char*, double)>("SetMediaTrackInfo_Value");
    for (project::Track* track : workstation.project().selected_tracks().all())
        if (set)
            set(Workstation::handle(*track), "B_MAINSEND", Value);
}

struct TakeEnvelope {
    const char* name;
    double neutral_value;
};

constexpr TakeEnvelope volume{"Volume", 1.0};
constexpr TakeEnvelope pan{"Pan", 0.0};
constexpr TakeEnvelope mute{"Mute", 1.0};
constexpr TakeEnvelope pitch{"Pitch", 0.0};

/// Makes an envelope that changes nothing if the take has none.
template <const TakeEnvelope& Kind>
void show_take_envelope(Workstation& workstation) {
    for (project::Item* item : workstation.project().selected_items().all()) {
        project::Take* take = item->active_take();
        if (!take)
            continue;
        project::Envelope* envelope = take->envelope(Kind.name);
        if (!envelope) {
            envelope = &take->add_envelope(Kind.name);
            project::EnvelopePoint point;
            point.value = Kind.neutral_value;
            envelope->set_points({point});
        }
        envelope->properties.active = true;
        envelope->properties.visible = true;
    }
}

constexpr int first_number = 53000; // behind the workstation's own

constexpr auto commands = [] {
    auto table = std::to_array<NamedCommand>({
        {"_BR_FOCUS_ARRANGE_WND", "SWS/BR: Focus arrange", focus_arrangement},
        {"_S&M_TAKEENV1", "SWS/S&M: Show take volume envelope", show_take_envelope<volume>},
        {"_S&M_TAKEENV2", "SWS/S&M: Show take pan envelope", show_take_envelope<pan>},
        {"_S&M_TAKEENV3", "SWS/S&M: Show take mute envelope", show_take_envelope<mute>},
        {"_S&M_TAKEENV10", "SWS/S&M: Show take pitch envelope", show_take_envelope<pitch>},
        {"_SWS_DISMPSEND", "SWS: Disable master/parent send on selected track(s)", set_parent_send<0>},
        {"_SWS_ENMPSEND", "SWS: Enable master/parent send on selected track(s)", set_parent_send<1>},
        {"_SWS_RESTORESEL", "SWS: Restore saved track selection", restore_track_selection},
        {"_SWS_SAVESEL", "SWS: Save current track selection", save_track_selection},
    });
    int number = first_number;
    for (NamedCommand& command : table)
        command.number = number++;
    return table;
}();

} // namespace

const NamedCommand* find_named_command(std::string_view name) {
    const auto* found = std::ranges::find(commands, name, &NamedCommand::name);
    return found == commands.end() ? nullptr : found;
}

const NamedCommand* find_named_command(int number) {
    const auto* found = std::ranges::find(commands, number, &NamedCommand::number);
    return found == commands.end() ? nullptr : found;
}

const NamedCommand* named_command_at(std::size_t index) {
    return index < commands.size() ? &commands[index] : nullptr;
}

} // namespace headless::workstation
