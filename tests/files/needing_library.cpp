// A library that may need another one.
#ifdef NEEDED
extern "C" __declspec(dllimport) int NEEDED();
#else
static int needsNone() { return 0; }
#define NEEDED needsNone
#endif

extern "C" __declspec(dllexport) int OFFERED() { return NEEDED(); }
