#pragma once
// The headless workstation for programs in other languages: a library with a C interface. One workstation at
// a time, used from one thread at a time. Texts and paths end with NUL and are UTF-8 or whatever bytes the
// file system holds; no exception leaves a function.

#if defined(__GNUC__)
#define FELSPAR_CAPI extern "C" __attribute__((visibility("default")))
#else
#define FELSPAR_CAPI extern "C"
#endif

/// Opens a workstation and loads the plug-in into it.
/// @param project_file  read into it; null begins an empty project
/// @returns false when that fails, or one is open already: felspar_next_failure tells why
FELSPAR_CAPI bool felspar_open(const char* plugin_file, const char* project_file);

/// Saves the project, whole or not at all, in an existing folder and in place of nothing but a project file
/// that was saved so before. Later renders go to the folder that the project then has.
/// @returns false when that fails; audio paths that the file cannot hold are told as failures as well
FELSPAR_CAPI bool felspar_save(const char* project_file);

/// The address of a function of the workstation or of one that the plug-in has registered; null for an
/// unknown name. Not to be called once the workstation is closed.
FELSPAR_CAPI void* felspar_function(const char* name);

/// The oldest thing that could not be done and has not been told yet, one line; null when there is none.
/// Valid until the next call.
FELSPAR_CAPI const char* felspar_next_failure();

/// Takes leave of the plug-in and drops the project. Nothing happens when none is open.
FELSPAR_CAPI void felspar_close();
