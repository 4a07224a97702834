#pragma once
// The exported functions that Python calls through ctypes. They take and return only pointers, numbers and
// strings. Lists, maps and records stay in pools and are passed by handle; each must be released with
// py_release_obj. Output strings have 1,024 bytes unless their size is passed. No exception leaves a
// function. functions.inc documents each function.

#include "host_api/export.hpp"
#include "host_api/host_types.hpp"

namespace python_api {

/// The address of a pooled object; 0 is no object.
using Handle = unsigned long long;

#define MK_PYTHON(result, name, parameters, names, help) extern "C" MK_EXPORT result name parameters;
#include "bindings/python/functions.inc"
#undef MK_PYTHON

} // namespace python_api
