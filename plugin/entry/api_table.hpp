#pragma once
// The table of all functions that scripts can call. It names every registered function, so it depends on all
// of them.

#include "host_api/export.hpp"

#include <cstddef>

/// A row in the form that the host's registration needs. All its members are constants that live as long as
/// the library.
struct ApiRow {
    void* function;         ///< with its own signature
    void* vararg;           ///< void* (void** argv, int argc); exported too, as `__vararg_` and the base name
    const char* definition; ///< return type, parameter types, parameter names, help; each ends with a NUL
    const char* api_name;
    const char* definition_name;
    const char* vararg_name;
    const char* unregister_api_name;
    const char* unregister_definition_name;
    const char* unregister_vararg_name;
};

struct ApiDefineList {
    const ApiRow* rows;
    std::size_t count;
};

/// Function and adapter of the rows that only document what the script modules offer. Returns null.
extern "C" MK_EXPORT void* __verarg_empty(void** argv, int argc);

/// The rows in the order of registration. Constant data, relocated by the loader and not filled by code.
extern "C" MK_EXPORT const ApiDefineList api_define_list;
