// The library's description of its Lua functions. Output parameters of the logic are their additional
// results.

#include "bindings/reference/list_functions.hpp"
#include "bindings/reference/reference.hpp"
#include "host_api/definition_text.hpp"

DEFINITION_TYPE_WORD_AS(int&, "int*")
DEFINITION_TYPE_WORD_AS(std::string, "const char*")
DEFINITION_TYPE_WORD_AS(const std::string&, "const char*")
DEFINITION_TYPE_WORD_AS(std::vector<std::string>&, "stringArray*")
DEFINITION_TYPE_WORD_AS(std::vector<MediaTrack*>&, "MediaTrackArray*")
#define MK_RECORD_CLASS(T, lists, help) DEFINITION_TYPE_WORD_AS(std::vector<mk_object::T>&, #T "Array*")
#include "object/record_classes.inc"

#define MK_LIST(scope, name, parameters, arguments, help)                                                    \
    {"MK_" #name, Definition<&scope::name>::text<MK_NAMES arguments, help>.data()},
#define MK_DOC_ROW(name, result, types, names, help) {"MK_" #name, nullptr},
const ReferenceRow felspar_lua_functions[] = {
#include "bindings/lua/functions.inc"
    {nullptr, nullptr}};
