#include "headless/system/library.hpp"

#include <dlfcn.h>

namespace headless::system {

void* load_library(const std::filesystem::path& file, std::string& reason) {
    void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library)
        return library;
    const char* message = dlerror();
    reason = message ? message : "cannot be loaded";
    // The message usually begins with the path.
    if (const std::string prefix = file.string() + ": "; reason.starts_with(prefix))
        reason.erase(0, prefix.size());
    return nullptr;
}

void* symbol_of(void* library, const char* name) { return dlsym(library, name); }

void unload_library(void* library) { dlclose(library); }

} // namespace headless::system
