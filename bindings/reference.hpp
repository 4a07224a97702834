#pragma once
// What the library tells of its script modules to those who print references: a name and a definition text
// each, as for the registered functions. The tables are constant data, closed by a pair of nulls.

#include "host/export.hpp"

/// The text holds result type, parameter types, parameter names and help; each ends with a NUL.
struct ReferenceRow {
    const char* name;
    const char* definition;
};

extern "C" {

/// The functions of the Lua module. The definition is null where the function is registered too, under the
/// same name.
MK_EXPORT extern const ReferenceRow felspar_lua_functions[];

/// The functions for Python.
MK_EXPORT extern const ReferenceRow felspar_python_functions[];

/// The records that lists hold: types and names are those of the fields, and there is no result.
MK_EXPORT extern const ReferenceRow felspar_records[];
}
