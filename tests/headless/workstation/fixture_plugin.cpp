// A plug-in whose ride declines. It also registers a function, which it unregisters when it leaves.

struct Record {
    int caller_version;
    void* hwnd_main;
    int (*Register)(const char* name, void* infostruct);
    void* (*GetFunc)(const char* name);
};

static Record host;

static int tracks() { return reinterpret_cast<int (*)(void*)>(host.GetFunc("CountTracks"))(nullptr); }
static bool decline_to_ride(void*, int) { return false; }

extern "C" __attribute__((visibility("default"))) int ReaperPluginEntry(void*, const Record* record) {
    host = record ? *record : host;
    host.Register("API_MK_SetMediaItemRIDESCRIBER", reinterpret_cast<void*>(decline_to_ride));
    return host.Register(record ? "API_Tracks" : "-API_Tracks", reinterpret_cast<void*>(tracks));
}
