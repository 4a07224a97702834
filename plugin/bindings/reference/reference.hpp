#pragma once
// The library's description of its script modules, for programs that print references: a name and a
// definition text each, as for the registered functions. The tables are constant data, terminated by a pair
// of nulls. The version tells which release is described.

#include "host_api/export.hpp"

/// The text contains result type, parameter types, parameter names and help; each ends with a NUL.
struct ReferenceRow {
    const char* name;
    const char* definition;
};

extern "C" {

/// The version of the release, such as "1.2.0".
MK_EXPORT extern const char felspar_version[];

/// The functions of the Lua module. The definition is null if the function is also registered under the same
/// name.
MK_EXPORT extern const ReferenceRow felspar_lua_functions[];

/// The functions for Python.
MK_EXPORT extern const ReferenceRow felspar_python_functions[];

/// The records that lists contain. Types and names are those of the fields; there is no result.
MK_EXPORT extern const ReferenceRow felspar_records[];
}
