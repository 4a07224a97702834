#pragma once
// What plug-ins hold in place of this host's objects: opaque, and never looked into on either side.
// A handle is the address of the living object; a source's is that of a PCM_source (plugin_abi.hpp).

namespace headless {

struct ReaProject;
struct MediaTrack;
struct MediaItem;
struct MediaItem_Take;
struct TrackEnvelope;
struct BR_Envelope;
class PCM_source;

} // namespace headless
