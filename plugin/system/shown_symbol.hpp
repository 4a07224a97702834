#pragma once
// Names that the program and its libraries show to all others in the process.

/// Returns the address of a function or constant, or null if nothing shows the name.
void* shown_symbol(const char* name);
