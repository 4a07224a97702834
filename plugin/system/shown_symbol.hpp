#pragma once
// Names that a library or program shows to others in the process.

/// Returns the address of a function or constant of the library or program that `caller` lies in, or null if
/// that does not show the name.
void* shown_symbol(const char* name, const void* caller);
