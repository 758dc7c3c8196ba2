// Texts of a run without what is of this run alone: where the home is, and names that are made up.
#pragma once

#include "script/json.h"

#include <filesystem>
#include <map>
#include <string>

namespace Script {

// Stands for the home in recordings.
inline constexpr std::string_view homeMark = "{home}";

// The text with "{home}" in the place of the home's path, and "/" in the paths below it; and the opposite.
std::string withoutHome(const std::string& text, const std::filesystem::path& home);
std::string withHome(const std::string& text, const std::filesystem::path& home);

// Whether the text is the id of a watermark or the name of an overlay file, which are made up.
bool isMadeName(const std::string& text);

// Numbers the ids of watermarks and the names of overlay files, which are made up, in the order in which a run answers
// with them: two runs that do the same have the same numbers.
class MadeNames {
 public:
  std::string numbered(const std::string& text);

 private:
  std::map<std::string, std::size_t> numbers;
};

// The value with a function applied to all its texts.
template <class Change>
nlohmann::json changeTexts(nlohmann::json value, const Change& change) {
  if (value.is_string()) return change(value.get<std::string>());
  if (value.is_structured())
    for (auto& element : value) element = changeTexts(element, change);
  return value;
}

}  // namespace Script
