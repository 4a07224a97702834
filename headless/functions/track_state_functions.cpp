// What tracks do: mute, solo, record arming, automation and groups.

#include "headless/functions/adapter.hpp"
#include "headless/functions/attributes.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"
#include "headless/functions/track_names.hpp"
#include "headless/rpp/properties.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace headless::functions {
namespace {

using project::Track;
using rpp::FieldPlace;

constexpr FieldPlace armed{"REC", 1};
constexpr FieldPlace monitoring{"REC", 3};

FieldPlace effects_place(const Track& track) { return {is_master(track) ? "MASTER_FX" : "FX", 1}; }
FieldPlace automation_place(const Track& track) {
    return {is_master(track) ? "MASTERAUTOMODE" : "AUTOMODE", 1};
}

// The meanings of I_SOLO.
constexpr int solo_plain = 1;
constexpr int solo_in_place = 2;
constexpr int solo_safe_in_place = 6;

bool is_in_place(int solo) { return solo == solo_in_place || solo == solo_safe_in_place; }

const char* get_track_state(const Track& track, int* flags_out) {
    static std::string name;
    name = displayed_name(track);
    int flags = 0;
    const auto add = [&flags](int bit, bool is_on) { flags |= is_on ? bit : 0; };
    add(1, track.folder_depth_change() > 0);
    add(2, track.selected());
    add(4, rpp::number_of(track, effects_place(track)) != 0.0);
    add(8, track.mute);
    add(16, track.solo != 0);
    add(32, is_in_place(track.solo));
    if (!is_master(track)) {
        add(64, rpp::number_of(track, armed) != 0.0);
        add(128, rpp::number_of(track, monitoring) == 1.0);
        add(256, rpp::number_of(track, monitoring) == 2.0);
        add(512, rpp::number_of(track, {"SHOWINMIX", 4}) == 0.0);
        add(1024, rpp::number_of(track, {"SHOWINMIX", 1}) == 0.0);
    }
    put(flags_out, flags);
    return name.c_str();
}

// 1 is what the preferences make of it, here in place; 2 does not care for sends, 4 does.
constexpr int ui_solo_plain = 2;

int set_solo(Track& track, int wanted, int /*ignored_groups*/) {
    const bool turns_on = wanted < 0 ? track.solo == 0 : wanted != 0;
    track.solo = !turns_on ? 0 : wanted == ui_solo_plain ? solo_plain : solo_in_place;
    return track.solo;
}

int set_mute(Track& track, int wanted, int /*ignored_groups*/) {
    track.mute = wanted < 0 ? !track.mute : wanted != 0;
    return track.mute ? 1 : 0;
}

void solo_all(Workstation& workstation, int solo) {
    for (const auto& track : workstation.project().tracks())
        track->solo = solo == 0 ? 0 : solo == solo_in_place ? solo_in_place : solo_plain;
}

void mute_all(Workstation& workstation, bool is_muted) {
    for (const auto& track : workstation.project().tracks())
        track->mute = is_muted;
}

bool any_track_solo(const project::Project& project) {
    return std::ranges::any_of(project.tracks(), [](const auto& track) { return track->solo != 0; });
}

void disarm_all(Workstation& workstation) {
    for (const auto& track : workstation.project().tracks())
        rpp::set_number(*track, armed, 0.0);
}

bool get_mute(const Track& track, bool* mute) {
    put(mute, track.mute);
    return true;
}

bool get_volume_and_pan(const Track& track, double* volume, double* pan) {
    put(volume, track.volume);
    put(pan, track.pan);
    return true;
}

int master_flags(Workstation& workstation) {
    const Track& master = workstation.project().master();
    return (master.mute ? 1 : 0) | (master.solo != 0 ? 2 : 0);
}

int get_automation_mode(const Track& track) { return to_int(rpp::number_of(track, automation_place(track))); }

void set_automation_mode(Track& track, int mode) {
    constexpr int last_mode = 5;
    rpp::set_number(track, automation_place(track), std::clamp(mode, 0, last_mode));
}

/// The names of group flags in the order of the line's words from 1 on.
constexpr auto group_flags = std::to_array<std::string_view>({"VOLUME_LEAD",
                                                              "VOLUME_FOLLOW",
                                                              "PAN_LEAD",
                                                              "PAN_FOLLOW",
                                                              "MUTE_LEAD",
                                                              "MUTE_FOLLOW",
                                                              "SOLO_LEAD",
                                                              "SOLO_FOLLOW",
                                                              "RECARM_LEAD",
                                                              "RECARM_FOLLOW",
                                                              "POLARITY_LEAD",
                                                              "POLARITY_FOLLOW",
                                                              "AUTOMODE_LEAD",
                                                              "AUTOMODE_FOLLOW",
                                                              "VOLUME_REVERSE",
                                                              "PAN_REVERSE",
                                                              "NO_LEAD_WHEN_FOLLOW",
                                                              "WIDTH_REVERSE",
                                                              "WIDTH_LEAD",
                                                              "WIDTH_FOLLOW",
                                                              "VOLUME_VCA_LEAD",
                                                              "VOLUME_VCA_FOLLOW",
                                                              "VOLUME_VCA_FOLLOW_ISPREFX",
                                                              "MEDIA_EDIT_LEAD",
                                                              "MEDIA_EDIT_FOLLOW"});

// Earlier versions called leading and following otherwise.
std::string current_name(std::string name) {
    const auto replace_ending = [&name](std::string_view old, std::string_view current) {
        if (const std::size_t place = name.find(old); place != name.npos)
            name.replace(place, old.size(), current);
    };
    replace_ending("MASTER", "LEAD");
    replace_ending("SLAVE", "FOLLOW");
    return name;
}

// The words of the line. It ends with the last one that is not zero, and is missing without any.
std::vector<std::uint32_t> read_groups(const Track& track, std::string_view token) {
    std::vector<std::uint32_t> words;
    const chunk::Text* line = track.block ? chunk::find_line(track.block->lines, token) : nullptr;
    for (std::size_t word = 1; line && chunk::word(line->content(), word); ++word)
        words.push_back(static_cast<std::uint32_t>(chunk::number_at(*line, word, 0.0)));
    return words;
}

void write_groups(Track& track, std::string_view token, std::vector<std::uint32_t> words) {
    while (!words.empty() && words.back() == 0)
        words.pop_back();
    std::string content(token);
    for (const std::uint32_t word : words)
        content.append(" ").append(std::to_string(word));
    rpp::give_lines(track);
    if (words.empty())
        chunk::erase(track.block->lines, token);
    else if (chunk::Text* line = chunk::find_line(track.block->lines, token))
        line->replace(0, line->content().size(), content);
    else
        rpp::insert(track, chunk::Text::made(content));
}

// Returns the state before the change: one bit a group.
int get_set_groups(Workstation& workstation, Track& track, std::string_view token, const char* name, int mask,
                   int value) {
    const auto flag = std::ranges::find(group_flags, current_name(workstation::to_string(name)));
    if (flag == group_flags.end()) {
        report_unknown_key(workstation, "GetSetTrackGroupMembership", name);
        return 0;
    }
    if (is_master(track))
        return 0;
    auto words = read_groups(track, token);
    const auto word = static_cast<std::size_t>(flag - group_flags.begin());
    const std::uint32_t before = word < words.size() ? words[word] : 0;
    const auto changed = static_cast<std::uint32_t>(mask);
    const std::uint32_t after = (before & ~changed) | (static_cast<std::uint32_t>(value) & changed);
    if (after != before) {
        words.resize(std::max(words.size(), word + 1));
        words[word] = after;
        write_groups(track, token, std::move(words));
    }
    return static_cast<int>(before);
}

int get_set_low_groups(Workstation& workstation, Track& track, const char* name, int mask, int value) {
    return get_set_groups(workstation, track, "GROUP_FLAGS", name, mask, value);
}

int get_set_high_groups(Workstation& workstation, Track& track, const char* name, int mask, int value) {
    return get_set_groups(workstation, track, "GROUP_FLAGS_HIGH", name, mask, value);
}

} // namespace

std::span<const workstation::HostFunction> track_state_functions() {
    static const workstation::HostFunction table[] = {
        {"GetTrackState",
         host_function<get_track_state>(
             "track,flagsOut",
             "The name, and flags: 1 folder, 2 selected, 4 effects on, 8 mute, 16 solo, 32 solo in "
             "place, 64 armed, 128 or 256 monitoring, 512 and 1024 hidden in panel and mixer")},
        {"SetTrackUISolo",
         host_function<set_solo>(
             "track,solo,igngroupflags",
             "Below 0 toggles, 0 off, 1 default, 2 plain, 4 in place; returns the new I_SOLO")},
        {"SetTrackUIMute",
         host_function<set_mute>("track,mute,igngroupflags",
                                 "Below 0 toggles, 0 unmutes, 1 mutes; returns the new state")},
        {"SoloAllTracks", host_function<solo_all>("solo", "Solo of all tracks: 0 off, 1 on, 2 in place")},
        {"MuteAllTracks", host_function<mute_all>("mute", "Mutes or unmutes all tracks")},
        {"AnyTrackSolo", host_function<any_track_solo>("proj", "Whether a track is soloed")},
        {"ClearAllRecArmed", host_function<disarm_all>("", "Disarms all tracks")},
        {"GetTrackUIMute", host_function<get_mute>("track,muteOut", "Whether the track is muted")},
        {"GetTrackUIVolPan", host_function<get_volume_and_pan>("track,volumeOut,panOut", "Volume and pan")},
        {"GetMasterMuteSoloFlags",
         host_function<master_flags>("", "1 if the master is muted + 2 if it is soloed")},
        {"GetTrackAutomationMode", host_function<get_automation_mode>(
                                       "tr", "0 trim, 1 read, 2 touch, 3 write, 4 latch, 5 latch preview")},
        {"SetTrackAutomationMode",
         host_function<set_automation_mode>("tr,mode", "Sets what GetTrackAutomationMode gives")},
        {"GetSetTrackGroupMembership",
         host_function<get_set_low_groups>(
             "tr,groupname,setmask,setvalue",
             "Membership in groups 1 to 32, one bit each, before the bits of the mask are set")},
        {"GetSetTrackGroupMembershipHigh",
         host_function<get_set_high_groups>(
             "tr,groupname,setmask,setvalue",
             "Membership in groups 33 to 64, one bit each, before the bits of the mask are set")},
    };
    return table;
}

} // namespace headless::functions
