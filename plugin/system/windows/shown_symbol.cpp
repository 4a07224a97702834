#include "system/shown_symbol.hpp"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

void* shown_symbol(const char* name, const void* caller) {
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            static_cast<const wchar_t*>(caller), &module))
        return nullptr;
    return reinterpret_cast<void*>(GetProcAddress(module, name));
}
