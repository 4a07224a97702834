#pragma once
// The functions of the headless host, by family.

#include "headless/workstation/host_function.hpp"

#include <span>

namespace headless::functions {

std::span<const workstation::HostFunction> track_functions();
std::span<const workstation::HostFunction> item_functions();
std::span<const workstation::HostFunction> item_value_functions();
std::span<const workstation::HostFunction> item_edit_functions();
std::span<const workstation::HostFunction> take_functions();
std::span<const workstation::HostFunction> take_marker_functions();
std::span<const workstation::HostFunction> state_functions();
std::span<const workstation::HostFunction> source_functions();
std::span<const workstation::HostFunction> source_editing_functions();
std::span<const workstation::HostFunction> accessor_functions();
std::span<const workstation::HostFunction> audio_functions();
std::span<const workstation::HostFunction> envelope_functions();
std::span<const workstation::HostFunction> marker_functions();
std::span<const workstation::HostFunction> region_functions();
std::span<const workstation::HostFunction> tempo_functions();
std::span<const workstation::HostFunction> tempo_point_functions();
std::span<const workstation::HostFunction> time_functions();
std::span<const workstation::HostFunction> view_functions();
std::span<const workstation::HostFunction> nudge_functions();
std::span<const workstation::HostFunction> project_functions();
std::span<const workstation::HostFunction> project_setting_functions();
std::span<const workstation::HostFunction> dialog_functions();
std::span<const workstation::HostFunction> insertion_functions();
std::span<const workstation::HostFunction> file_functions();
std::span<const workstation::HostFunction> session_functions();
std::span<const workstation::HostFunction> track_property_functions();
std::span<const workstation::HostFunction> track_visibility_functions();
std::span<const workstation::HostFunction> track_state_functions();
std::span<const workstation::HostFunction> send_functions();
std::span<const workstation::HostFunction> effect_functions();
std::span<const workstation::HostFunction> envelope_point_functions();
std::span<const workstation::HostFunction> envelope_property_functions();
std::span<const workstation::HostFunction> change_functions();
std::span<const workstation::HostFunction> command_functions();
std::span<const workstation::HostFunction> guid_functions();
std::span<const workstation::HostFunction> mouse_functions();
std::span<const workstation::HostFunction> preference_functions();
std::span<const workstation::HostFunction> screen_functions();
std::span<const workstation::HostFunction> system_functions();
std::span<const workstation::HostFunction> transport_functions();

} // namespace headless::functions
