#pragma once
// The exported functions that Python calls through ctypes: pointers, numbers and texts only. Lists, maps and
// records stay in pools and go by handle; each ends with py_release_obj. Texts that are written to have 1,024
// bytes, unless their size is passed. No exception leaves a function; functions.inc tells what each does.

#include "host/export.hpp"
#include "host/host_types.hpp"

namespace python_api {

/// The address of a pooled object; 0 is none.
using Handle = unsigned long long;

#define MK_PYTHON(result, name, parameters, names, help) extern "C" MK_EXPORT result name parameters;
#include "bindings/python/functions.inc"
#undef MK_PYTHON

} // namespace python_api
