#include "press/marks/properties.h"

#include "formats/text.h"

namespace Press {

std::string valueOf(const Properties& properties, Formats::Name name) {
  const auto found = properties.find(Formats::toUtf8(name));
  return found == properties.end() ? std::string() : found->second;
}

bool isSet(const Properties& properties, Formats::Name name, Formats::Name value) {
  return Formats::isName(valueOf(properties, name), value);
}

}  // namespace Press
