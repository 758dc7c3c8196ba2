// Placeholders for the texts of a user in what is sent to others.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace Script {

// The same text always gets the same placeholder: "text 1", "text 2" and so on.
class Placeholders {
 public:
  // Empty for an empty text.
  std::string of(const std::string& text);

  // A sentence with placeholders for the texts that have one, and for everything in quotation marks. One that names a
  // path outside the home, whose end nobody can tell, is replaced as a whole.
  std::string inSentence(const std::string& sentence);

 private:
  std::map<std::string, std::string, std::less<>> placeholders;
};

}  // namespace Script
