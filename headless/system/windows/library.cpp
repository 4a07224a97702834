#include "headless/system/library.hpp"

#include <system_error>
#include <windows.h>

namespace headless::system {

std::string_view library_suffix() { return ".dll"; }

void* load_library(const std::filesystem::path& file, std::string& reason) {
    void* library = LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!library)
        reason = std::system_category().message(static_cast<int>(GetLastError()));
    return library;
}

void* symbol_of(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void unload_library(void* library) { FreeLibrary(static_cast<HMODULE>(library)); }

} // namespace headless::system
