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

/// Saves the project, whole or not at all, in an existing folder: where no file is, in place of a project
/// that was saved so before, or in place of the one that was opened, which is kept beside it as "NAME-bak"
/// when another program had saved it.
/// @returns false when that fails; audio paths that the file cannot hold, and where the project of another
/// program was kept, are told as failures as well
FELSPAR_CAPI bool felspar_save(const char* project_file);

/// Answers the next dialog of that title beforehand: a button's name, or the values of a form. Several
/// answers are given in turn, and the last one stays.  @returns false when no workstation is open
FELSPAR_CAPI bool felspar_answer(const char* title, const char* answer);

/// The functions that scripts may call, in the order of their names: those of the workstation and those that
/// the plug-in has registered. What is handed out holds until the workstation is closed.
/// @param definition  return type, parameter types, parameter names and help; each ends with a NUL
/// @param call        takes one word an argument, as headless/host/script_form.hpp tells
/// @returns false for an index that names none
FELSPAR_CAPI bool felspar_function(int index, const char** name, const char** definition,
                                   void* (**call)(void** words, int count));

/// The oldest thing that could not be done and has not been told yet, one line; null when there is none.
/// Valid until the next call.
FELSPAR_CAPI const char* felspar_next_failure();

/// Takes leave of the plug-in and drops the project. Nothing happens when none is open.
FELSPAR_CAPI void felspar_close();
