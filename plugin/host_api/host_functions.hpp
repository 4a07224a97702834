#pragma once
// The host's functions: one exported pointer for each, under the host's own name, null until the host binds
// it. The logic calls them through `call`, which is safe if a function is missing. A program may store
// functions of its own in the pointers; the library calls those until the next load.

#include "host_api/export.hpp"
#include "host_api/host_types.hpp"

#include <type_traits>

#define MK_HOST_CALLED(result, name, parameters) extern MK_EXPORT result(*name) parameters;
#define MK_HOST(name) extern MK_EXPORT void* name;
#include "host_api/host_functions.inc"
#undef MK_HOST
#undef MK_HOST_CALLED

/// The host's record while the library is bound, otherwise null. The host owns it.
extern MK_EXPORT reaper_plugin_info_t* reaper_plugin;

/// True after the first load; never cleared.
extern MK_EXPORT bool imported;

/// Looks up a host function by name. Returns null if the host does not have it.
using GetFuncPointer = void* (*)(const char* name);

/// Binds all 810 pointers in the host's own order. Pointers to functions that the host does not have become
/// null. A null `getFunc` finds no function.
/// @returns the number of functions that were not found
extern "C" MK_EXPORT int REAPERAPI_LoadAPI(GetFuncPointer getFunc);

/// Calls a host function, or returns the zero of its result type if the host lacks it. To the caller, a
/// function missing from an older host is then an ordinary failure.
template <class R, class... P>
R call(R (*function)(P...), std::type_identity_t<P>... arguments) {
    return function ? function(arguments...) : R();
}
