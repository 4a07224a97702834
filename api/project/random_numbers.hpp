#pragma once
// Random numbers and colours, and numbers with leading zeros. Every draw has a generator of its own, seeded
// by the system: no two calls share a state, and no sequence can be repeated.

#include "host/export.hpp"

namespace MK_FELSPAR {

/// An integer from `low` to `high`, both included. Bounds in the wrong order are taken in the right one.
/// @returns true
/// @throws std::exception when the system has no random device
MK_EXPORT bool GetRandomNumInteger(int low, int high, int* randomOut);

/// A number with `doubleType` decimals. The bounds are cut towards zero to that many.
/// @returns false, with the output unwritten, for more than 9 decimals and for bounds that, counted in units
/// of the last decimal, do not fit an int
/// @throws std::exception when the system has no random device
MK_EXPORT bool GetRandomNumDouble(double low, double high, int doubleType, double* randomOut);

/// A native colour with its parts from 0 to 255. @returns true
/// @throws std::exception when the system has no random device
MK_EXPORT bool GetRandomColor(int* colorOut, int* rOut, int* gOut, int* bOut);

/// The number with zeros in front up to `digit` characters; a minus sign counts only when the text is long
/// enough without zeros. The output is cut to `formattedNumOut_sz` - 1 bytes.
/// @returns false, with the output unwritten, for a `digit` below 1
MK_EXPORT bool FormatNumDigit(int num, int digit, char* formattedNumOut, int formattedNumOut_sz);

} // namespace MK_FELSPAR
