#pragma once
// The headless workstation for programs in other languages: a library with a C interface. One workstation at
// a time, used from one thread at a time. Strings and paths end with NUL and are UTF-8 or whatever bytes the
// file system holds. No exception leaves a function.

#if defined(__GNUC__)
#define FELSPAR_CAPI extern "C" __attribute__((visibility("default")))
#else
#define FELSPAR_CAPI extern "C"
#endif

/// Opens a workstation and loads the plug-in into it.
/// @param project_file  loaded into it; null starts an empty project
/// @returns false if that fails, or if a workstation is already open: felspar_next_failure gives the reason
FELSPAR_CAPI bool felspar_open(const char* plugin_file, const char* project_file);

/// Saves the project, completely or not at all, in an existing folder. The file may be new, may replace a
/// project that was saved this way before, or may replace the project that was opened. In the last case the
/// old file is kept beside it as "NAME-bak" if another program had saved it.
/// @returns false if that fails; names and paths that the file cannot hold, and the place of the kept file,
/// are reported as failures as well
FELSPAR_CAPI bool felspar_save(const char* project_file);

/// Sets the answer to the next dialog of that title in advance: a button's name, or the values of a form.
/// Several answers are used in order, and the last one stays in effect.
/// @returns false if no workstation is open
FELSPAR_CAPI bool felspar_answer(const char* title, const char* answer);

/// The functions that scripts may call, in the order of their names: those of the workstation and those that
/// the plug-in has registered. The pointers stay valid until the workstation is closed.
/// @param definition  return type, parameter types, parameter names and help; each ends with a NUL
/// @param call        takes one pointer per argument, as headless/workstation/script_call.hpp explains
/// @returns false if the index is out of range
FELSPAR_CAPI bool felspar_function(int index, const char** name, const char** definition,
                                   void* (**call)(void** words, int count));

/// Returns the oldest failure that has not been returned yet, as one line; null if there is none. Valid until
/// the next call.
FELSPAR_CAPI const char* felspar_next_failure();

/// Unloads the plug-in and discards the project. Does nothing if no workstation is open.
FELSPAR_CAPI void felspar_close();
