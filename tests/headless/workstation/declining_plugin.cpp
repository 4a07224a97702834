// A plug-in that finds the host unfit.

extern "C" __attribute__((visibility("default"))) int ReaperPluginEntry(void*, void*) { return 0; }
