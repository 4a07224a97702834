#pragma once
// The host functions that a ride needs.

namespace mk_api::RIDESCRIBER {

/// Returns whether the host has every function that a ride needs. Shows no message.
bool can_ride();

} // namespace mk_api::RIDESCRIBER
