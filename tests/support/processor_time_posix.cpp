#include "tests/support/growth.h"

#include <ctime>

double Testing::processorTime() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }
