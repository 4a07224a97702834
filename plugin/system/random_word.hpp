#pragma once
// The system's source of random numbers.

/// Returns 32 random bits.
/// @throws std::exception if the system has none
unsigned random_word();
