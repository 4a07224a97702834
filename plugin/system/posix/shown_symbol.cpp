#include "system/shown_symbol.hpp"

#include <dlfcn.h>

namespace {

/// Where the library or program that has the address begins; null if none has.
const void* module_of(const void* address) {
    Dl_info found{};
    return dladdr(address, &found) != 0 ? found.dli_fbase : nullptr;
}

} // namespace

// The system also finds names of this library's own dependencies.
void* shown_symbol(const char* name, const void* caller) {
    void* const found = dlsym(RTLD_DEFAULT, name);
    return found && module_of(found) == module_of(caller) ? found : nullptr;
}
