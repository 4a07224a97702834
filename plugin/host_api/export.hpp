#pragma once
// Marks what the library exports. Everything else is hidden by the compiler's default visibility.

#define MK_EXPORT __attribute__((visibility("default")))
