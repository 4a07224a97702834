#pragma once
// The binary interface that plug-ins are compiled against: the record passed to their entry function, and the
// first virtual members of an audio source. Order and types are fixed by the platform.

namespace headless {

/// Plug-ins call through the virtual table, so no member may be added between or before these.
class PCM_source {
public:
    PCM_source() = default;
    PCM_source(const PCM_source&) = delete;
    PCM_source& operator=(const PCM_source&) = delete;
    virtual ~PCM_source() = default;
    virtual PCM_source* Duplicate() = 0;
    virtual bool IsAvailable() = 0;
    virtual void SetAvailable(bool) {}
    virtual const char* GetType() = 0;
    virtual const char* GetFileName() { return nullptr; }
    virtual bool SetFileName(const char* name) = 0;
};

} // namespace headless

namespace headless::workstation {

/// The record that ReaperPluginEntry gets.
struct PluginRecord {
    int caller_version;
    void* hwnd_main;
    int (*Register)(const char* name, void* infostruct);
    void* (*GetFunc)(const char* name);
};

/// The version of this interface that plug-ins compare with.
constexpr int plugin_interface_version = 0x20E;

using PluginEntry = int(void* instance, PluginRecord* record);
constexpr const char* plugin_entry_name = "ReaperPluginEntry";

} // namespace headless::workstation
