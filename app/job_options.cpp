#include "app/job_options.h"

namespace App {
namespace {

bool isSpace(char unit) { return unit == ' ' || unit == '\t' || unit == '\n' || unit == '\r'; }

// Removes and returns the value at the start of `text`.
std::string takeValue(std::string_view& text) {
  std::string value;
  char mark = 0;
  int braces = 0;
  while (!text.empty() && (mark != 0 || braces > 0 || !isSpace(text.front()))) {
    char unit = text.front();
    text.remove_prefix(1);
    const bool isEscaped = unit == '\\' && !text.empty();
    if (isEscaped) {
      unit = text.front();
      text.remove_prefix(1);
    } else if (unit == mark) {
      mark = 0;
      continue;
    } else if (mark == 0 && (unit == '"' || unit == '\'')) {
      mark = unit;
      continue;
    } else if (mark == 0) {
      braces += unit == '{' ? 1 : 0;
      braces -= unit == '}' && braces > 0 ? 1 : 0;
    }
    value += unit;
  }
  return value;
}

}  // namespace

std::vector<std::pair<std::string, std::string>> parseJobOptions(std::string_view text) {
  std::vector<std::pair<std::string, std::string>> options;
  while (!text.empty()) {
    if (isSpace(text.front())) {
      text.remove_prefix(1);
      continue;
    }
    std::string name;
    while (!text.empty() && text.front() != '=' && !isSpace(text.front())) {
      name += text.front();
      text.remove_prefix(1);
    }
    std::string value;
    if (!text.empty() && text.front() == '=') {
      text.remove_prefix(1);
      value = takeValue(text);
    }
    options.emplace_back(std::move(name), std::move(value));
  }
  return options;
}

}  // namespace App
