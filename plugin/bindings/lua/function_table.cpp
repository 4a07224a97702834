// The library's description of its Lua functions. Output parameters of the logic are their additional
// results.

#include "api/media/peaks.hpp"
#include "api/project/dialogs.hpp"
#include "api/project/files.hpp"
#include "api/project/strings.hpp"
#include "api/track/lists.hpp"
#include "bindings/reference/reference.hpp"
#include "host_api/definition_text.hpp"

DEFINITION_TYPE_WORD_AS(int&, "int*")
DEFINITION_TYPE_WORD_AS(std::string, "const char*")
DEFINITION_TYPE_WORD_AS(const std::string&, "const char*")
DEFINITION_TYPE_WORD_AS(std::vector<std::string>&, "stringArray*")
DEFINITION_TYPE_WORD_AS(std::vector<MediaTrack*>&, "MediaTrackArray*")
DEFINITION_TYPE_WORD_AS(std::vector<mk_object::TrackDetail>&, "TrackDetailArray*")
DEFINITION_TYPE_WORD_AS(std::vector<mk_object::mk_Peak>&, "mk_PeakArray*")

#define MK_LIST(scope, name, parameters, arguments, help)                                                    \
    {"MK_" #name, Definition<&scope::name>::text<MK_NAMES arguments, help>.data()},
#define MK_LUA_CODE(name) {"MK_" #name, nullptr},
const ReferenceRow felspar_lua_functions[] = {
#include "bindings/lua/functions.inc"
    {nullptr, nullptr}};
