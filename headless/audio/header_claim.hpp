#pragma once
// The length that a recording's header claims. For use inside this folder.

#include <cstdint>

namespace headless::audio {

/// Returns the number of frames that the header of an open file claims. libsndfile reduces the claim of a
/// truncated wav or aiff file to what is there; for these formats it is read from the chunk that holds the
/// samples. A length that was left open, as in streamed recordings, claims nothing.
/// @param frames  the count that libsndfile reports; returned if the header does not contradict it
std::int64_t claimed_frames(int descriptor, std::int64_t frames);

} // namespace headless::audio
