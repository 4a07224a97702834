#pragma once
// The library's entry point: the host calls it at load and at unload.

#include "host_api/export.hpp"
#include "host_api/host_types.hpp"

/// If `rec` is not null: chooses the language of messages, binds the host's functions, registers the API and
/// returns 1. If it is null: unregisters the API if it was loaded, and returns 0. `instance`, the host's
/// module handle, is not used. Returns 0 if memory runs out.
extern "C" MK_EXPORT int ReaperPluginEntry(void* instance, reaper_plugin_info_t* rec);
