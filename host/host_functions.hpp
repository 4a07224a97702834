#pragma once
// The host's functions: one exported pointer for each, under the host's own name, null until the host binds
// it. The logic goes through `call`, which a missing function cannot crash.

#include "host/export.hpp"
#include "host/host_types.hpp"

#include <type_traits>

#define MK_HOST_CALLED(result, name, parameters) extern MK_EXPORT result(*name) parameters;
#define MK_HOST(name) extern MK_EXPORT void* name;
#include "host/host_functions.inc"
#undef MK_HOST
#undef MK_HOST_CALLED

/// The host's record while the library is bound, else null. The host owns it.
extern MK_EXPORT reaper_plugin_info_t* reaper_plugin;

/// True from the first load on; never cleared.
extern MK_EXPORT bool imported;

/// Looks a host function up by name; null when the host does not know it.
using GetFuncPointer = void* (*)(const char* name);

/// Binds all 810 pointers in the host's own order; names that the host does not know become null.
/// @returns how many those are. A null `getFunc` knows no name.
extern "C" MK_EXPORT int REAPERAPI_LoadAPI(GetFuncPointer getFunc);

/// Calls a host function, or gives the zero of its result when the host lacks it: an older host's gap becomes
/// the caller's ordinary failure.
template <class R, class... P>
R call(R (*function)(P...), std::type_identity_t<P>... arguments) {
    return function ? function(arguments...) : R();
}
