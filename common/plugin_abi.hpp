#pragma once
// The binary interface between the host and its plug-ins: the types of handles, the record passed to a
// plug-in's entry function, and the first virtual members of an audio source. Names, order and types are
// fixed by the platform.

// Handles are opaque: neither side dereferences them, except for a PCM_source.
#define HANDLE_TYPE(type, python_class) class type;
#include "common/handle_types.inc"
#undef HANDLE_TYPE

/// The record that the host passes to the entry function (LP64: 32 bytes). The host owns it; it outlives the
/// plug-in.
struct reaper_plugin_info_t {
    int caller_version;
    void* hwnd_main;
    int (*Register)(const char* name, void* infostruct);
    void* (*GetFunc)(const char* name);
};

// NOLINTBEGIN(bugprone-virtual-near-miss,performance-*)
/// An audio source of the host, which owns it. Plug-ins call through the virtual table, so no member may be
/// added between or before these.
class PCM_source {
public:
#ifdef _WIN32
    // The host's compiler gives a virtual destructor one place in the table, others give it two.
    virtual void destructor_place() {}
#else
    virtual ~PCM_source() = default;
#endif
    virtual PCM_source* Duplicate() = 0;
    virtual bool IsAvailable() = 0;
    virtual void SetAvailable(bool) {}
    virtual const char* GetType() = 0;
    virtual const char* GetFileName() { return nullptr; } ///< null if the source has no file
    virtual bool SetFileName(const char* name) = 0;
};
// NOLINTEND(bugprone-virtual-near-miss,performance-*)
