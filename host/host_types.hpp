#pragma once
// The host's types as a plug-in sees them: opaque handles, the record of the entry point, and the one class
// whose virtual table this library walks.

// NOLINTBEGIN(bugprone-virtual-near-miss,performance-*)
class ReaProject;
class MediaTrack;
class MediaItem;
class MediaItem_Take;
class TrackEnvelope;
class BR_Envelope; ///< an envelope under edit, of the SWS extension

/// The record that the host hands to the entry point, laid out as the host's plug-in interface has it (LP64:
/// 32 bytes). The host owns it; it outlives the plug-in.
struct reaper_plugin_info_t {
    int caller_version;
    void* hwnd_main;
    int (*Register)(const char* name, void* infostruct);
    void* (*GetFunc)(const char* name);
};

/// An audio source of the host. Only `GetFileName` is called; the members before it hold its place in the
/// virtual table. Owned by the host.
class PCM_source {
public:
    virtual ~PCM_source() = default;
    virtual PCM_source* Duplicate() = 0;
    virtual bool IsAvailable() = 0;
    virtual void SetAvailable(bool) {}
    virtual const char* GetType() = 0;
    virtual const char* GetFileName() { return nullptr; } ///< null for a source without a file
};
// NOLINTEND(bugprone-virtual-near-miss,performance-*)
