#include "script/words.h"

#include <optional>
#include <stdexcept>

namespace Script {
namespace {

constexpr std::string_view blanks = " \t\r\n\v\f";

// Appends quoted text to `word`; advances `index` from after the opening mark past the closing one.
void takeQuoted(std::string_view line, std::size_t& index, char mark, std::string& word) {
  for (; index < line.size(); ++index) {
    if (line[index] == mark) {
      ++index;
      return;
    }
    if (line[index] == '\\' && mark == '"' && ++index == line.size()) break;
    word += line[index];
  }
  throw std::runtime_error(std::string("A quotation mark (") + mark + ") is not closed.");
}

}  // namespace

std::vector<std::string> splitWords(std::string_view line) {
  std::vector<std::string> words;
  std::optional<std::string> word;
  for (std::size_t i = 0; i < line.size();) {
    const char unit = line[i++];
    if (blanks.find(unit) != std::string_view::npos) {
      if (word) words.push_back(std::move(*word));
      word.reset();
      continue;
    }
    if (!word) word.emplace();
    if (unit == '"' || unit == '\'') {
      takeQuoted(line, i, unit, *word);
    } else if (unit == '\\') {
      if (i == line.size()) throw std::runtime_error("The line ends with a backslash that has nothing to take.");
      *word += line[i++];
    } else {
      *word += unit;
    }
  }
  if (word) words.push_back(std::move(*word));
  return words;
}

std::string toWord(std::string_view text) {
  constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-+.,:;/=@%#~";
  if (!text.empty() && text.find_first_not_of(plain) == std::string_view::npos) return std::string(text);
  std::string word = "\"";
  for (const char unit : text) {
    if (unit == '"' || unit == '\\') word += '\\';
    word += unit == '\n' || unit == '\r' ? ' ' : unit;
  }
  return word + '"';
}

bool isComment(std::string_view line) {
  return line.starts_with('#') || line.find_first_not_of(blanks) == std::string_view::npos;
}

}  // namespace Script
