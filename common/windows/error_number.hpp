#pragma once
// Errors of the system as the C library numbers them.

namespace error_number {

/// The value of errno for a code of GetLastError(); EIO where there is none.
int of(unsigned long code);

} // namespace error_number
