#pragma once

#include "formats/names.h"

#include <map>
#include <string>

namespace Press {

// A ticket's properties by name.
using Properties = std::map<std::string, std::string>;

// Empty for a missing property.
std::string valueOf(const Properties& properties, Formats::Name name);

// Whether the property has exactly that value.
bool isSet(const Properties& properties, Formats::Name name, Formats::Name value);

}  // namespace Press
