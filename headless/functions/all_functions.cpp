#include "headless/functions/all_functions.hpp"

#include "headless/functions/tables.hpp"

#include <vector>

namespace headless::functions {

std::span<const workstation::HostFunction> all_functions() {
    static const std::vector<workstation::HostFunction> all = [] {
        std::vector<workstation::HostFunction> functions;
        for (const auto table :
             {// the project's objects
              track_functions(), track_property_functions(), track_visibility_functions(),
              track_state_functions(), send_functions(), effect_functions(), item_functions(),
              item_value_functions(), item_edit_functions(), take_functions(), take_marker_functions(),
              state_functions(), envelope_functions(), envelope_point_functions(),
              envelope_property_functions(), marker_functions(), region_functions(),
              // audio
              source_functions(), source_editing_functions(), accessor_functions(), audio_functions(),
              insertion_functions(),
              // time
              tempo_functions(), tempo_point_functions(), time_functions(), view_functions(),
              nudge_functions(), transport_functions(),
              // the project, the session and the machine
              project_functions(), project_setting_functions(), change_functions(), command_functions(),
              guid_functions(), session_functions(), dialog_functions(), screen_functions(),
              mouse_functions(), preference_functions(), file_functions(), system_functions()})
            functions.insert(functions.end(), table.begin(), table.end());
        return functions;
    }();
    return all;
}

} // namespace headless::functions
