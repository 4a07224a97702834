// A library that is no plug-in.

extern "C" __attribute__((visibility("default"))) int other_function() { return 0; }
