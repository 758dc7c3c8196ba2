#include "press/marks/properties.h"

namespace Press {

std::string valueOf(const Properties& properties, const char* name) {
  const auto found = properties.find(name);
  return found == properties.end() ? std::string() : found->second;
}

}  // namespace Press
