#include "headless/functions/all_functions.hpp"

#include "headless/functions/tables.hpp"

#include <vector>

namespace headless::functions {

std::span<const workstation::HostFunction> all_functions() {
    static const std::vector<workstation::HostFunction> all = [] {
        std::vector<workstation::HostFunction> functions;
        for (const auto table :
             {track_functions(), item_functions(), take_functions(), source_functions(),
              source_editing_functions(), accessor_functions(), audio_functions(), envelope_functions(),
              marker_functions(), region_functions(), tempo_functions(), tempo_point_functions(),
              time_functions(), view_functions(), nudge_functions(), project_functions(), dialog_functions(),
              insertion_functions(), file_functions(), session_functions()})
            functions.insert(functions.end(), table.begin(), table.end());
        return functions;
    }();
    return all;
}

} // namespace headless::functions
