#pragma once
// The registered functions called as another extension calls them: at their address, by their C signature.

#include <span>

namespace mk_test {

/// Calls the function at `address` with the words of its arguments (as the host's script bridge has them).
/// @throws what the function throws
using NativeCall = void(void* address, void** words);

/// One for each row of the API, in the rows' order.
std::span<NativeCall* const> native_calls();

} // namespace mk_test
