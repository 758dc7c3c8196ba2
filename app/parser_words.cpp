#include "app/parser_words.h"

#include "formats/sentences.h"

#include <array>
#include <cstddef>
#include <optional>

namespace App {
namespace {

constexpr std::string_view templates[] = {
    Formats::sentenceTemplate("{1} is required"),
    Formats::sentenceTemplate("The following argument was not expected: {1}"),
    Formats::sentenceTemplate("The following arguments were not expected: {1}"),
    Formats::sentenceTemplate("{1}: {2} required {3} missing"),
    Formats::sentenceTemplate("{1}: Value {2} not in range {3} to {4}"),
    Formats::sentenceTemplate("Could not convert: {1} = {2}"),
    Formats::sentenceTemplate("{1} requires {2}"),
    Formats::sentenceTemplate("{1} excludes {2}"),
};

using Arguments = std::array<std::string, 4>;

// What stands for the placeholders of a template in a sentence; nothing for a sentence of another template.
// Placeholders are in order, with text between them.
std::optional<Arguments> argumentsOf(std::string_view english, std::string_view pattern) {
  Arguments arguments;
  while (!pattern.empty()) {
    const std::size_t number = Formats::placeholderAt(pattern);
    if (number == 0) {
      if (english.empty() || english.front() != pattern.front()) return std::nullopt;
      english.remove_prefix(1);
      pattern.remove_prefix(1);
      continue;
    }
    pattern.remove_prefix(3);
    const std::string_view after = pattern.substr(0, pattern.find('{'));
    const std::size_t end = after.empty() ? english.size() : english.find(after);
    if (end == english.npos || (pattern.size() == after.size() && !english.ends_with(after))) return std::nullopt;
    arguments[number - 1] = english.substr(0, end);
    english.remove_prefix(end);
  }
  return english.empty() ? std::optional(arguments) : std::nullopt;
}

}  // namespace

std::string parserSentence(std::string_view english) {
  for (const std::string_view pattern : templates)
    if (const auto words = argumentsOf(english, pattern))
      return Formats::sentence(pattern, (*words)[0], (*words)[1], (*words)[2], (*words)[3]);
  return std::string(english);
}

}  // namespace App
