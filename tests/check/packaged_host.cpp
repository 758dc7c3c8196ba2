// The reference host as it is.
#include "tests/check/reference_host.h"

EXPORT_HOST(Testing::PackagedHost, Testing::makePlugin)
