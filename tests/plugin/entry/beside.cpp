// An extension beside the library, which exports names that the library exports too.

extern "C" {
int the_extension_beside = 1;
int* GetTrack = &the_extension_beside; // NOLINT: the host's name for it
bool imported = false;
void* reaper_plugin = nullptr;
int REAPERAPI_LoadAPI(void*) { return -1; }
}
