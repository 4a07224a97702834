#pragma once
// The table of all functions that scripts can call. It names every registered function, so it stands above
// them all.

#include "host/api_row.hpp"

/// The rows in the order of registration. Constant data: the loader relocates it, no code fills it.
extern "C" MK_EXPORT const ApiDefineList api_define_list;
