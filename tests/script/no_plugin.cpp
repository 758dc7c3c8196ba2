// A library without a plug-in factory.
extern "C" __attribute__((visibility("default"))) int unrelated() { return 0; }
