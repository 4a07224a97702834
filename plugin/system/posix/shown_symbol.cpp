#include "system/shown_symbol.hpp"

#include <dlfcn.h>

void* shown_symbol(const char* name) { return dlsym(RTLD_DEFAULT, name); }
