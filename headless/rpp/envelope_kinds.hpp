#pragma once
// The kinds of envelope: the block in the file, and the name that the host's functions know.

#include <array>
#include <string>
#include <string_view>

namespace headless::rpp {

struct EnvelopeKind {
    std::string_view name;
    std::string_view token;
};

inline constexpr std::array take_envelope_kinds{
    EnvelopeKind{"Volume", "VOLENV"}, EnvelopeKind{"Pan", "PANENV"}, EnvelopeKind{"Mute", "MUTEENV"},
    EnvelopeKind{"Pitch", "PITCHENV"}};

/// Of tracks, of the sends to them and of the master.
inline constexpr std::array track_envelope_kinds{EnvelopeKind{"Volume (Pre-FX)", "VOLENV"},
                                                 EnvelopeKind{"Volume", "VOLENV2"},
                                                 EnvelopeKind{"Trim Volume", "VOLENV3"},
                                                 EnvelopeKind{"Pan (Pre-FX)", "PANENV"},
                                                 EnvelopeKind{"Pan", "PANENV2"},
                                                 EnvelopeKind{"Width (Pre-FX)", "WIDTHENV"},
                                                 EnvelopeKind{"Width", "WIDTHENV2"},
                                                 EnvelopeKind{"Pan (Left, Pre-FX)", "DUALPANENVL"},
                                                 EnvelopeKind{"Pan (Left)", "DUALPANENVL2"},
                                                 EnvelopeKind{"Pan (Right, Pre-FX)", "DUALPANENV"},
                                                 EnvelopeKind{"Pan (Right)", "DUALPANENV2"},
                                                 EnvelopeKind{"Mute", "MUTEENV"},
                                                 EnvelopeKind{"Send Volume", "AUXVOLENV"},
                                                 EnvelopeKind{"Send Pan", "AUXPANENV"},
                                                 EnvelopeKind{"Send Mute", "AUXMUTEENV"},
                                                 EnvelopeKind{"Audio Hardware Output: Volume", "HWVOLENV"},
                                                 EnvelopeKind{"Audio Hardware Output: Pan", "HWPANENV"},
                                                 EnvelopeKind{"Audio Hardware Output: Mute", "HWMUTEENV"},
                                                 EnvelopeKind{"Volume (Pre-FX)", "MASTERVOLENV"},
                                                 EnvelopeKind{"Volume", "MASTERVOLENV2"},
                                                 EnvelopeKind{"Trim Volume", "MASTERVOLENV3"},
                                                 EnvelopeKind{"Pan (Pre-FX)", "MASTERPANENV"},
                                                 EnvelopeKind{"Pan", "MASTERPANENV2"},
                                                 EnvelopeKind{"Width (Pre-FX)", "MASTERWIDTHENV"},
                                                 EnvelopeKind{"Width", "MASTERWIDTHENV2"},
                                                 EnvelopeKind{"Playrate", "MASTERPLAYSPEEDENV"}};

/// The envelope of an effect's parameter; its block's head has the name.
inline constexpr std::string_view parameter_envelope_token = "PARMENV";

} // namespace headless::rpp
