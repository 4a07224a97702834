// A plug-in whose ride declines. It also registers a function that asks the host, and withdraws it in the
// end.

namespace {

struct Record {
    int caller_version;
    void* hwnd_main;
    int (*Register)(const char* name, void* infostruct);
    void* (*GetFunc)(const char* name);
};

Record host;

int tracks_plus_version(int addend) {
    auto* count_tracks = reinterpret_cast<int (*)(void*)>(host.GetFunc("CountTracks"));
    return count_tracks(nullptr) + host.caller_version + addend;
}

bool decline_to_ride(void*, int) { return false; }

} // namespace

extern "C" __attribute__((visibility("default"))) int ReaperPluginEntry(void*, const Record* record) {
    host = record ? *record : host;
    host.Register("API_MK_SetMediaItemRIDESCRIBER", reinterpret_cast<void*>(decline_to_ride));
    return host.Register(record ? "API_TracksPlusVersion" : "-API_TracksPlusVersion",
                         reinterpret_cast<void*>(tracks_plus_version));
}
