#include "headless/functions/all_functions.hpp"

#include "headless/functions/tables.hpp"

#include <vector>

namespace headless::functions {

std::span<const workstation::HostFunction> all_functions() {
    static const std::vector<workstation::HostFunction> all = [] {
        std::vector<workstation::HostFunction> functions;
        for (const auto table :
             {track_functions(), item_functions(), item_value_functions(), item_edit_functions(),
              take_functions(), take_marker_functions(), state_functions(), source_functions(),
              audio_functions(), envelope_functions(), marker_functions(), project_functions(),
              dialog_functions(), insertion_functions(), file_functions(), session_functions()})
            functions.insert(functions.end(), table.begin(), table.end());
        return functions;
    }();
    return all;
}

} // namespace headless::functions
