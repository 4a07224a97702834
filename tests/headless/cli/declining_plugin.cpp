// A plug-in whose ride returns false and leaves the item alone.

struct Record {
    int caller_version;
    void* main_window;
    int (*register_name)(const char* name, void* value);
    void* (*get_function)(const char* name);
};

namespace {

bool decline(void*, int) { return false; }

} // namespace

extern "C" __attribute__((visibility("default"))) int ReaperPluginEntry(void*, Record* record) {
    if (record != nullptr)
        record->register_name("API_MK_SetMediaItemRIDESCRIBER", reinterpret_cast<void*>(&decline));
    return record != nullptr ? 1 : 0;
}
