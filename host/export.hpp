#pragma once
// What the library shows to the outside. Everything else is hidden by the compiler's default visibility.

#define MK_EXPORT __attribute__((visibility("default")))
