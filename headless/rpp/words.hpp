#pragma once
// The constants that the writer and the reader of project files share. For use inside this folder.

#include <array>
#include <string_view>

namespace headless::rpp {

/// The beginning of the files that this program writes. A workstation that saves the project puts its own
/// platform there.
inline constexpr std::string_view own_beginning = R"(<REAPER_PROJECT 0.1 "6.19/felspar")";

/// The value for "no colour of its own" in tracks.
inline constexpr int no_track_color = 16576;

struct EnvelopeKind {
    std::string_view name;  ///< as the model and the host's functions know it
    std::string_view block; ///< in the file
};
inline constexpr std::array take_envelopes{EnvelopeKind{"Volume", "VOLENV"}, EnvelopeKind{"Pan", "PANENV"},
                                           EnvelopeKind{"Mute", "MUTEENV"},
                                           EnvelopeKind{"Pitch", "PITCHENV"}};

} // namespace headless::rpp
