#pragma once
// The handles that plug-ins hold for this host's objects. They are opaque: neither side dereferences them. A
// handle is the address of the live object; a source's handle is the address of a PCM_source
// (plugin_abi.hpp).

namespace headless {

struct ReaProject;
struct MediaTrack;
struct MediaItem;
struct MediaItem_Take;
struct TrackEnvelope;
struct BR_Envelope;
class PCM_source;

} // namespace headless
