#pragma once
// The host's types as a plug-in sees them: opaque handles, the record passed to the entry point, and the one
// class whose virtual table this library uses.

// NOLINTBEGIN(bugprone-virtual-near-miss,performance-*)
class ReaProject;
class MediaTrack;
class MediaItem;
class MediaItem_Take;
class TrackEnvelope;
class BR_Envelope; ///< an envelope being edited, from the SWS extension

/// The record that the host passes to the entry point, laid out as in the host's plug-in interface (LP64: 32
/// bytes). The host owns it; it outlives the plug-in.
struct reaper_plugin_info_t {
    int caller_version;
    void* hwnd_main;
    int (*Register)(const char* name, void* infostruct);
    void* (*GetFunc)(const char* name);
};

/// An audio source of the host. Only `GetFileName` is called; the members before it are there to give it its
/// place in the virtual table. Owned by the host.
class PCM_source {
public:
    virtual ~PCM_source() = default;
    virtual PCM_source* Duplicate() = 0;
    virtual bool IsAvailable() = 0;
    virtual void SetAvailable(bool) {}
    virtual const char* GetType() = 0;
    virtual const char* GetFileName() { return nullptr; } ///< null if the source has no file
};
// NOLINTEND(bugprone-virtual-near-miss,performance-*)
