#include "host_api/host_functions.hpp"

#include <cstring>

#define MK_HOST_CALLED(result, name, parameters) result(*name) parameters = nullptr;
#define MK_HOST(name) void* name = nullptr;
#include "host_api/host_functions.inc"
#undef MK_HOST
#undef MK_HOST_CALLED

reaper_plugin_info_t* reaper_plugin = nullptr;
bool imported = false;

namespace {

struct HostFunction {
    void* pointer; ///< address of the exported pointer
    const char* name;
};

const HostFunction host_functions[] = {
#define MK_HOST(name) {static_cast<void*>(&name), #name},
#define MK_HOST_CALLED(result, name, parameters) MK_HOST(name)
#include "host_api/host_functions.inc"
#undef MK_HOST
#undef MK_HOST_CALLED
};

static_assert(sizeof host_functions / sizeof *host_functions == 810);

} // namespace

int REAPERAPI_LoadAPI(GetFuncPointer getFunc) {
    int missing = 0;
    for (const HostFunction& function : host_functions) {
        void* address = getFunc ? getFunc(function.name) : nullptr;
        // The pointers have many types; copying the bytes keeps clear of aliasing rules.
        std::memcpy(function.pointer, &address, sizeof address);
        missing += address == nullptr;
    }
    return missing;
}
