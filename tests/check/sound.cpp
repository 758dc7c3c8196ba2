// The plug-in that the broken ones are made from.
#include "tests/check/skeleton.h"

EXPORT_PLUGIN(Broken::Sound)
