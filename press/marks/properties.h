#pragma once

#include <map>
#include <string>

namespace Press {

// A ticket's properties by name.
using Properties = std::map<std::string, std::string>;

// Empty for a missing property.
std::string valueOf(const Properties& properties, const char* name);

}  // namespace Press
