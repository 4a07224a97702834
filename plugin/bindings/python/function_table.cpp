// The library's description of its functions for Python.

#include "bindings/python/functions.hpp"
#include "bindings/reference/reference.hpp"
#include "host_api/definition_text.hpp"

DEFINITION_TYPE_WORD(unsigned long long)
DEFINITION_TYPE_WORD(unsigned long long*)

#define MK_PYTHON(result, name, parameters, names, help)                                                     \
    {#name, Definition<&python_api::name>::text<names, help>.data()},
const ReferenceRow felspar_python_functions[] = {
#include "bindings/python/functions.inc"
    {nullptr, nullptr}};
