#pragma once
// The library's door to the host: bound at load, unbound at unload.

#include "host/export.hpp"
#include "host/host_types.hpp"

/// With a record: chooses the texts' language, binds the host's functions and registers the API; returns 1.
/// With null: withdraws the API, if there was a load; returns 0. `instance`, the host's module handle, is not
/// used.
extern "C" MK_EXPORT int ReaperPluginEntry(void* instance, reaper_plugin_info_t* rec);
