// Whether a text is a valid Print Schema document. It knows the Print Schema only, and nothing of the code that writes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Testing {

// What is wrong with a PrintTicket or PrintCapabilities document, each with its line; empty for a valid one.
//
// Checked are: the root and its version; which elements lie in which, and how many; that only a Value has text; that
// sibling names are unique; that every name, type and QName has a prefix that is declared; that a value is of its type;
// that every parameter that is referred to is there.
std::vector<std::string> faultsOf(std::string_view bytes);

}  // namespace Testing
