#include "entry/entry.hpp"

#include "entry/api_table.hpp"
#include "host_api/host_functions.hpp"
#include "utility/message_catalogue.hpp"

#include <span>

namespace {

std::span<const ApiRow> rows() { return {api_define_list.rows, api_define_list.count}; }

// The host keeps the definition text but does not write to it.
void* payload(const char* text) { return const_cast<char*>(text); }

int load(reaper_plugin_info_t* rec) {
    mk_app::message_util::set_localize();
    imported = true;
    REAPERAPI_LoadAPI(rec->GetFunc);
    reaper_plugin = rec;
    for (const ApiRow& row : rows()) {
        call(plugin_register, row.api_name, row.function);
        call(plugin_register, row.definition_name, payload(row.definition));
        call(plugin_register, row.vararg_name, row.vararg);
    }
    return 1;
}

int unload() {
    if (imported) {
        for (const ApiRow& row : rows()) {
            call(plugin_register, row.unregister_api_name, row.function);
            call(plugin_register, row.unregister_definition_name, payload(row.definition));
            call(plugin_register, row.unregister_vararg_name, row.vararg);
        }
        reaper_plugin = nullptr;
    }
    return 0;
}

} // namespace

int ReaperPluginEntry(void*, reaper_plugin_info_t* rec) {
    try {
        return rec ? load(rec) : unload();
    } catch (...) { // out of memory: 0 makes the host unload the library
        return 0;
    }
}
