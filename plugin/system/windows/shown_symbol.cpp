#include "system/shown_symbol.hpp"

#include <windows.h>

void* shown_symbol(const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(nullptr), name));
}
