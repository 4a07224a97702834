// A plug-in that registers one function, which asks the host through GetFunc, and withdraws it when it
// leaves.

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

} // namespace

extern "C" __attribute__((visibility("default"))) int ReaperPluginEntry(void*, const Record* record) {
    host = record ? *record : host;
    return host.Register(record ? "API_TracksPlusVersion" : "-API_TracksPlusVersion",
                         reinterpret_cast<void*>(tracks_plus_version));
}
