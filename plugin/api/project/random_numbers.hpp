#pragma once
// Random numbers and colours, and numbers with leading zeros. Each draw has its own generator, seeded by the
// system. No two calls share state, and no sequence can be repeated.

#include "host_api/export.hpp"

namespace MK_FELSPAR {

/// Draws an integer from `low` to `high`, both included. Swaps the bounds if they are in the wrong order.
/// @returns true
/// @throws std::exception if the system has no random device
MK_EXPORT bool GetRandomNumInteger(int low, int high, int* randomOut);

/// Draws a number with `doubleType` decimals. The bounds are truncated to that many.
/// @returns false, with the output unwritten, for more than 9 decimals and for bounds that, counted in units
/// of the last decimal, do not fit an int
/// @throws std::exception if the system has no random device
MK_EXPORT bool GetRandomNumDouble(double low, double high, int doubleType, double* randomOut);

/// Draws a native colour, and returns its components from 0 to 255.
/// @returns true
/// @throws std::exception if the system has no random device
MK_EXPORT bool GetRandomColor(int* colorOut, int* rOut, int* gOut, int* bOut);

/// Pads a number with leading zeros to `digit` characters. A minus sign counts only if the text is long
/// enough without zeros. The output is cut to `formattedNumOut_sz` - 1 bytes.
/// @returns false, with the output unwritten, for a `digit` below 1
MK_EXPORT bool FormatNumDigit(int num, int digit, char* formattedNumOut, int formattedNumOut_sz);

} // namespace MK_FELSPAR
