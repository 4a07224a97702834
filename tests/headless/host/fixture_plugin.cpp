// A plug-in that registers one function, which asks the host through GetFunc, and withdraws it when it
// leaves.

namespace {

struct Record {
    int caller_version;
    void* hwnd_main;
    int (*Register)(const char* name, void* infostruct);
    void* (*GetFunc)(const char* name);
};

Record* record = nullptr;
int (*host_register)(const char*, void*) = nullptr;

int tracks_plus_version(int addend) {
    auto* count_tracks = reinterpret_cast<int (*)(void*)>(record->GetFunc("CountTracks"));
    return count_tracks(nullptr) + record->caller_version + addend;
}

} // namespace

extern "C" __attribute__((visibility("default"))) int ReaperPluginEntry(void*, Record* given) {
    void* const function = reinterpret_cast<void*>(tracks_plus_version);
    if (given) {
        record = given;
        host_register = given->Register;
        return given->Register("API_TracksPlusVersion", function);
    }
    return host_register("-API_TracksPlusVersion", function);
}
