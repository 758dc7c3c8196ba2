// A library without the factory of a plug-in.
extern "C" __attribute__((visibility("default"))) int unrelated() { return 0; }
